#include "tags/TagShift.h"

#include "core/modFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace TagShift {
namespace {

constexpr size_t kCopyBlock = 64 * 1024;
constexpr char kJournalMark[] = ".veldor-journal";
constexpr char kJournalMagic[8] = {'V', 'E', 'L', 'D', 'J', 'R', 'N', '1'};

const char* g_dieAt = nullptr;

// True once, at the point a test asked to die at.
bool dying(const char* point) {
    if (!g_dieAt || std::strcmp(g_dieAt, point) != 0) return false;
    g_dieAt = nullptr;
    return true;
}

Result failure(int err) {
    if (err == 0) err = EIO;
    return {false, err, QString::fromLocal8Bit(std::strerror(err))};
}

bool writeAll(int fd, const char* p, size_t n) {
    while (n > 0) {
        const ssize_t w = ::write(fd, p, n);
        if (w < 0 && errno == EINTR) continue;
        if (w <= 0) {
            if (w == 0) errno = ENOSPC;
            return false;
        }
        p += w;
        n -= size_t(w);
    }
    return true;
}

bool pwriteAll(int fd, const char* p, size_t n, off_t at) {
    while (n > 0) {
        const ssize_t w = ::pwrite(fd, p, n, at);
        if (w < 0 && errno == EINTR) continue;
        if (w <= 0) {
            if (w == 0) errno = ENOSPC;
            return false;
        }
        p += w;
        at += w;
        n -= size_t(w);
    }
    return true;
}

bool preadAll(int fd, char* p, size_t n, off_t at) {
    while (n > 0) {
        const ssize_t r = ::pread(fd, p, n, at);
        if (r < 0 && errno == EINTR) continue;
        if (r <= 0) {
            if (r == 0) errno = EIO;
            return false;
        }
        p += r;
        at += r;
        n -= size_t(r);
    }
    return true;
}

// Copies the source from `offset` to its end.
bool copyFrom(int src, off_t offset, int dst) {
    std::vector<char> block(kCopyBlock);
    for (;;) {
        const ssize_t r = ::pread(src, block.data(), block.size(), offset);
        if (r < 0 && errno == EINTR) continue;
        if (r < 0) return false;
        if (r == 0) return true;
        if (!writeAll(dst, block.data(), size_t(r))) return false;
        offset += r;
    }
}

void syncFolder(const QString& folder) {
    const int dir = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY);
    if (dir < 0) return;
    ::fsync(dir);
    ::close(dir);
}

// The rename must land on the real file, not on a link pointing at it.
QString realPath(const QString& filename) {
    const QFileInfo info(filename);
    return info.isSymLink() ? info.canonicalFilePath() : info.absoluteFilePath();
}

quint64 checksum(const char* p, size_t n) {
    quint64 h = 1469598103934665603ULL; // FNV-1a
    for (size_t i = 0; i < n; ++i) {
        h ^= uint8_t(p[i]);
        h *= 1099511628211ULL;
    }
    return h;
}

void putLE64(QByteArray& b, quint64 v) {
    for (int i = 0; i < 8; ++i)
        b.append(char(v >> (8 * i)));
}

quint64 getLE64(const char* p) {
    quint64 v = 0;
    for (int i = 7; i >= 0; --i)
        v = (v << 8) | uint8_t(p[i]);
    return v;
}

QString pendingFolder() {
    QString state = qEnvironmentVariable("XDG_STATE_HOME");
    if (state.isEmpty() || !QDir::isAbsolutePath(state))
        state = QDir::homePath() + QStringLiteral("/.local/state");
    return state + QStringLiteral("/veldor/pending");
}

// An entry in the list of folders with a write under way, locked while it runs; a process
// that dies leaves it unlocked, and the next start knows where to look.
class Pending {
public:
    explicit Pending(const QString& folder) {
        const QString dir = pendingFolder();
        QDir().mkpath(dir);
        m_name = QFile::encodeName(dir + QStringLiteral("/entry-XXXXXX"));
        m_fd = ::mkostemp(m_name.data(), O_CLOEXEC);
        if (m_fd < 0) return;
        ::flock(m_fd, LOCK_EX);
        const QByteArray text = QFile::encodeName(folder);
        if (!writeAll(m_fd, text.constData(), size_t(text.size()))) release();
    }
    ~Pending() { release(); }
    // As a killed process leaves it: unlocked, still listed.
    void abandon() {
        if (m_fd >= 0) ::close(m_fd);
        m_fd = -1;
    }
    Pending(const Pending&) = delete;
    Pending& operator=(const Pending&) = delete;

private:
    void release() {
        if (m_fd < 0) return;
        ::unlink(m_name.constData());
        ::close(m_fd);
        m_fd = -1;
    }
    QByteArray m_name;
    int m_fd = -1;
};

