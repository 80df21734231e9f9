#include "tags/TagShift.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace TagShift {
namespace {

constexpr size_t kCopyBlock = 64 * 1024;

Result failure(int err) {
    return {false, err, QString::fromLocal8Bit(std::strerror(err))};
}

bool writeAll(int fd, const char* p, size_t n) {
    while (n > 0) {
        const ssize_t w = ::write(fd, p, n);
        if (w < 0 && errno == EINTR) continue;
        if (w <= 0) return false;
        p += w;
        n -= size_t(w);
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

} // namespace

Result shiftFile(const QString& filename, qint64 count, const QByteArray& head) {
    if (count < 0) return failure(EINVAL);
    // The rename must land on the real file, not on a link pointing at it.
    QFileInfo info(filename);
    const QString target = info.isSymLink() ? info.canonicalFilePath() : info.absoluteFilePath();
    const QByteArray targetPath = QFile::encodeName(target);

    const int src = ::open(targetPath.constData(), O_RDONLY | O_CLOEXEC);
    if (src < 0) return failure(errno);
    struct stat st {};
    if (::fstat(src, &st) != 0) {
        const int err = errno;
        ::close(src);
        return failure(err);
    }

    const QFileInfo ti(target);
    QByteArray tmpl = QFile::encodeName(ti.absolutePath() + QLatin1String("/.") + ti.fileName() +
                                        QLatin1String(".veldor-XXXXXX"));
    const int dst = ::mkstemp(tmpl.data());
    if (dst < 0) {
        const int err = errno;
        ::close(src);
        return failure(err);
    }
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
    if (::close(dst) != 0 || ::rename(tmpl.constData(), targetPath.constData()) != 0) {
        const int err = errno;
        ::unlink(tmpl.constData());
        return failure(err);
    }
    return {true, 0, QString()};
}

} // namespace TagShift
