#pragma once
#include <QObject>
#include <QStringList>

// The state of `cmbPlaylists`: its entries and `ListIndex`. The combo box of the main window
// mirrors it; the rules work on it without a window.
class PlaylistCombo : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    const QStringList& items() const { return m_items; }
    int count() const { return int(m_items.size()); }
    int listIndex() const { return m_index; }
    // The shown text; "" when nothing is selected.
    QString text() const { return m_items.value(m_index); }
    void clear();
    void addItem(const QString& text);
    // Setting the index is a click on the entry: clicked() follows, as the control's event does.
    void setListIndex(int index);
    // The classic exact find: blind to case, -1 when absent.
    int findStringExact(const QString& text) const;
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool on);

Q_SIGNALS:
    void itemsChanged();
    void listIndexChanged(int index);
    void enabledChanged(bool on);
    void clicked();

private:
    QStringList m_items;
    int m_index = -1;
    bool m_enabled = true;
};