// Puts the old bytes of a journal back into its file and removes the journal. A journal whose
// write is still running (locked) is left alone; one that does not check out was never the
// last word on anything (the write starts only once the journal is whole) and just goes.
bool rollBack(const QString& journal) {
    const QByteArray name = QFile::encodeName(journal);
    const int fd = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (fd < 0) return false;
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        ::close(fd);
        return false;
    }
    QFile in;
    QByteArray data;
    if (in.open(fd, QIODevice::ReadOnly, QFileDevice::DontCloseHandle)) data = in.readAll();
    in.close();
    const QFileInfo info(journal);
    const QString fileName = info.fileName();
    const QString target =
        info.absolutePath() + QLatin1Char('/') +
        fileName.mid(1, fileName.size() - 1 - qsizetype(sizeof kJournalMark - 1));
    bool restored = true;
    constexpr qsizetype head = 8 + 8 + 8 + 8;
    if (data.size() >= head + 8 && std::memcmp(data.constData(), kJournalMagic, 8) == 0) {
        const quint64 offset = getLE64(data.constData() + 8);
        const quint64 length = getLE64(data.constData() + 16);
        const quint64 fileSize = getLE64(data.constData() + 24);
        const bool whole = length <= quint64(data.size()) &&
                           quint64(data.size()) == quint64(head) + length + 8 &&
                           getLE64(data.constData() + head + length) ==
                               checksum(data.constData(), size_t(head + length));
        if (whole) {
            const int t = ::open(QFile::encodeName(target).constData(), O_RDWR | O_CLOEXEC);
            if (t < 0) {
                restored = errno == ENOENT; // the file is gone: nothing to put back
            } else {
                struct stat st {};
                // A file shorter than it was is not the one the journal was made for.
                if (::fstat(t, &st) == 0 && quint64(st.st_size) >= fileSize)
                    restored =
                        pwriteAll(t, data.constData() + head, size_t(length), off_t(offset)) &&
                        ::ftruncate(t, off_t(fileSize)) == 0 && ::fsync(t) == 0;
                ::close(t);
            }
        }
    }
    if (restored) ::unlink(name.constData());
    ::close(fd);
    return restored;
}

} // namespace

QString journalPath(const QString& filename) {
    const QFileInfo info(filename);
    return info.absolutePath() + QStringLiteral("/.") + info.fileName() +
           QLatin1String(kJournalMark);
}

int recoverFolder(const QString& folder) {
    int dealt = 0;
    const QDir dir(folder);
    const QStringList journals = dir.entryList({QStringLiteral(".*") + QLatin1String(kJournalMark)},
                                               QDir::Files | QDir::Hidden | QDir::System);
    for (const QString& name : journals)
        if (rollBack(dir.filePath(name))) ++dealt;
    return dealt + modFiles::file_RemoveLeftoverTemps(folder);
}

int recoverAll() {
    int dealt = 0;
    const QDir dir(pendingFolder());
    for (const QString& name : dir.entryList({QStringLiteral("entry-*")}, QDir::Files)) {
        const QByteArray path = QFile::encodeName(dir.filePath(name));
        const int fd = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
        if (fd < 0) continue;
        if (::flock(fd, LOCK_EX | LOCK_NB) == 0) {
            char buf[4096];
            const ssize_t n = ::pread(fd, buf, sizeof buf, 0);
            if (n > 0) dealt += recoverFolder(QFile::decodeName(QByteArray(buf, int(n))));
            ::unlink(path.constData());
        }
        ::close(fd);
    }
    return dealt;
}

