#pragma once
#include <QList>
#include <QObject>
#include <QString>

class MainContext;

// The entries of the "Send To" menu (`mnuItem` of the pop-up menus): entry 0 is the
// placeholder, shown as "[None]" when there is no playlist; entries 1.. name the playlists.
// The window turns the entries into actions and calls mnuItem_Click(ctx, index).
class SendToMenu : public QObject {
    Q_OBJECT
public:
    struct Item {
        QString caption;
        bool visible = false;
        bool enabled = true;
    };

    explicit SendToMenu(QObject* parent = nullptr);

    // The menu of this context (one per main window), made on first use.
    static SendToMenu& of(MainContext& ctx);

    const QList<Item>& items() const { return m_items; }
    int count() const { return int(m_items.size()); }
    const Item& item(int index) const { return m_items[index]; }
    void setItem(int index, const Item& item);
    // Adds a visible entry at the next index and returns that index.
    int load(const QString& caption);
    // Removes every entry above 0.
    void unloadAbove0();

Q_SIGNALS:
    void changed();

private:
    QList<Item> m_items;
};
