#pragma once
#include <QByteArray>
#include <QString>

// Writing a tag so that a kill at any moment leaves the old file or the new one. Moving the
// audio back goes through a whole new copy beside the file that then replaces it by a rename;
// writing over the old tag first saves the bytes about to be overwritten in a small synced
// journal beside the file. The copy or journal an interrupted write leaves is found and dealt
// with by the next write to that folder or the next start.
namespace TagShift {

struct Result {
    bool ok = false;
    int error = 0;
    QString description;
};

// The file becomes `count` bytes longer: its whole old content moves back by `count`, and `head`
// is laid over the start of the result (over the zeros gained, and the old tag's start when
// `head` is longer).
Result shiftFile(const QString& filename, qint64 count, const QByteArray& head);

// Lays `bytes` over the file at `offset` (inside the file), journaled.
Result writeInPlace(const QString& filename, qint64 offset, const QByteArray& bytes);

// ".<name>.veldor-journal" beside the file.
QString journalPath(const QString& filename);
// Rolls back the journals and removes the temporary copies that interrupted writes left in
// `folder`; the count of files dealt with. Those of writes still running are left alone.
int recoverFolder(const QString& folder);
// The same for every folder a write was under way in when its process died; the list of them
// is kept under the user's state folder ($XDG_STATE_HOME/veldor/pending).
int recoverAll();

// For tests: the next write stops dead at `point` as a kill would leave it, without any clean-up:
// "copy" halfway through a shift's copy, "overwrite" halfway through an in-place write.
void dieAtForTests(const char* point);

} // namespace TagShift
