#include "playlists/LineFiles.h"

#include "core/TextLines.h"
#include "core/modFiles.h"
#include "playlists/ListFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <vector>

namespace LineFiles {
namespace {

QByteArray readAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace

bool append(const QString& path, const QString& line) {
    QDir().mkpath(QFileInfo(path).path());
    QByteArray bytes = readAll(path);
    // A file with only a byte-order mark has no line to end.
    const bool bomOnly = bytes == "\xEF\xBB\xBF";
    if (!bytes.isEmpty() && !bomOnly && !bytes.endsWith('\n') && !bytes.endsWith('\r'))
        bytes += "\r\n";
    // The new line is written in the file's own encoding, so that both read back alike; a line
    // that encoding cannot hold turns the whole file into UTF-8.
    const QByteArray added = TextLines::encodeLike(bytes, line + QStringLiteral("\r\n"));
    if (added.isNull()) {
        QString text = TextLines::decode(bytes);
        text += line + QStringLiteral("\r\n");
        return modFiles::file_WriteAtomic(path, text.toUtf8());
    }
    return modFiles::file_WriteAtomic(path, bytes + added);
}

QStringList readValues(const QString& path) {
    std::vector<QStringList> rows;
    ListFiles::decode(readAll(path), 1, rows); // a cut-off value at the end is dropped
    QStringList out;
    out.reserve(qsizetype(rows.size()));
    for (QStringList& row : rows) {
        QString& v = row.first();
        if (v.isEmpty() || v.size() > MaxPathLength || v.contains(QChar(0))) continue;
        out.append(std::move(v));
    }
    return out;
}

QStringList readLines(const QString& path) {
    return TextLines::lines(TextLines::decode(readAll(path)));
}

bool writeLines(const QString& path, const QStringList& lines) {
    QByteArray bytes;
    for (const QString& line : lines)
        bytes += line.toUtf8() + "\r\n";
    QDir().mkpath(QFileInfo(path).path());
    return modFiles::file_WriteAtomic(path, bytes);
}

} // namespace LineFiles
