#include "core/modDirectorys.h"

#include "core/Dialogs.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>

namespace modDirectorys {
namespace {

// Guards on a walk whose output doubles with every level: a folder tree deeper than this, or a
// list longer than this, is cut, and the walk returns what it has.
constexpr int MaxDepth = 40;
constexpr qsizetype MaxEntries = qsizetype(1) << 20;

struct Walk {
    QHash<QString, QString> canonical; // path -> canonical path ("" when unreachable)
    QHash<QString, QStringList> tree;  // finished trees, so no folder is listed twice
};

QString canonicalOf(Walk& walk, const QString& path) {
    auto it = walk.canonical.constFind(path);
    if (it != walk.canonical.constEnd()) return *it;
    const QString c = QFileInfo(path).canonicalFilePath();
    walk.canonical.insert(path, c);
    return c;
}

// True when `child` leads back into a folder it already lies in (a link to a parent), which
// would make the walk endless.
bool closesLoop(Walk& walk, const QString& child) {
    const QString target = canonicalOf(walk, child);
    if (target.isEmpty()) return true;
    QString prefix = child;
    for (;;) {
        const qsizetype slash = prefix.lastIndexOf(QLatin1Char('/'), -2);
        if (slash < 0) return false;
        prefix = prefix.left(slash == 0 ? 1 : slash);
        if (canonicalOf(walk, prefix) == target) return true;
        if (slash == 0) return false;
    }
}

void serveEvents() {
    if (QCoreApplication::instance()) QCoreApplication::processEvents();
}

// The direct sub-folders of `path` (ending in "/"), serving the event queue at each entry.
QStringList directChildren(Walk& walk, const QString& path) {
    QStringList out;
    const QStringList names =
        QDir(path).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase);
    for (const QString& name : names) {
        serveEvents();
        const QString child = path + name;
        if (!closesLoop(walk, child)) out.append(child);
    }
    return out;
}

QString withSeparator(const QString& path) {
    return path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/');
}

// Every folder below `path` once: its own sub-folders first, then theirs, level by level.
const QStringList& tree(Walk& walk, const QString& path) {
    auto done = walk.tree.constFind(path);
    if (done != walk.tree.constEnd()) return *done;
    QStringList out = directChildren(walk, withSeparator(path));
    QList<int> depth(out.size(), 1);
    for (qsizetype i = 0; i < out.size() && out.size() < MaxEntries; ++i) {
        if (depth[i] >= MaxDepth) continue;
        const QStringList below = directChildren(walk, withSeparator(out[i]));
        out += below;
        depth.resize(out.size(), depth[i] + 1);
    }
    return *walk.tree.insert(path, out);
}

} // namespace

bool directory_Exists(const QString& path) {
    // A listing of the path itself: a file answers too, and so does the empty path (the current
    // folder's own entries).
    if (path.trimmed().isEmpty()) return true;
    return QFileInfo::exists(path);
}

void directory_Create(const QString& path) {
    if (!directory_Exists(path)) QDir().mkdir(path);
}

QString directory_Browse(QWidget* /*ownerWindow*/, const QString& initialPath) {
    QString chosen = Dialogs::browseFolder(
        QStringLiteral("Please select the directory and then click OK:"), initialPath);
    const qsizetype nul = chosen.indexOf(QChar(0));
    if (nul >= 0) chosen.truncate(nul);
    return chosen;
}

QStringList directory_GetSubdirectories(const QString& path, int levels) {
    if (!directory_Exists(path)) return {};
    QStringList list{QString()};
    if (path.trimmed().isEmpty()) return list;
    Walk walk;
    list += directChildren(walk, withSeparator(path));
    // The list grows while it is walked, and every entry, the appended ones too, adds the whole
    // tree below it: a folder at depth d comes back 2^(d-2) times. Callers skip the repeats'
    // files through the duplicate scan.
    for (int round = 0; round < levels; ++round) {
        for (qsizetype i = 0; i < list.size(); ++i) {
            if (list.at(i).trimmed().isEmpty()) continue;
            const QStringList below = tree(walk, list.at(i));
            for (const QString& found : below) {
                if (list.size() >= MaxEntries) return list;
                list.append(found);
            }
        }
    }
    return list;
}

QStringList directory_ListFiles(const QString& folder, const QString& pattern) {
    return QDir(folder).entryList({pattern}, QDir::Files, QDir::Name | QDir::IgnoreCase);
}

} // namespace modDirectorys
