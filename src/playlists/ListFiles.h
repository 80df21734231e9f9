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
// Writes into the file's folder, which is made again when it was removed meanwhile.
// Appends the rows of the file to `list`. On any failure (missing or unreadable file, a file
// that ends inside a row) it warns, keeps the rows read before the damage and moves a damaged
// file aside as "<path>.damaged", so that no later save can overwrite what could not be read.
// False then.
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
// inside a row or a quoted value is never closed; `rows` then holds the complete rows read and
// `badLine` (when given) the 1-based line where the broken row starts.
bool decode(const QByteArray& bytes, int columns, std::vector<QStringList>& rows,
            int* badLine = nullptr);

// Makes the folder of `path` again when it is gone, and says so in the log.
void ensureFolder(const QString& path);
// Moves a file that could not be read to the first free "<path>.damaged" ("-2", "-3" behind it
// when older ones are there); the new name, or empty when it could not be moved.
QString setAside(const QString& path);
// Tells the log, and the screen once per file, that `path` was read only up to `row`.
void reportDamaged(const QString& path, const QString& aside, int rowsKept, int badLine);

} // namespace ListFiles
