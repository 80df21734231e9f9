#pragma once
#include <QString>

class MainContext;
class QObject;
class RecentList;

// The recent playlists: section "RecentPlaylists", menu array "mnuRecentPlaylist", limit
// "NumberofRecentPlaylists". `window` as for the recent media.
RecentList& recent_Playlists();
int recent_CountPlaylist();
bool recent_IsPlaylistEmpty();
void recent_ClearPlaylist();
void recent_RemovePlaylistMenus(QObject& window);
void recent_RemovePlaylist(int index, QObject& window);
void recent_AddPlaylist(const QString& path, QObject& window);
void recent_UpdatePlaylistMenu(QObject& window);
// A playlist renamed or deleted on disk: its entries (compared lower-cased) take the new path,
// or leave the list. The menu is rebuilt when anything changed.
void recent_RenamePlaylist(const QString& oldPath, const QString& newPath, QObject& window);
void recent_ForgetPlaylist(const QString& path, QObject& window);

// Opens entry `index` (0-based) of the main window's menu in place of the rows.
void mnuRecentPlaylist_Click(MainContext& ctx, int index);

// Loads both limits, fills both menus of the main window, registers the handlers and installs
// ctx.recentPlaylists_Add.
void RecentLists_install(MainContext& ctx);
