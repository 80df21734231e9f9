#pragma once
#include <QString>

class QObject;

// A most-recent list kept in settings.ini: keys "Filename1".."FilenameN" of one section, newest
// first, an empty value ending the list, and a menu array of the same entries on the window
// that shows it. Recent media and recent playlists are two of these (modRecentMedia.h,
// modRecentPlaylists.h); a window passes itself as `owner` to have its array filled.
class RecentList {
public:
    RecentList(const char* section, const char* menuName, const char* limitKey);

    // The limit, read from settings at start-up and set again by the preferences.
    int limit() const { return m_limit; }
    void setLimit(int limit);
    void loadLimit();

    int count() const;
    bool isEmpty() const;
    void clear() const;
    QString value(int key) const; // key 1-based

    void removeMenus(QObject& owner) const;
    void remove(int index, QObject& owner) const;
    void add(const QString& path, QObject& owner) const;
    void updateMenu(QObject& owner) const;

    const QString& menuName() const { return m_menuName; }

private:
    QString key(int i) const;
    QString m_section, m_menuName, m_limitKey;
    int m_limit = 30;
};

// The number of a menu entry, as wide as the decimal text of `count`, zero-padded: with ten
// entries "01" to "10".
QString recent_NumberText(int number, int count);
