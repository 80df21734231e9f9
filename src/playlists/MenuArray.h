#pragma once
#include <QList>
#include <QObject>
#include <QString>

// A menu whose entries are loaded at run time, one entry an index: entry 0 is the placeholder
// that exists from the start; entries 1.. come and go. It lives on the window that shows it,
// found there by its name, so that routines filling it serve any window holding an array of
// that name. What shows it turns the entries into actions (ui/MenuArrayMenu.h).
class MenuArray : public QObject {
    Q_OBJECT
public:
    struct Item {
        QString caption;
        bool visible = true;
        bool enabled = true;
        bool checked = false;
    };

    MenuArray(const QString& name, const QString& placeholder, QObject* owner);

    // The array `name` of `owner`, made on first use with `placeholder` as entry 0.
    static MenuArray& of(QObject& owner, const QString& name, const QString& placeholder = {});

    int count() const { return int(m_items.size()); }
    const Item& item(int index) const { return m_items[index]; }
    const QList<Item>& items() const { return m_items; }
    void setItem(int index, const Item& item);
    void setCaption(int index, const QString& caption);
    void setEnabled(int index, bool on);
    void setVisible(int index, bool on);
    void setChecked(int index, bool on);
    // Adds a visible, enabled entry at the next index and returns that index.
    int load(const QString& caption);
    // Removes every entry above 0.
    void unloadAbove0();

Q_SIGNALS:
    void changed();

private:
    QList<Item> m_items;
};
