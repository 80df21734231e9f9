#include "playlists/modRecentMedia.h"

#include "core/Commands.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/modControls.h"
#include "core/modFiles.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/PlaylistRows.h"
#include "playlists/RecentList.h"

RecentList& recent_Media() {
    static RecentList list("RecentMediaFiles", "mnuRecentMedia", "NumberofRecentMediaFiles");
    return list;
}

int recent_CountMedia() {
    return recent_Media().count();
}
bool recent_IsMediaEmpty() {
    return recent_Media().isEmpty();
}
void recent_ClearMedia() {
    recent_Media().clear();
}
void recent_RemoveMediaMenus(QObject& window) {
    recent_Media().removeMenus(window);
}
void recent_RemoveMedia(int index, QObject& window) {
    recent_Media().remove(index, window);
}
void recent_AddMedia(const QString& path, QObject& window) {
    recent_Media().add(path, window);
}
void recent_UpdateMediaMenu(QObject& window) {
    recent_Media().updateMenu(window);
}

void mnuRecentMedia_Click(MainContext& ctx, int index) {
    const QString path = recent_Media().value(index + 1);
    Commands& c = ctx.commands();
    if (!path.isEmpty() && modFiles::file_Exists(path)) {
        ListModel& list = ctx.lstvPlaylist();
        const bool keepSorted = !c.isChecked(QStringLiteral("mnuDontSort"));
        if (keepSorted) list.setSorted(false);
        if (listview_CountMatches(list, path, PlaylistColumn::Filename) == 0) {
            mnuNew_Click(ctx);
            playlist_AddSong(ctx, QString(), QString(), QString(), path);
            if (c.isChecked(QStringLiteral("mnuTagsShowTagsAsFilesAreAdded")))
                playlist_UpdateItem(ctx, 1, false);
            listview_Renumber(list);
            ctx.call(ctx.window_ResetRandomFilenames);
            // A list view selects the first row added to it, and row 1 plays the selection.
            if (!listview_HasSelection(list)) listview_SelectItem(list, 1);
            if (ctx.player_Play) ctx.player_Play(1);
        } else {
            int row = 1;
            while (row <= list.count() &&
                   list.text(row - 1, PlaylistColumn::Filename).toLower() != path.toLower())
                ++row;
            c.run(QStringLiteral("mnuStop"));
            listview_SelectItem(list, row);
            c.run(QStringLiteral("mnuPlay"));
        }
        if (keepSorted) list.setSorted(true);
        return;
    }
    Dialogs::msgBox(QStringLiteral("It has been detected the recent filename you are trying to "
                                   "open does not exist.\n\nPlease check the recent file before "
                                   "attempting to open it.\n"),
                    Dialogs::vbExclamation, QStringLiteral("Recent Filename Not Found"));
    recent_RemoveMedia(index + 1, ctx);
    if (c.isChecked(QStringLiteral("mnuOpenMediaLibrary")))
        ctx.call(ctx.mediaLibrary_RefreshRecent);
}
