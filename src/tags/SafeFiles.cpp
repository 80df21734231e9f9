#include "tags/SafeFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace SafeFiles {
namespace {

QByteArray enc(const QString& path) {
    return QFile::encodeName(path);
}

QString joinPath(const QString& folder, const QString& name) {
    return folder.endsWith(QLatin1Char('/')) ? folder + name : folder + QLatin1Char('/') + name;
}

// rename(2) that refuses to replace; where the file system has no such flag, a link and an
// unlink do the same without a window in which the target could be lost.
int renameNoReplaceRaw(const QByteArray& from, const QByteArray& to) {
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS) return errno;
    if (::link(from.constData(), to.constData()) != 0) return errno;
    ::unlink(from.constData());
    return 0;
}

bool sameFile(const QByteArray& a, const QByteArray& b) {
    struct stat sa {
    }, sb{};
    return ::stat(a.constData(), &sa) == 0 && ::stat(b.constData(), &sb) == 0 &&
           sa.st_dev == sb.st_dev && sa.st_ino == sb.st_ino;
}

void syncFolder(const QString& folder) {
    const int fd = ::open(enc(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    ::fsync(fd);
    ::close(fd);
}

// Copies `source` to a new temporary file in `folder`; its name, or an error.
int copyToTemp(const QByteArray& source, const QString& folder, QByteArray& temp) {
    const int in = ::open(source.constData(), O_RDONLY | O_CLOEXEC);
    if (in < 0) return errno;
    struct stat st {};
    if (::fstat(in, &st) != 0) {
        const int e = errno;
        ::close(in);
        return e;
    }
    // Short on purpose: the real name may already be at the file system's limit.
    temp = enc(joinPath(folder, QStringLiteral(".veldor-copy-XXXXXX")));
    const int out = ::mkostemp(temp.data(), O_CLOEXEC);
    if (out < 0) {
        const int e = errno;
        ::close(in);
        return e;
    }
    int error = 0;
    char buffer[1 << 16];
    qint64 written = 0;
    for (;;) {
        const ssize_t n = ::read(in, buffer, sizeof buffer);
        if (n == 0) break;
        if (n < 0) {
            if (errno == EINTR) continue;
            error = errno;
            break;
        }
        for (ssize_t done = 0; done < n;) {
            const ssize_t w = ::write(out, buffer + done, size_t(n - done));
            if (w < 0) {
                if (errno == EINTR) continue;
                error = errno;
                break;
            }
            done += w;
            written += w;
        }
        if (error) break;
    }
    if (!error && ::fsync(out) != 0) error = errno;
    struct stat done {};
    if (!error && (::fstat(out, &done) != 0 || done.st_size != st.st_size || written != st.st_size))
        error = EIO; // a short copy must never take the place of the file
    if (!error) ::fchmod(out, st.st_mode & 07777);
    ::close(out);
    ::close(in);
    if (error) ::unlink(temp.constData());
    return error;
}

} // namespace

Outcome renameNoReplace(const QString& oldPath, const QString& newPath) {
    Outcome r;
    r.target = oldPath;
    if (oldPath.isEmpty() || newPath.isEmpty()) {
        r.error = ENOENT;
        return r;
    }
    if (oldPath == newPath) {
        r.ok = QFileInfo::exists(oldPath);
        r.error = r.ok ? 0 : ENOENT;
        return r;
    }
    r.error = renameNoReplaceRaw(enc(oldPath), enc(newPath));
    r.ok = r.error == 0;
    if (r.ok) r.target = newPath;
    return r;
}

QString freeName(const QString& folder, const QString& fileName) {
    QString target = joinPath(folder, fileName);
    if (!QFileInfo::exists(target) && !QFileInfo(target).isSymLink()) return target;
    const int dot = fileName.lastIndexOf(QLatin1Char('.'));
    const QString stem = dot > 0 ? fileName.left(dot) : fileName;
    const QString ext = dot > 0 ? fileName.mid(dot) : QString();
    for (int n = 2;; ++n) {
        target = joinPath(folder, QStringLiteral("%1 (%2)%3").arg(stem).arg(n).arg(ext));
        if (!QFileInfo::exists(target) && !QFileInfo(target).isSymLink()) return target;
    }
}

Outcome transferToFolder(const QString& source, const QString& folder, bool copy) {
    Outcome r;
    r.target = source;
    const QByteArray src = enc(source);
    struct stat st {};
    if (::stat(src.constData(), &st) != 0 || !S_ISREG(st.st_mode)) {
        r.error = errno ? errno : EINVAL;
        return r;
    }
    const QString name = QFileInfo(source).fileName();
    const QString wanted = joinPath(folder, name);
    if (!copy && sameFile(src, enc(wanted))) {
        r.ok = true; // already there
        return r;
    }
    QByteArray temp;
    // A name taken between the look and the rename is simply looked for again.
    for (int attempt = 0; attempt < 1000; ++attempt) {
        const QString target = freeName(folder, name);
        if (!copy && temp.isEmpty()) {
            const int e = renameNoReplaceRaw(src, enc(target));
            if (e == 0) {
                r.ok = true;
                r.target = target;
                return r;
            }
            if (e == EEXIST) continue;
            if (e != EXDEV) {
                r.error = e;
                return r;
            }
        }
        if (temp.isEmpty()) {
            r.error = copyToTemp(src, folder, temp);
            if (r.error) return r;
        }
        const int e = renameNoReplaceRaw(temp, enc(target));
        if (e == EEXIST) continue;
        if (e != 0) {
            ::unlink(temp.constData());
            r.error = e;
            return r;
        }
        syncFolder(folder);
        r.target = target;
        if (!copy && ::unlink(src.constData()) != 0) {
            // The copy stands and the source too: nothing is lost, but the move is not done.
            r.error = errno;
            return r;
        }
        r.ok = true;
        return r;
    }
    if (!temp.isEmpty()) ::unlink(temp.constData());
    r.error = EEXIST;
    return r;
}

bool isWritable(const QString& path) {
    // The owner's write bit as the editors show it, and what the system allows (a read-only
    // mount refuses even root).
    const QByteArray p = enc(path);
    struct stat st {};
    return ::stat(p.constData(), &st) == 0 && (st.st_mode & S_IWUSR) &&
           ::access(p.constData(), W_OK) == 0;
}

} // namespace SafeFiles
