#include "playlists/modRecentPlaylists.h"

#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/modFiles.h"
#include "playlists/ListFiles.h"
#include "core/ListModel.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/RecentList.h"
#include "core/modControls.h"
#include "playlists/modRecentMedia.h"

RecentList& recent_Playlists() {
    static RecentList list("RecentPlaylists", "mnuRecentPlaylist", "NumberofRecentPlaylists");
    return list;
}

int recent_CountPlaylist() {
    return recent_Playlists().count();
}
bool recent_IsPlaylistEmpty() {
    return recent_Playlists().isEmpty();
}
void recent_ClearPlaylist() {
    recent_Playlists().clear();
}
void recent_RemovePlaylistMenus(QObject& window) {
    recent_Playlists().removeMenus(window);
}
void recent_RemovePlaylist(int index, QObject& window) {
    recent_Playlists().remove(index, window);
}
void recent_AddPlaylist(const QString& path, QObject& window) {
    recent_Playlists().add(path, window);
}
void recent_UpdatePlaylistMenu(QObject& window) {
    recent_Playlists().updateMenu(window);
}

void recent_RenamePlaylist(const QString& oldPath, const QString& newPath, QObject& window) {
    RecentList& recent = recent_Playlists();
    bool changed = false;
    for (int key = 1; key <= recent.limit(); ++key) {
        const QString value = recent.value(key);
        if (value.isEmpty()) break;
        if (value.toLower() != oldPath.toLower()) continue;
        settings_Write(QStringLiteral("RecentPlaylists"), QStringLiteral("Filename%1").arg(key),
                       newPath);
        changed = true;
    }
    if (changed) recent.updateMenu(window);
}

void recent_ForgetPlaylist(const QString& path, QObject& window) {
    RecentList& recent = recent_Playlists();
    // From the last key down, so that closing a gap never skips an entry.
    for (int key = recent.count(); key >= 1; --key)
        if (recent.value(key).toLower() == path.toLower()) recent.remove(key, window);
}

void mnuRecentPlaylist_Click(MainContext& ctx, int index) {
    const QString path = recent_Playlists().value(index + 1);
    if (!path.isEmpty() && modFiles::file_Exists(path)) {
        // Unlike opening by the dialog: no scan, and the recent list keeps its order.
        ListModel& list = ctx.lstvPlaylist();
        listview_Clear(list);
        ctx.PlayingRowIndex = 1;
        listview_LoadFromFile(list, path);
        playlist_Select(ctx, path);
        listview_Renumber(list);
        window_WriteLog(path + QStringLiteral(" opened."));
        ctx.call(ctx.window_UncheckMenus);
        ctx.call(ctx.window_ResetRandomFilenames);
        ctx.commands().run(QStringLiteral("mnuJumpToCurrentlyPlaying"));
        modFiles::file_AddToRecentDocuments(path);
        return;
    }
    Dialogs::msgBox(QStringLiteral("It has been detected the recent playlist filename you are "
                                   "trying to open does not exist.\n\nPlease check the recent "
                                   "file before attempting to open it.\n"),
                    Dialogs::vbExclamation, QStringLiteral("Recent Playlist Filename Not Found"));
    recent_RemovePlaylist(index + 1, ctx);
    if (ctx.commands().isChecked(QStringLiteral("mnuOpenMediaLibrary")))
        ctx.call(ctx.mediaLibrary_RefreshRecent);
}

void RecentLists_install(MainContext& ctx) {
    recent_Media().loadLimit();
    recent_Playlists().loadLimit();
    recent_UpdateMediaMenu(ctx);
    recent_UpdatePlaylistMenu(ctx);
    MainContext* p = &ctx;
    ctx.recentPlaylists_Add = [p](const QString& path) { recent_AddPlaylist(path, *p); };
    // The entries open sub-menus; their own click does nothing.
    Commands& c = ctx.commands();
    c.setHandler(QStringLiteral("mnuRecentMediaFiles"), [] {});
    c.setHandler(QStringLiteral("mnuRecentPlaylists"), [] {});
}
