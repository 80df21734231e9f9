#pragma once
#include "library/TextKey.h"

#include <QHash>
#include <QString>
#include <unordered_map>

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

    // Takes a list's cell as it is: a path already asked costs no copy. `remembered`, when
    // given, tells whether the answer holds until generation() changes.
    bool exists(QAnyStringView path, bool* remembered = nullptr);
    // Changes whenever a remembered answer may have become wrong.
    quint64 generation() const { return m_generation; }
    // Takes in what the folders reported since the last call.
    void refresh();
    void clear();

    // One file, asked of the file system.
    static bool fileExists(const QString& path);

    // No more folders than this are watched; files of others are asked every time.
    static constexpr int MaxFolders = 4096;

private:
    void forgetFolder(int watch);
    bool lookUp(const QString& path, bool* remembered);

    int m_fd = -1;
    quint64 m_generation = 0;
    std::unordered_map<QString, bool, TextKey::Hash, TextKey::Equal> m_known;
    QHash<QString, int> m_watchOf;        // folder -> watch, -1 when it cannot be watched
    QHash<int, QString> m_folderOf;       // watch -> folder
    QHash<int, QList<QString>> m_pathsOf; // watch -> paths remembered under it
};
