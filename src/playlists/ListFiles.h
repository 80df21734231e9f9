#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <vector>

class ListModel;
class MainContext;

// The list file: one double-quoted value a line (CR LF), the columns of a row in order, no
// header. Every list kept on disk is stored this way; a .spp playlist is one use of it.

// Writes all rows of `list`, replacing `path` in one step: a crash leaves the old file or the
// new one, never half of either. False when the file could not be written (the old one stays).
bool listview_SaveToFile(const ListModel& list, const QString& path);
// Appends the rows of the file to `list`. On any failure (missing or unreadable file, a file
// that ends inside a row) it warns and empties the list, as callers expect. False then.
bool listview_LoadFromFile(ListModel& list, const QString& path);

// default.spp, the rows of the last run: replaced at exit when the playlist has rows, removed
// when it is empty; loaded (not scanned) at start-up when present.
QString playlist_DefaultPath();
void playlist_SaveDefault(MainContext& ctx);
void playlist_LoadDefault(MainContext& ctx);

namespace ListFiles {

// The bytes of a list file for these rows.
QByteArray encode(const ListModel& list);
// One value a line, quoted, CR LF: the bytes a row adds to a list file.
QByteArray encodeRow(const QStringList& cells);

// Splits the text of a list file into rows of `columns` values. False when the text ends
// inside a row or a quoted value is never closed; `rows` then holds the complete rows read.
bool decode(const QByteArray& bytes, int columns, std::vector<QStringList>& rows);

} // namespace ListFiles
