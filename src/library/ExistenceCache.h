#pragma once
#include <QHash>
#include <QString>

// Whether files exist, remembered between asks and forgotten as soon as their folder says it
// changed (inotify). The side lists test every file of the set at each rebuild; asking the file
// system 100,000 times would make that rebuild slow, so a file is asked once and then again only
// after something happened in its folder. Symbolic links and files whose folder cannot be
// watched are asked every time.
class ExistenceCache {
public:
    ExistenceCache();
    ~ExistenceCache();
    ExistenceCache(const ExistenceCache&) = delete;
    ExistenceCache& operator=(const ExistenceCache&) = delete;

    bool exists(const QString& path);
    // Takes in what the folders reported since the last call.
    void refresh();
    void clear();

    // One file, asked of the file system.
    static bool fileExists(const QString& path);

    // No more folders than this are watched; files of others are asked every time.
    static constexpr int MaxFolders = 4096;

private:
    void forgetFolder(int watch);

    int m_fd = -1;
    QHash<QString, bool> m_known;
    QHash<QString, int> m_watchOf;        // folder -> watch, -1 when it cannot be watched
    QHash<int, QString> m_folderOf;       // watch -> folder
    QHash<int, QList<QString>> m_pathsOf; // watch -> paths remembered under it
};
