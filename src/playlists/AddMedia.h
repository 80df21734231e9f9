#pragma once
#include <QString>
#include <QStringList>

class ListView;
class MainContext;

// The roads by which rows enter the playlist: the file dialog, the folder dialog (DirectoryAdd),
// the location window (FrmAddLocation), another playlist, and files dropped on the list.

// The filter of the Add Files dialog.
QString media_AddFilesFilter();
// True for an extension (lower case, no point) of a media file the program plays.
bool media_IsRecognised(const QString& extension);

// The Add Files dialog: the chosen files in full, or none when cancelled or too many.
QStringList media_ChooseFiles(const QString& title);
void mnuAddFiles_Click(MainContext& ctx);
void mnuAddDirectory_Click(MainContext& ctx);
void mnuAddPlaylist_Click(MainContext& ctx);
// Files dropped from outside, in the drop's order; the first one of an unknown type ends the add.
void lstvPlaylist_FilesDropped(MainContext& ctx, const QStringList& paths);

// Registers the handlers of the Add entries and the moods, bookmarks and recent lists.
void AddMedia_install(MainContext& ctx);
// Files dropped on the view go to lstvPlaylist_FilesDropped; the view does not repaint while a
// folder add fills it.
void AddMedia_connectView(MainContext& ctx, ListView* view);
