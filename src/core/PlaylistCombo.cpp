#include "core/PlaylistCombo.h"

void PlaylistCombo::clear() {
    m_items.clear();
    m_index = -1;
    Q_EMIT itemsChanged();
    Q_EMIT listIndexChanged(m_index);
}

void PlaylistCombo::addItem(const QString& text) {
    m_items.append(text);
    Q_EMIT itemsChanged();
}

void PlaylistCombo::setListIndex(int index) {
    if (index < -1 || index >= count())
        return;
    m_index = index;
    Q_EMIT listIndexChanged(m_index);
    Q_EMIT clicked();
}

int PlaylistCombo::findStringExact(const QString& text) const {
    for (int i = 0; i < count(); ++i)
        if (m_items[i].compare(text, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

void PlaylistCombo::setEnabled(bool on) {
    if (m_enabled == on)
        return;
    m_enabled = on;
    Q_EMIT enabledChanged(on);
}