Result shiftFile(const QString& filename, qint64 count, const QByteArray& head) {
    if (count < 0) return failure(EINVAL);
    const QString target = realPath(filename);
    const QByteArray targetPath = QFile::encodeName(target);
    const QString folder = QFileInfo(target).absolutePath();
    Pending pending(folder);
    recoverFolder(folder);

    const int src = ::open(targetPath.constData(), O_RDONLY | O_CLOEXEC);
    if (src < 0) return failure(errno);
    struct stat st {};
    if (::fstat(src, &st) != 0) {
        const int err = errno;
        ::close(src);
        return failure(err);
    }

    QByteArray tmpl = QFile::encodeName(modFiles::file_TempTemplate(target));
    const int dst = ::mkostemp(tmpl.data(), O_CLOEXEC);
    if (dst < 0) {
        const int err = errno;
        ::close(src);
        return failure(err);
    }
    // Held until the rename: a copy nobody holds is a leftover.
    ::flock(dst, LOCK_EX);
    auto abandon = [&](int err) {
        ::close(src);
        ::close(dst);
        ::unlink(tmpl.constData());
        return failure(err);
    };
    if (::fchmod(dst, st.st_mode & 07777) != 0) return abandon(errno);
    // Best effort: as root, the file keeps its owner.
    if (::geteuid() == 0 && ::fchown(dst, st.st_uid, st.st_gid) != 0) {
    }

    const qint64 headLength = head.size();
    bool ok = writeAll(dst, head.constData(), size_t(headLength));
    if (dying("copy")) {
        pending.abandon();
        ::close(src);
        ::close(dst);
        return failure(EINTR);
    }
    if (ok && headLength < count) {
        // The zeros between the new tag and the old content.
        const std::vector<char> zeros(kCopyBlock, 0);
        for (qint64 left = count - headLength; ok && left > 0;) {
            const size_t n = size_t(std::min<qint64>(left, qint64(zeros.size())));
            ok = writeAll(dst, zeros.data(), n);
            left -= qint64(n);
        }
        ok = ok && copyFrom(src, 0, dst);
    } else if (ok) {
        ok = copyFrom(src, off_t(headLength - count), dst);
    }
    if (!ok || ::fsync(dst) != 0) return abandon(errno ? errno : EIO);
    ::close(src);
    if (::rename(tmpl.constData(), targetPath.constData()) != 0) {
        const int err = errno;
        ::unlink(tmpl.constData());
        ::close(dst);
        return failure(err);
    }
    ::close(dst);
    syncFolder(folder);
    return {true, 0, QString()};
}

Result writeInPlace(const QString& filename, qint64 offset, const QByteArray& bytes) {
    if (offset < 0) return failure(EINVAL);
    const QString target = realPath(filename);
    const QString folder = QFileInfo(target).absolutePath();
    Pending pending(folder);
    recoverFolder(folder);

    const int fd = ::open(QFile::encodeName(target).constData(), O_RDWR | O_CLOEXEC);
    if (fd < 0) return failure(errno);
    struct stat st {};
    if (::fstat(fd, &st) != 0) {
        const int err = errno;
        ::close(fd);
        return failure(err);
    }
    // What lies past the end of the file has no old bytes; a rollback cuts it off again.
    const qint64 oldLength = std::clamp<qint64>(st.st_size - offset, 0, bytes.size());
    QByteArray journal(kJournalMagic, 8);
    putLE64(journal, quint64(offset));
    putLE64(journal, quint64(oldLength));
    putLE64(journal, quint64(st.st_size));
    const qsizetype at = journal.size();
    journal.resize(at + oldLength);
    if (!preadAll(fd, journal.data() + at, size_t(oldLength), off_t(offset))) {
        const int err = errno;
        ::close(fd);
        return failure(err);
    }
    putLE64(journal, checksum(journal.constData(), size_t(journal.size())));

    // The journal stands whole and synced under its name before the first byte changes.
    const QString journalName = journalPath(target);
    QByteArray tmp = QFile::encodeName(modFiles::file_TempTemplate(journalName));
    const int j = ::mkostemp(tmp.data(), O_CLOEXEC);
    if (j < 0) {
        const int err = errno;
        ::close(fd);
        return failure(err);
    }
    ::flock(j, LOCK_EX); // the lock goes with the file through the rename
    if (!writeAll(j, journal.constData(), size_t(journal.size())) || ::fsync(j) != 0 ||
        ::rename(tmp.constData(), QFile::encodeName(journalName).constData()) != 0) {
        const int err = errno;
        ::unlink(tmp.constData());
        ::close(j);
        ::close(fd);
        return failure(err);
    }
    syncFolder(folder);

    if (dying("overwrite")) {
        pwriteAll(fd, bytes.constData(), size_t(bytes.size() / 2), off_t(offset));
        pending.abandon();
        ::close(fd);
        ::close(j);
        return failure(EINTR);
    }
    const bool written =
        pwriteAll(fd, bytes.constData(), size_t(bytes.size()), off_t(offset)) && ::fsync(fd) == 0;
    const int err = errno;
    ::close(fd);
    if (!written) {
        ::close(j); // unlocked: the rollback below (or the next start) puts the old bytes back
        rollBack(journalName);
        return failure(err);
    }
    ::unlink(QFile::encodeName(journalName).constData());
    ::close(j);
    return {true, 0, QString()};
}

void dieAtForTests(const char* point) {
    g_dieAt = point;
}

} // namespace TagShift
