#include "core/modFiles.h"

#include "core/Dialogs.h"
#include "core/TextLines.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QStandardPaths>
#include <QUrl>

#include <QSet>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace modFiles {
namespace {

void serveEvents() {
    if (QCoreApplication::instance()) QCoreApplication::processEvents();
}

QByteArray readAll(const QString& path, bool* ok = nullptr) {
    QFile f(path);
    const bool opened = f.open(QIODevice::ReadOnly);
    if (ok) *ok = opened;
    return opened ? f.readAll() : QByteArray();
}

bool isReadOnly(const QFileInfo& info) {
    return !(info.permissions() & QFileDevice::WriteOwner);
}

// Where a copy or move lands: into an existing folder under the source's name, else the path.
QString landingPath(const QString& source, const QString& target) {
    const QFileInfo t(target);
    if (t.isDir()) return QDir(target).filePath(QFileInfo(source).fileName());
    return target;
}

bool sameFile(const QString& a, const QString& b) {
    const QFileInfo ia(a), ib(b);
    return ib.exists() && ia.canonicalFilePath() == ib.canonicalFilePath();
}

bool writeFully(int fd, const char* p, size_t n);
WriteResult writeReplacing(const QString& path, const std::function<bool(int)>& fill);

// Copies one regular file so that the target is either its old self or the whole new copy;
// permissions and modification time go along, as a shell copy keeps them.
bool copyFileAtomic(const QString& source, const QString& target) {
    const QFileInfo src(source);
    if (!src.isFile()) return false;
    const QFileInfo dst(target);
    if (dst.exists() && (dst.isDir() || isReadOnly(dst))) return false;
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly)) return false;
    const WriteResult r = writeReplacing(target, [&](int fd) {
        QByteArray buffer;
        while (!in.atEnd()) {
            buffer = in.read(1 << 20);
            if (buffer.isEmpty() && in.error() != QFileDevice::NoError) break;
            if (!writeFully(fd, buffer.constData(), size_t(buffer.size()))) return false;
        }
        if (in.error() != QFileDevice::NoError || !in.atEnd()) {
            errno = EIO;
            return false;
        }
        return true;
    });
    if (!r.ok) return false;
    QFile::setPermissions(target, src.permissions());
    QFile t(target);
    if (t.open(QIODevice::ReadWrite))
        t.setFileTime(src.lastModified(), QFileDevice::FileModificationTime);
    return true;
}

QString recentFilePath() {
    QString data = qEnvironmentVariable("XDG_DATA_HOME");
    if (data.isEmpty() || !QDir::isAbsolutePath(data))
        data = QDir::homePath() + QStringLiteral("/.local/share");
    return data + QStringLiteral("/recently-used.xbel");
}

QString timeStamp() {
    return QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyy-MM-ddThh:mm:ss.zzz000Z"));
}

// Sets `name="value"` inside one start tag, adding the attribute when it is missing.
void setAttribute(QString& tag, const QString& name, const QString& value) {
    const QString key = QLatin1Char(' ') + name + QStringLiteral("=\"");
    const qsizetype at = tag.indexOf(key);
    if (at >= 0) {
        const qsizetype start = at + key.size();
        const qsizetype end = tag.indexOf(QLatin1Char('"'), start);
        if (end >= 0) {
            tag.replace(start, end - start, value);
            return;
        }
    }
    const qsizetype close = tag.endsWith(QLatin1String("/>")) ? tag.size() - 2 : tag.size() - 1;
    tag.insert(close, QLatin1Char(' ') + name + QStringLiteral("=\"") + value + QLatin1Char('"'));
}

} // namespace

// ---- paths and names

QString file_GetExtension(const QString& path) {
    const qsizetype dot = path.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? path : path.mid(dot + 1);
}

QString file_GetName(const QString& path) {
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    return slash < 0 ? path : path.mid(slash + 1);
}

QString file_GetDirectory(const QString& path) {
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    return slash < 0 ? QString() : path.left(slash);
}

