#pragma once
#include <QHash>
#include <QString>
#include <vector>

class MainContext;

// The named playlists as files: listing them with their size and date, renaming and deleting
// them, and keeping the combo, the "Send To" menu and the recent playlists in step.

struct PlaylistFileInfo {
    QString title;   // the file name without ".spp"
    QString songs;   // seven lines a row
    QString created; // the time of the last write, in the system's format
};

// The .spp files of the Playlists folder but "default", in name order; none when the folder is
// missing or unreadable.
std::vector<PlaylistFileInfo> manage_ListPlaylists();

enum class RenameResult { Renamed, Refused, Failed };
// The rules of the rename dialog: refuses what cannot be a playlist name (messages included),
// asks before renaming a read-only file, renames and logs. The recent playlists follow.
RenameResult playlist_Rename(MainContext& ctx, const QString& oldPath, const QString& newName);

// Rebuilds the combo and the "Send To" menu from the folder, keeping the shown playlist under
// its new name when it was renamed (old title -> new title).
void manage_Refresh(MainContext& ctx, const QHash<QString, QString>& renamed = {});

// Asks, then sends one playlist to the Trash (or deletes it, by the setting). True when the file
// is gone; the recent playlists forget it.
bool playlist_DeleteFile(MainContext& ctx, const QString& path);
// Asks, then removes every .spp of the folder, default.spp too. True when asked and done.
bool playlist_DeleteAll(MainContext& ctx);

void mnuManagePlaylists_Click(MainContext& ctx);
void mnuRenameCurrentPlaylist_Click(MainContext& ctx);
void mnuDeleteCurrentPlaylist_Click(MainContext& ctx);
void mnuDeleteAllPlaylists_Click(MainContext& ctx);

void ManagePlaylists_install(MainContext& ctx);
