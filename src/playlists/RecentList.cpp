#include "playlists/RecentList.h"

#include "core/Settings.h"
#include "core/modFiles.h"
#include "playlists/MenuArray.h"

#include <QStringList>
#include <limits>

namespace {

const QString kPlaceholder = QStringLiteral("<Empty>");
const QString kNone = QStringLiteral("(None)");
// The settings store keeps a 16-bit limit; more keys than this are no list anyone reads.
constexpr int kMaxLimit = 999;

} // namespace

QString recent_NumberText(int number, int count) {
    const int width = int(QString::number(count).size());
    return QStringLiteral("%1").arg(number, width, 10, QLatin1Char('0'));
}

RecentList::RecentList(const char* section, const char* menuName, const char* limitKey)
    : m_section(QString::fromLatin1(section)), m_menuName(QString::fromLatin1(menuName)),
      m_limitKey(QString::fromLatin1(limitKey)) {}

void RecentList::setLimit(int limit) {
    m_limit = qBound(0, limit, kMaxLimit);
}

void RecentList::loadLimit() {
    // Beyond what an int holds is nonsense; within it, setLimit keeps the list in bounds.
    setLimit(settings_Int(QStringLiteral("Settings"), m_limitKey, QStringLiteral("30"),
                          std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), 30));
}

QString RecentList::key(int i) const {
    return QStringLiteral("Filename") + QString::number(i);
}

QString RecentList::value(int i) const {
    return settings_Read(m_section, key(i));
}

int RecentList::count() const {
    int n = 0;
    while (n < m_limit && !value(n + 1).isEmpty())
        ++n;
    return n;
}

bool RecentList::isEmpty() const {
    for (int i = 1; i <= m_limit; ++i)
        if (!modFiles::text_StripTrailingNull(value(i)).isEmpty()) return false;
    return true;
}

void RecentList::clear() const {
    for (int i = 1; i <= m_limit + 1; ++i)
        settings_Write(m_section, key(i), QString());
}

void RecentList::removeMenus(QObject& owner) const {
    MenuArray& menu = MenuArray::of(owner, m_menuName, kPlaceholder);
    menu.unloadAbove0();
    menu.setItem(0, {kNone, true, false, false});
}

void RecentList::remove(int index, QObject& owner) const {
    if (index >= 1) {
        settings_Write(m_section, key(index), QString());
        for (int j = index + 1; j <= m_limit; ++j) {
            const QString moved = value(j);
            // Keys that are empty already need no writing; the order is the same.
            if (moved.isEmpty() && value(j - 1).isEmpty()) continue;
            settings_Write(m_section, key(j - 1), moved);
            settings_Write(m_section, key(j), QString());
        }
    }
    updateMenu(owner);
}

void RecentList::add(const QString& path, QObject& owner) const {
    QStringList old;
    const QString wanted = path.toLower();
    for (int i = 1; i <= m_limit + 1; ++i) {
        QString v = value(i);
        if (!v.isEmpty()) v = modFiles::text_StripTrailingNull(v);
        // Already listed: the list keeps its order.
        if (v.toLower() == wanted) return;
        old.append(v);
    }
    if (m_limit >= 1) settings_Write(m_section, key(1), path);
    for (int i = 2; i <= m_limit; ++i)
        if (old[i - 1] != old[i - 2]) settings_Write(m_section, key(i), old[i - 2]);
    updateMenu(owner);
}

void RecentList::updateMenu(QObject& owner) const {
    const int total = count();
    removeMenus(owner);
    if (value(1).isEmpty() || isEmpty()) return;
    MenuArray& menu = MenuArray::of(owner, m_menuName, kPlaceholder);
    for (int i = 0; i < m_limit; ++i) {
        const QString v = value(i + 1);
        if (v.isEmpty()) break;
        const QString caption =
            recent_NumberText(i + 1, total) + QStringLiteral(".  ") + modFiles::file_GetName(v);
        if (i == 0)
            menu.setItem(0, {caption, true, true, false});
        else
            menu.load(caption);
    }
}