QString file_GetTitle(const QString& path) {
    const QString name = file_GetName(path);
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? name : name.left(dot);
}

QString text_StripTrailingNull(const QString& text) {
    if (!text.isEmpty() && text.back() == QChar(0)) return text.left(text.size() - 1);
    return text;
}

// ---- tests

bool file_Exists(const QString& path) {
    return !path.isEmpty() && QFileInfo::exists(path);
}

bool file_HasAttributes(const QString& path, int mask) {
    const QFileInfo info(path);
    // A missing path answers with every bit set, as the classic attribute call does.
    if (path.isEmpty() || !info.exists()) return true;
    int attributes = 0;
    if (isReadOnly(info)) attributes |= 1;
    if (info.fileName().startsWith(QLatin1Char('.'))) attributes |= 2;
    if (info.isDir())
        attributes |= 16;
    else
        attributes |= 32;
    return (attributes & mask) == mask;
}

// ---- sizes

QString file_GetSizeText(const QString& path) {
    return QString::number(QFileInfo(path).size());
}

QString file_GetSizeFormatted(const QString& path, bool withUnit) {
    const qint64 size = QFileInfo(path).size();
    if (size >= 1025) {
        const double mb = std::round(double(size) / 1024.0 / 1024.0 * 100.0) / 100.0;
        const QString text = QString::number(mb, 'g', 15);
        return withUnit ? text + QStringLiteral(" MB") : text;
    }
    const QString text = QString::number(size);
    return withUnit ? text + QStringLiteral(" Bytes") : text;
}

// ---- text files

bool file_ContainsEntry(const QString& path, const QString& text) {
    if (!file_Exists(path)) return false;
    const QString wanted = text.toLower();
    const QString content = TextLines::decode(readAll(path));
    TextLines::ValueReader reader(content);
    QString value;
    while (reader.next(value)) {
        serveEvents();
        if (value.toLower() == wanted) return true;
    }
    return false;
}

long file_CountLines(const QString& path) {
    if (!file_Exists(path)) return 0;
    return long(TextLines::lines(TextLines::decode(readAll(path))).size());
}

QString file_ReadLine(const QString& path, int index) {
    if (!file_Exists(path) || index < 1) return {};
    const QStringList lines = TextLines::lines(TextLines::decode(readAll(path)));
    return index > lines.size() ? QString() : lines.at(index - 1);
}

// ---- changes on disk

void file_Delete(const QString& path) {
    if (!file_Exists(path) || file_HasAttributes(path, 1)) return;
    if (QFileInfo(path).isDir()) return; // a plain delete does not remove folders, and says nothing
    if (!QFile::remove(path))
        Dialogs::msgBox(QStringLiteral("There was an error while trying to delete the following "
                                       "file:\n%1\n\nPlease check that the file is not being used "
                                       "by another program or user.\n")
                            .arg(path),
                        Dialogs::vbExclamation, QStringLiteral("Deleting File Error"));
}

void file_SendToRecycleBin(const QString& path, bool confirm, bool /*silent*/) {
    if (confirm && file_Exists(path)) {
        const int answer = Dialogs::msgBox(
            QStringLiteral("Are you sure you want to move '%1' to the Trash?\n")
                .arg(file_GetName(path)),
            Dialogs::vbQuestion | Dialogs::vbYesNo, QStringLiteral("Confirm File Delete"));
        if (answer != Dialogs::vbYes) return;
    }
    // The home Trash lives in the data folder, which a fresh account may not have yet.
    QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    // The Trash is the only way: where there is none the file stays, it is never lost for good.
    if (path.isEmpty() || !QFile::moveToTrash(path))
        Dialogs::msgBox(
            QStringLiteral("An error occured while trying to delete the filename\n%1\n\n"
                           "This function will not continue.\n")
                .arg(path),
            Dialogs::vbExclamation, QStringLiteral("Error Deleting File"));
}

