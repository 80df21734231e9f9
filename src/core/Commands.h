#pragma once
#include <QAction>
#include <QHash>
#include <QObject>
#include <QSet>
#include <functional>

// The program's commands: one QAction per menu entry, named as the menu (objectName "mnuSave").
// A checkable action's check mark is the store of its mode. Handlers own the check marks, as the
// menus' click handlers do: a user's click does not toggle by itself, the handler decides.
class Commands : public QObject {
    Q_OBJECT
public:
    explicit Commands(QObject* parent = nullptr);

    // Creates the action on first use; later calls return the same one.
    QAction* action(const QString& name);
    QAction* add(const QString& name, const QString& text, bool checkable = false);
    // Gives the entry `text` unless a caption was set before: an entry first reached by its name
    // (a handler, an enabling rule) would otherwise show that name.
    QAction* addCaption(const QString& name, const QString& text);
    bool has(const QString& name) const { return m_actions.contains(name); }
    QList<QAction*> all() const { return m_actions.values(); }

    // The click handler of a menu. Replaces an earlier one.
    void setHandler(const QString& name, std::function<void()> handler);
    bool hasHandler(const QString& name) const { return m_handlers.contains(name); }
    // Runs the handler as a click would, whether or not the entry is enabled (callers that
    // must honour the enabled state test it first); false when no handler stands yet.
    bool run(const QString& name);
    // Runs the handler only when the entry is enabled, as a key or a button does.
    bool runIfEnabled(const QString& name);

    bool isChecked(const QString& name) { return action(name)->isChecked(); }
    void setChecked(const QString& name, bool on);
    bool isEnabled(const QString& name) { return action(name)->isEnabled(); }
    // An entry whose command is not built yet stays disabled whatever the enabling rules say.
    void setEnabled(const QString& name, bool on) {
        action(name)->setEnabled(on && !m_unavailable.contains(name));
    }
    // Disables every entry that has no handler (sub-menus and separators excepted), and the
    // entries listed in `forwarders` whose target has none (toolbar buttons: name -> target).
    void disableUnbuilt(const QStringList& containers, const QHash<QString, QString>& forwarders);
    void setVisible(const QString& name, bool on) { action(name)->setVisible(on); }
    QString caption(const QString& name) { return action(name)->text(); }
    void setCaption(const QString& name, const QString& text) { action(name)->setText(text); }

private:
    QHash<QString, QAction*> m_actions;
    QHash<QString, std::function<void()>> m_handlers;
    QSet<QString> m_unavailable;
};
