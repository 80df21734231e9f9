#include "playlists/MenuArray.h"

MenuArray::MenuArray(const QString& name, const QString& placeholder, QObject* owner)
    : QObject(owner) {
    setObjectName(name);
    m_items.append({placeholder, true, true, false});
}

MenuArray& MenuArray::of(QObject& owner, const QString& name, const QString& placeholder) {
    if (auto* found = owner.findChild<MenuArray*>(name, Qt::FindDirectChildrenOnly)) return *found;
    return *new MenuArray(name, placeholder, &owner);
}

void MenuArray::setItem(int index, const Item& item) {
    if (index < 0 || index >= count()) return;
    m_items[index] = item;
    Q_EMIT changed();
}

void MenuArray::setCaption(int index, const QString& caption) {
    if (index < 0 || index >= count() || m_items[index].caption == caption) return;
    m_items[index].caption = caption;
    Q_EMIT changed();
}

void MenuArray::setEnabled(int index, bool on) {
    if (index < 0 || index >= count() || m_items[index].enabled == on) return;
    m_items[index].enabled = on;
    Q_EMIT changed();
}

void MenuArray::setVisible(int index, bool on) {
    if (index < 0 || index >= count() || m_items[index].visible == on) return;
    m_items[index].visible = on;
    Q_EMIT changed();
}

void MenuArray::setChecked(int index, bool on) {
    if (index < 0 || index >= count() || m_items[index].checked == on) return;
    m_items[index].checked = on;
    Q_EMIT changed();
}

int MenuArray::load(const QString& caption) {
    m_items.append({caption, true, true, false});
    Q_EMIT changed();
    return count() - 1;
}

void MenuArray::unloadAbove0() {
    if (count() <= 1) return;
    m_items.resize(1);
    Q_EMIT changed();
}