void file_Copy(const QString& source, const QString& target) {
    const QString to = landingPath(source, target);
    if (QFileInfo(source).isFile() && sameFile(source, to))
        return; // onto itself: nothing to do, and nothing may be truncated
    if (!copyFileAtomic(source, to))
        Dialogs::msgBox(QStringLiteral("An error occured while trying to copy the filename\n%1\n\n"
                                       "This function will not continue.\n")
                            .arg(source),
                        Dialogs::vbExclamation, QStringLiteral("Error Copying File"));
}

void file_Move(const QString& source, const QString& target) {
    const QString to = landingPath(source, target);
    const QFileInfo src(source);
    bool ok = false;
    if (src.exists() || src.isSymLink()) {
        if (sameFile(source, to)) {
            ok = true;
        } else {
            const QFileInfo dst(to);
            if (dst.exists() && (dst.isDir() || isReadOnly(dst))) {
                ok = false; // never replace a folder or a read-only file
            } else if (std::rename(QFile::encodeName(source).constData(),
                                   QFile::encodeName(to).constData()) == 0) {
                ok = true;
            } else if (errno == EXDEV && src.isFile()) {
                // Another file system: the source goes only once the whole copy stands.
                ok = copyFileAtomic(source, to) && QFile::remove(source);
            }
        }
    }
    if (!ok)
        Dialogs::msgBox(QStringLiteral("An error occured while trying to move the filename\n%1\n\n"
                                       "This function will not continue.\n")
                            .arg(source),
                        Dialogs::vbExclamation, QStringLiteral("Error Moving File"));
}

bool file_Rename(const QString& oldPath, const QString& newPath) {
    if (oldPath.isEmpty() || newPath.isEmpty()) return false;
    const QFileInfo src(oldPath);
    if (!src.exists() && !src.isSymLink()) return false;
    const QFileInfo dst(newPath);
    if (dst.exists() || dst.isSymLink()) return false; // a rename never replaces another file
    if (std::rename(QFile::encodeName(oldPath).constData(),
                    QFile::encodeName(newPath).constData()) == 0)
        return true;
    if (errno == EXDEV && src.isFile())
        return copyFileAtomic(oldPath, newPath) && QFile::remove(oldPath);
    return false;
}

void file_AddToRecentDocuments(const QString& path) {
    if (path.isEmpty() || !QFileInfo(path).isFile()) return;
    const QString absolute = QFileInfo(path).absoluteFilePath();
    const QString href =
        QString::fromUtf8(QUrl::fromLocalFile(absolute).toEncoded()).toHtmlEscaped();
    const QString now = timeStamp();
    const QString xbel = recentFilePath();

    QString doc;
    if (QFileInfo::exists(xbel)) {
        bool ok = false;
        doc = QString::fromUtf8(readAll(xbel, &ok));
        if (!ok || !doc.contains(QLatin1String("</xbel>")))
            return; // not ours to repair: the desktop's list stays as it is
    } else {
        QDir().mkpath(QFileInfo(xbel).path());
        doc = QStringLiteral(
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<xbel version=\"1.0\"\n"
            "      xmlns:bookmark=\"http://www.freedesktop.org/standards/desktop-bookmarks\"\n"
            "      xmlns:mime=\"http://www.freedesktop.org/standards/shared-mime-info\"\n"
            ">\n"
            "</xbel>\n");
    }

    const QString opening = QStringLiteral("<bookmark href=\"") + href + QLatin1Char('"');
    const qsizetype at = doc.indexOf(opening);
    if (at >= 0) {
        const qsizetype end = doc.indexOf(QLatin1Char('>'), at);
        if (end < 0) return;
        QString tag = doc.mid(at, end - at + 1);
        setAttribute(tag, QStringLiteral("modified"), now);
        setAttribute(tag, QStringLiteral("visited"), now);
        doc.replace(at, end - at + 1, tag);
    } else {
        const QString mime = QMimeDatabase().mimeTypeForFile(absolute).name().toHtmlEscaped();
        const QString entry =
            QStringLiteral("  <bookmark href=\"%1\" added=\"%2\" modified=\"%2\" visited=\"%2\">\n"
                           "    <info>\n"
                           "      <metadata owner=\"http://freedesktop.org\">\n"
                           "        <mime:mime-type type=\"%3\"/>\n"
                           "        <bookmark:applications>\n"
                           "          <bookmark:application name=\"VELDOR\" "
                           "exec=\"&apos;veldor %u&apos;\" modified=\"%2\" count=\"1\"/>\n"
                           "        </bookmark:applications>\n"
                           "      </metadata>\n"
                           "    </info>\n"
                           "  </bookmark>\n")
                .arg(href, now, mime);
        doc.insert(doc.lastIndexOf(QLatin1String("</xbel>")), entry);
    }
    file_WriteAtomic(xbel, doc.toUtf8());
}

