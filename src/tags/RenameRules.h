#pragma once
#include <QString>
#include <QStringList>

class MainContext;

// How the rename tools make a file name out of tags, and how a rename reaches the rows, the
// play counts and the stored volumes.

// The seven entries of `cmbFilename`, in list order.
const QStringList& rename_Patterns();

// The nine characters no name may hold: \ / : * ? " < > |
const QString& rename_ForbiddenCharacters();

// Removes the nine forbidden characters, in their order.
QString rename_CleanName(const QString& name);
bool rename_HasForbidden(const QString& name);

// The parts of the pattern (`cmbFilename` index) joined by " - ", with "07 - " in front when
// `number` is not negative, then "." and the extension lower-cased. Not cleaned.
QString rename_BuildName(int pattern, const QString& artist, const QString& title,
                         const QString& album, int number, const QString& extension);

// A name that may stand in a folder: not empty, not "." or "..", no "/" or NUL, at most 255
// bytes on disk.
bool rename_IsUsableName(const QString& name);

// True for "mp3", "mp2" and "mp1", any case.
bool tags_IsTagged(const QString& filename);

// The texts the mass tools go by, from the file's ID3v2 tag or its ID3v1 tag.
struct TagTexts {
    QString artist, title, album, year;
};
TagTexts tags_ReadTexts(const QString& filename, bool id3v2);

// True when `filename` is the file loaded in the media control (names compared lower-cased).
bool tags_IsLoaded(MainContext& ctx, const QString& filename);

// The one selected playlist row a single-file tool works on (0-based), or -1 after the refusal
// under `title`: more than one row, a file that is gone, or the file being played.
int tags_SelectedFileRow(MainContext& ctx, const QString& title);

// Carries a rename done on disk to the play counts, the stored volumes and every playlist row
// that held the old name.
void rename_Carry(MainContext& ctx, const QString& oldPath, const QString& newPath);
