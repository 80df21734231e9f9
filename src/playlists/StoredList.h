#pragma once
#include <QList>
#include <QPair>
#include <QString>

class ListModel;

// A list whose rows are its only store (the per-file volumes, the play counts): loaded once,
// written whole after each change. Identity of a row is its file name, blind to case.
namespace StoredList {

// Appends the rows of `path` to `list`. A damaged or unreadable file keeps the rows read before
// the damage, is told in the log (and once on screen), and is moved aside (to "<path>.damaged") so
// that the next save cannot overwrite what could not be read. False when the file was not read
// whole.
bool load(ListModel& list, const QString& path);

// Replaces `path` with the rows of `list` in one step, or removes it when the list is empty. A
// file that cannot be written keeps its old contents; false then.
bool save(const ListModel& list, const QString& path);

// 0-based row whose `column` equals `filename` with both sides lower-cased, or -1.
int findFile(const ListModel& list, int column, const QString& filename);
// Many renames at once, each as findFile and a new name would do one by one (the first row
// of the old name, names blind to case), with one look over the list.
void renameFiles(ListModel& list, int column, const QList<QPair<QString, QString>>& renames);

} // namespace StoredList