// ---- writes that never leave half a file

namespace {

const char kTempMark[] = ".veldor-";

WriteResult failed(int err) {
    if (err == 0) err = EIO;
    return {false, err, QString::fromLocal8Bit(std::strerror(err))};
}

bool writeFully(int fd, const char* p, size_t n) {
    while (n > 0) {
        const ssize_t w = ::write(fd, p, n);
        if (w < 0 && errno == EINTR) continue;
        if (w < 0) return false;
        if (w == 0) {
            errno = ENOSPC;
            return false;
        }
        p += w;
        n -= size_t(w);
    }
    return true;
}

bool pwriteFully(int fd, const char* p, size_t n, off_t at) {
    while (n > 0) {
        const ssize_t w = ::pwrite(fd, p, n, at);
        if (w < 0 && errno == EINTR) continue;
        if (w < 0) return false;
        if (w == 0) {
            errno = ENOSPC;
            return false;
        }
        p += w;
        at += w;
        n -= size_t(w);
    }
    return true;
}

// The rename is only durable once the folder's entry is on disk too.
void syncFolder(const QByteArray& folder) {
    const int dir = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dir < 0) return;
    ::fsync(dir);
    ::close(dir);
}

mode_t newFileMode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

QSet<QString>& toldFailures() {
    static QSet<QString> told;
    return told;
}

} // namespace

QString file_TempTemplate(const QString& path) {
    const QFileInfo info(path);
    return info.absolutePath() + QStringLiteral("/.") + info.fileName() + QLatin1String(kTempMark) +
           QStringLiteral("XXXXXX");
}

bool file_IsLeftoverTemp(const QString& name) {
    const qsizetype mark = name.lastIndexOf(QLatin1String(kTempMark));
    // "." + at least one character of the target's name, then the mark and six characters.
    return name.startsWith(QLatin1Char('.')) && mark >= 2 &&
           name.size() == mark + qsizetype(sizeof kTempMark - 1) + 6;
}

