#include "tags/TagFile.h"

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

bool TagFile::open(const QString& filename, bool writable) {
    close();
    const QByteArray path = QFile::encodeName(filename);
    const int fd = ::open(path.constData(), (writable ? O_RDWR : O_RDONLY) | O_CLOEXEC);
    if (fd < 0) return false;
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        const int err = S_ISDIR(st.st_mode) ? EISDIR : errno;
        ::close(fd);
        errno = err;
        return false;
    }
    m_fd = fd;
    m_size = st.st_size;
    return true;
}

void TagFile::openMemory(const uint8_t* data, size_t size) {
    close();
    m_mem = data ? data : m_head.data();
    m_size = data ? qint64(size) : 0;
}

void TagFile::close() {
    if (m_fd >= 0) ::close(m_fd);
    m_fd = -1;
    m_mem = nullptr;
    m_size = 0;
    m_headLength = -1;
}

qint64 TagFile::readAt(qint64 offset, void* dst, qint64 count) {
    if (!isOpen() || offset < 0 || count < 0) return -1;
    if (offset >= m_size || count == 0) return 0;
    count = std::min(count, m_size - offset);
    if (m_mem) {
        std::memcpy(dst, m_mem + offset, size_t(count));
        return count;
    }
    if (offset + count <= HeadSize) {
        if (m_headLength < 0) {
            const ssize_t n = ::pread(m_fd, m_head.data(), HeadSize, 0);
            if (n < 0) return -1;
            m_headLength = n;
        }
        const qint64 n = std::max<qint64>(0, std::min(count, m_headLength - offset));
        std::memcpy(dst, m_head.data() + offset, size_t(n));
        return n;
    }
    qint64 done = 0;
    auto* out = static_cast<uint8_t*>(dst);
    while (done < count) {
        const ssize_t n = ::pread(m_fd, out + done, size_t(count - done), offset + done);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return done ? done : -1;
        if (n == 0) break;
        done += n;
    }
    return done;
}

bool TagFile::writeAt(qint64 offset, const void* src, qint64 count) {
    if (m_fd < 0 || offset < 0) return false;
    const auto* in = static_cast<const uint8_t*>(src);
    qint64 done = 0;
    while (done < count) {
        const ssize_t n = ::pwrite(m_fd, in + done, size_t(count - done), offset + done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        done += n;
    }
    m_headLength = -1;
    m_size = std::max(m_size, offset + count);
    return true;
}
