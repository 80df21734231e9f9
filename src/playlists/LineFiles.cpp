#include "playlists/LineFiles.h"

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
    if (!bytes.isEmpty() && !bytes.endsWith('\n') && !bytes.endsWith('\r')) bytes += "\r\n";
    bytes += line.toUtf8() + "\r\n";
    return modFiles::file_WriteAtomic(path, bytes);
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
    const QString text = QString::fromUtf8(readAll(path));
    QStringList lines;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c != QLatin1Char('\n') && c != QLatin1Char('\r')) continue;
        lines.append(text.mid(start, i - start));
        if (c == QLatin1Char('\r') && i + 1 < text.size() && text.at(i + 1) == QLatin1Char('\n'))
            ++i;
        start = i + 1;
    }
    if (start < text.size()) lines.append(text.mid(start));
    return lines;
}

bool writeLines(const QString& path, const QStringList& lines) {
    QByteArray bytes;
    for (const QString& line : lines)
        bytes += line.toUtf8() + "\r\n";
    QDir().mkpath(QFileInfo(path).path());
    return modFiles::file_WriteAtomic(path, bytes);
}

} // namespace LineFiles
