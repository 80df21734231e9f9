#pragma once
#include <QObject>
#include <QStringList>
#include <QWidget>

class ListModel;
class MainContext;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;

// The rules of the "Global Hot Keys" page: seven rows of Type, Extension and Key, the two
// lists that edit a row, Reset and Apply. Apply writes the texts as they stand.
class GlobalKeysEditor : public QObject {
    Q_OBJECT
public:
    explicit GlobalKeysEditor(QObject* parent = nullptr);

    ListModel& lstvItems() { return *m_items; }
    static QStringList extensionItems();
    static QStringList shortcutKeyItems();

    // Fills the rows from section "GlobalKeys".
    void load();
    // Row 1-based; what the page shows for it.
    QString typeOf(int row) const;
    QString extensionOf(int row) const;
    QString keyOf(int row) const;
    // A choice in cmbExtension; "(None)" puts an empty Extension into the row.
    void cmbExtension_Click(int row, const QString& text);
    // A choice in cmbShortcutKeys by index; the separator moves on to the row below it. The
    // index that ends up chosen.
    int cmbShortcutKeys_Click(int row, int index);
    void cmdResetGlobalKeys_Click();
    // Writes the fourteen keys and installs them through `ctx` when given.
    void cmdApply_Click(MainContext* ctx);
    bool applyEnabled() const { return m_apply; }
    // The rows were written by someone else (the preferences' own Apply).
    void applied() { setApply(false); }

Q_SIGNALS:
    void applyEnabledChanged(bool on);

private:
    void setApply(bool on);
    ListModel* m_items;
    bool m_apply = false;
};

// The page itself. Standing alone it has its own Apply and check box; inside the preferences
// their Apply and check box serve instead.
class GlobalKeysPage : public QWidget {
    Q_OBJECT
public:
    GlobalKeysPage(MainContext& ctx, QWidget* parent = nullptr, bool standalone = true);
    GlobalKeysEditor& rules() { return m_rules; }

private:
    void showRow();
    MainContext& m_ctx;
    GlobalKeysEditor m_rules;
    QLineEdit* txtName;
    QComboBox* cmbExtension;
    QComboBox* cmbShortcutKeys;
    QPushButton* cmdApply;
    QCheckBox* chkDisable;
    bool m_filling = false;
};
