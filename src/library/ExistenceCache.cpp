#include "library/ExistenceCache.h"

#include <QFile>
#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr uint32_t kEvents = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB |
                             IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;

} // namespace

ExistenceCache::ExistenceCache() {
    m_fd = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
}

ExistenceCache::~ExistenceCache() {
    if (m_fd >= 0) ::close(m_fd);
}

bool ExistenceCache::fileExists(const QString& path) {
    if (path.isEmpty() || path.contains(QChar(0))) return false;
    struct stat st;
    return ::stat(QFile::encodeName(path).constData(), &st) == 0;
}

void ExistenceCache::clear() {
    for (auto it = m_folderOf.cbegin(); it != m_folderOf.cend(); ++it)
        ::inotify_rm_watch(m_fd, it.key());
    refresh(); // drop what the removed watches still had to say
    m_known.clear();
    ++m_generation;
    m_watchOf.clear();
    m_folderOf.clear();
    m_pathsOf.clear();
}

bool ExistenceCache::exists(QAnyStringView path, bool* remembered) {
    const auto known = m_known.find(path);
    if (remembered) *remembered = known != m_known.end();
    if (known != m_known.end()) return known->second;
    return lookUp(path.toString(), remembered);
}

bool ExistenceCache::lookUp(const QString& path, bool* remembered) {
    if (path.isEmpty() || path.contains(QChar(0))) return false;
    const QByteArray local = QFile::encodeName(path);
    struct stat st;
    const bool there = ::lstat(local.constData(), &st) == 0;
    if (there && S_ISLNK(st.st_mode)) return ::stat(local.constData(), &st) == 0;
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    if (m_fd < 0 || slash < 0 || slash + 1 >= path.size()) return there;
    const QString folder = slash == 0 ? QStringLiteral("/") : path.left(slash);
    auto watch = m_watchOf.constFind(folder);
    if (watch == m_watchOf.cend()) {
        int wd = -1;
        if (m_folderOf.size() < MaxFolders)
            wd = ::inotify_add_watch(m_fd, QFile::encodeName(folder).constData(), kEvents);
        // Watches are per inode: two spellings of one folder share one.
        if (wd >= 0 && !m_folderOf.contains(wd)) m_folderOf.insert(wd, folder);
        watch = m_watchOf.insert(folder, wd);
    }
    if (watch.value() < 0) return there;
    m_known.emplace(path, there);
    if (remembered) *remembered = true;
    m_pathsOf[watch.value()].append(path);
    return there;
}

void ExistenceCache::forgetFolder(int watch) {
    ++m_generation;
    for (const QString& path : m_pathsOf.take(watch))
        m_known.erase(path);
}

void ExistenceCache::refresh() {
    if (m_fd < 0) return;
    alignas(inotify_event) char buffer[16384];
    for (;;) {
        const ssize_t n = ::read(m_fd, buffer, sizeof buffer);
        if (n <= 0) return;
        for (ssize_t at = 0; at < n;) {
            const auto* e = reinterpret_cast<const inotify_event*>(buffer + at);
            at += ssize_t(sizeof(inotify_event) + e->len);
            if (e->mask & IN_Q_OVERFLOW) {
                // Events were lost: nothing remembered can be trusted.
                m_known.clear();
                m_pathsOf.clear();
                ++m_generation;
                continue;
            }
            if (e->mask & (IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED)) {
                forgetFolder(e->wd);
                if (e->mask & IN_IGNORED) {
                    m_folderOf.remove(e->wd);
                    m_watchOf.removeIf([wd = e->wd](const auto& it) { return it.value() == wd; });
                } else {
                    ::inotify_rm_watch(m_fd, e->wd);
                }
                continue;
            }
            if (e->len == 0) continue;
            // Something came or went: every spelling of every path under this folder is asked
            // again.
            forgetFolder(e->wd);
        }
    }
}
