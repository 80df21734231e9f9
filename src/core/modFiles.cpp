#include "core/modFiles.h"

#include "core/Dialogs.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUrl>

#include <cerrno>
#include <cmath>
#include <cstdio>

namespace modFiles {
namespace {

void serveEvents() {
    if (QCoreApplication::instance()) QCoreApplication::processEvents();
}

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

// Calls `onValue` for each value of a list-style file until it returns true. A value in double
// quotes runs to the next quote; any other value to the next comma or line end. The separator
// behind a value is consumed with it.
template <typename F> bool forEachValue(const QByteArray& data, F onValue) {
    const qsizetype n = data.size();
    qsizetype i = 0;
    while (i < n) {
        while (i < n && isBlank(data[i]))
            ++i;
        QByteArray value;
        if (i < n && data[i] == '"') {
            const qsizetype close = data.indexOf('"', i + 1);
            const qsizetype end = close < 0 ? n : close;
            value = data.mid(i + 1, end - i - 1);
            i = end + 1;
            while (i < n && data[i] != ',' && data[i] != '\n' && data[i] != '\r')
                ++i;
        } else {
            const qsizetype start = i;
            while (i < n && data[i] != ',' && data[i] != '\n' && data[i] != '\r')
                ++i;
            value = data.mid(start, i - start);
            while (!value.isEmpty() && isBlank(value.back()))
                value.chop(1);
        }
        if (i < n && data[i] == ',')
            ++i;
        else if (i < n && data[i] == '\r')
            i += (i + 1 < n && data[i + 1] == '\n') ? 2 : 1;
        else if (i < n && data[i] == '\n')
            ++i;
        if (onValue(QString::fromUtf8(value))) return true;
    }
    return false;
}

// Lines ended by CR LF, LF or a lone CR; a last line without an end still counts.
QList<QByteArrayView> splitLines(const QByteArray& data) {
    QList<QByteArrayView> lines;
    const qsizetype n = data.size();
    qsizetype start = 0;
    for (qsizetype i = 0; i < n; ++i) {
        if (data[i] != '\n' && data[i] != '\r') continue;
        lines.append(QByteArrayView(data.constData() + start, i - start));
        if (data[i] == '\r' && i + 1 < n && data[i + 1] == '\n') ++i;
        start = i + 1;
    }
    if (start < n) lines.append(QByteArrayView(data.constData() + start, n - start));
    return lines;
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

// Copies one regular file so that the target is either its old self or the whole new copy;
// permissions and modification time go along, as a shell copy keeps them.
bool copyFileAtomic(const QString& source, const QString& target) {
    const QFileInfo src(source);
    if (!src.isFile()) return false;
    const QFileInfo dst(target);
    if (dst.exists() && (dst.isDir() || isReadOnly(dst))) return false;
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly)) return false;
    QSaveFile out(target);
    if (!out.open(QIODevice::WriteOnly)) return false;
    QByteArray buffer;
    while (!in.atEnd()) {
        buffer = in.read(1 << 20);
        if (buffer.isEmpty() && in.error() != QFileDevice::NoError) break;
        if (out.write(buffer) != buffer.size()) break;
    }
    if (in.error() != QFileDevice::NoError || !in.atEnd()) {
        out.cancelWriting();
        out.commit();
        return false;
    }
    if (!out.commit()) return false;
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
    return forEachValue(readAll(path), [&](const QString& value) {
        serveEvents();
        return value.toLower() == wanted;
    });
}

long file_CountLines(const QString& path) {
    if (!file_Exists(path)) return 0;
    return long(splitLines(readAll(path)).size());
}

QString file_ReadLine(const QString& path, int index) {
    if (!file_Exists(path) || index < 1) return {};
    const QByteArray data = readAll(path);
    const QList<QByteArrayView> lines = splitLines(data);
    if (index > lines.size()) return {};
    return QString::fromUtf8(lines[index - 1]);
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

bool file_WriteAtomic(const QString& path, const QByteArray& bytes) {
    if (path.isEmpty()) return false;
    const QFileInfo info(path);
    if (info.exists() && (info.isDir() || isReadOnly(info))) return false;
    QSaveFile save(path);
    if (!save.open(QIODevice::WriteOnly)) return false;
    if (save.write(bytes) != bytes.size()) {
        save.cancelWriting();
        save.commit();
        return false;
    }
    return save.commit();
}

} // namespace modFiles
