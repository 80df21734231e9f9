#pragma once
#include <QString>

// Files and path text. Paths use "/" here; the rules on "the last separator" apply to it.
namespace modFiles {

QString file_GetExtension(const QString& path);
QString file_GetName(const QString& path);
QString file_GetDirectory(const QString& path);
QString file_GetTitle(const QString& path);
QString text_StripTrailingNull(const QString& text);

bool file_Exists(const QString& path);                  // folders count too
bool file_HasAttributes(const QString& path, int mask); // 1: read-only

QString file_GetSizeText(const QString& path);
QString file_GetSizeFormatted(const QString& path, bool withUnit);

bool file_ContainsEntry(const QString& path, const QString& text);
long file_CountLines(const QString& path);
QString file_ReadLine(const QString& path, int index);

void file_Delete(const QString& path);
void file_SendToRecycleBin(const QString& path, bool confirm, bool silent);
void file_Copy(const QString& source, const QString& target);
void file_Move(const QString& source, const QString& target);
bool file_Rename(const QString& oldPath, const QString& newPath);
void file_AddToRecentDocuments(const QString& path);

// What a write came to: the system's error number and text when it failed.
struct WriteResult {
    bool ok = false;
    int error = 0;
    QString reason;
};

// Writes `bytes` to `path` so that a crash, a kill or a full disk leaves either the old file
// whole or the new one: every write is checked, the data is synced before the rename and the
// folder after it. Nothing is said to the user.
WriteResult file_WriteAtomicResult(const QString& path, const QByteArray& bytes);
// The same; a failure is told to the user once (until a write to that file succeeds again)
// unless `tellUser` is false.
bool file_WriteAtomic(const QString& path, const QByteArray& bytes, bool tellUser = true);
// The warning for a file that could not be saved, shown once per file until it is saved again.
void file_ReportWriteFailure(const QString& path, const QString& reason);

// Lays `tail` over `path` from byte `offset` on, provided the file is `expectedSize` bytes long
// now (otherwise nothing is touched and the result fails with ESTALE). A write that falls short
// puts the old bytes back: the file ends with the whole new tail or as it was.
WriteResult file_ReplaceTail(const QString& path, qint64 expectedSize, qint64 offset,
                             const QByteArray& tail);

// Temporary files that writes and tag shifts make beside their target while they run:
// ".<name>.veldor-XXXXXX". One left behind by a kill is recognised by its name and removed.
QString file_TempTemplate(const QString& path);
bool file_IsLeftoverTemp(const QString& name);
// Removes the leftovers in `folder` that no running write can still own; the count removed.
int file_RemoveLeftoverTemps(const QString& folder);

} // namespace modFiles
