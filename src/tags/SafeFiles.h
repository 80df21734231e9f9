#pragma once
#include <QString>

// File moves for the tag tools that never overwrite a file and never leave one under no name.
namespace SafeFiles {

struct Outcome {
    bool ok = false;
    int error = 0;  // errno of the step that failed
    QString target; // where the file stands now (a free name when the wanted one was taken)
};

// Renames within a file system without ever replacing `newPath`: fails with EEXIST when it is
// there. Atomic: at every moment the file is under exactly one of the two names.
Outcome renameNoReplace(const QString& oldPath, const QString& newPath);

// Moves or copies `source` into `folder` under its own name, or under "name (2).ext" and so on
// when that name is taken. Across file systems the copy is written beside the target under a
// temporary name, synced and checked for size, then put in place; only then does a move remove
// the source. Moving a file onto itself is done at once.
Outcome transferToFolder(const QString& source, const QString& folder, bool copy);

// "name (n).ext" for n = 2, 3, ... : the first name not taken in `folder`.
QString freeName(const QString& folder, const QString& fileName);

// False for the "Read-Only" of the editors: no owner write bit, or the system refuses a write.
bool isWritable(const QString& path);

} // namespace SafeFiles
