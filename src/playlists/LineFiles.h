#pragma once
#include <QString>
#include <QStringList>

// The small text files of filenames (moods, bookmarks, past locations): one bare path a line,
// CR LF. Appends replace the file in one step, so a crash never leaves half a line.
namespace LineFiles {

// No path is longer than this; a longer "line" is damage, not a file name.
constexpr int MaxPathLength = 4096;

// Appends `line` and CR LF; false when the file could not be written (it stays as it was).
bool append(const QString& path, const QString& line);
// The values of the file as the list reader sees them (a comma splits a line in two); values
// that cannot be a path (too long, or holding NUL) are passed over.
QStringList readValues(const QString& path);
// Whole lines, as they stand (LF, CR LF or CR ends one).
QStringList readLines(const QString& path);
// Writes `lines` in place of the file; false when it could not be written.
bool writeLines(const QString& path, const QStringList& lines);

} // namespace LineFiles