int file_RemoveLeftoverTemps(const QString& folder) {
    QDir dir(folder);
    int removed = 0;
    const QStringList names =
        dir.entryList({QStringLiteral(".*") + QLatin1String(kTempMark) + QStringLiteral("*")},
                      QDir::Files | QDir::Hidden | QDir::System);
    for (const QString& name : names) {
        if (!file_IsLeftoverTemp(name)) continue;
        const QByteArray full = QFile::encodeName(dir.filePath(name));
        const int fd = ::open(full.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
        if (fd < 0) continue;
        // A write under way holds its file locked; a killed one left it unlocked.
        if (::flock(fd, LOCK_EX | LOCK_NB) == 0 && ::unlink(full.constData()) == 0) ++removed;
        ::close(fd);
    }
    return removed;
}

namespace {

// The new content goes to a locked temporary file beside the target, is synced, and then
// renamed over it; `fill` writes the content and answers false (errno set) on a failure.
WriteResult writeReplacing(const QString& path, const std::function<bool(int)>& fill) {
    if (path.isEmpty()) return failed(EINVAL);
    QFileInfo info(path);
    if (info.exists() && info.isDir()) return failed(EISDIR);
    if (info.exists() && isReadOnly(info)) return failed(EACCES);
    // A link is kept a link: its target is what gets replaced.
    const QString target = info.isSymLink() && info.exists() ? info.canonicalFilePath() : path;
    const QByteArray targetName = QFile::encodeName(target);
    const QByteArray folder = QFile::encodeName(QFileInfo(target).absolutePath());
    struct stat old {};
    const bool hadOld = ::stat(targetName.constData(), &old) == 0;

    file_RemoveLeftoverTemps(QFileInfo(target).absolutePath());
    QByteArray tmp = QFile::encodeName(file_TempTemplate(target));
    const int fd = ::mkostemp(tmp.data(), O_CLOEXEC);
    if (fd < 0) return failed(errno);
    ::flock(fd, LOCK_EX);
    auto abandon = [&](int err) {
        ::close(fd);
        ::unlink(tmp.constData());
        return failed(err);
    };
    if (::fchmod(fd, hadOld ? (old.st_mode & 07777) : newFileMode()) != 0) return abandon(errno);
    if (hadOld && ::geteuid() == 0 && ::fchown(fd, old.st_uid, old.st_gid) != 0) {
        // Best effort: the file keeps its owner where we may give it.
    }
    errno = 0;
    if (!fill(fd)) return abandon(errno);
    if (::fsync(fd) != 0) return abandon(errno);
    if (::close(fd) != 0) {
        const int err = errno;
        ::unlink(tmp.constData());
        return failed(err);
    }
    if (::rename(tmp.constData(), targetName.constData()) != 0) {
        const int err = errno;
        ::unlink(tmp.constData());
        return failed(err);
    }
    syncFolder(folder);
    return {true, 0, {}};
}

} // namespace

WriteResult file_WriteAtomicResult(const QString& path, const QByteArray& bytes) {
    return writeReplacing(
        path, [&](int fd) { return writeFully(fd, bytes.constData(), size_t(bytes.size())); });
}

void file_ReportWriteFailure(const QString& path, const QString& reason) {
    const QString key = QFileInfo(path).absoluteFilePath();
    if (toldFailures().contains(key)) return;
    toldFailures().insert(key);
    Dialogs::msgBox(QStringLiteral("The following file could not be saved:\n%1\n\n%2\n\nThe file "
                                   "on disk was left as it was before.\n")
                        .arg(path, reason),
                    Dialogs::vbExclamation, QStringLiteral("Error Saving File"));
}

bool file_WriteAtomic(const QString& path, const QByteArray& bytes, bool tellUser) {
    const WriteResult r = file_WriteAtomicResult(path, bytes);
    if (r.ok) {
        toldFailures().remove(QFileInfo(path).absoluteFilePath());
        return true;
    }
    // A read-only file loses the write without a word, as the callers' rules have it.
    if (tellUser && r.error != EACCES) file_ReportWriteFailure(path, r.reason);
    return false;
}

WriteResult file_ReplaceTail(const QString& path, qint64 expectedSize, qint64 offset,
                             const QByteArray& tail) {
    if (offset < 0 || offset > expectedSize) return failed(EINVAL);
    const QByteArray name = QFile::encodeName(path);
    const int fd = ::open(name.constData(), O_RDWR | O_CLOEXEC);
    if (fd < 0) return failed(errno);
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode) || st.st_size != expectedSize) {
        ::close(fd);
        return failed(ESTALE);
    }
    QByteArray old(expectedSize - offset, Qt::Uninitialized);
    if (::pread(fd, old.data(), size_t(old.size()), off_t(offset)) != ssize_t(old.size())) {
        ::close(fd);
        return failed(EIO);
    }
    if (!pwriteFully(fd, tail.constData(), size_t(tail.size()), off_t(offset)) ||
        (offset + tail.size() < expectedSize &&
         ::ftruncate(fd, off_t(offset + tail.size())) != 0)) {
        const int err = errno;
        // Back to the old length and bytes; both fit where they stood before.
        if (::ftruncate(fd, off_t(expectedSize)) == 0)
            pwriteFully(fd, old.constData(), size_t(old.size()), off_t(offset));
        ::close(fd);
        return failed(err);
    }
    ::close(fd);
    return {true, 0, {}};
}

} // namespace modFiles
