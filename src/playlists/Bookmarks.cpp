#include "playlists/Bookmarks.h"

#include "core/App.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/modControls.h"
#include "core/modFiles.h"
#include "playlists/FrmEditBookmarks.h"
#include "playlists/LineFiles.h"
#include "playlists/MenuArray.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/PlaylistRows.h"

namespace {

MenuArray& bookmarkMenu(MainContext& ctx) {
    return MenuArray::of(ctx, QStringLiteral("mnuBookmark"), QStringLiteral("[None]"));
}

// A caption no wider than a menu can show.
QString captionOf(const QString& line) {
    return modFiles::file_GetName(line).left(260);
}

} // namespace

QString bookmarks_Path() {
    return App::file(QStringLiteral("bookmarks.sbl"));
}

void window_RemoveBookmarkMenus(MainContext& ctx) {
    bookmarkMenu(ctx).unloadAbove0();
}

void window_InstallBookmarks(MainContext& ctx) {
    window_RemoveBookmarkMenus(ctx);
    MenuArray& menu = bookmarkMenu(ctx);
    menu.setItem(0, {menu.item(0).caption, false, false, false});
    if (modFiles::file_Exists(bookmarks_Path())) {
        const QStringList lines = LineFiles::readLines(bookmarks_Path());
        for (qsizetype i = 0; i < lines.size() && i < MaxBookmarkMenus; ++i)
            menu.load(captionOf(lines[i]));
    }
    if (menu.count() == 1) menu.setItem(0, {QStringLiteral("[None]"), true, false, false});
}

void mnuAddSelected_Click(MainContext& ctx) {
    const QString path = bookmarks_Path();
    ListModel& list = ctx.lstvPlaylist();
    for (int row = 0; row < list.count(); ++row) {
        if (!list.isSelected(row)) continue;
        const QString filename = list.text(row, PlaylistColumn::Filename);
        if (modFiles::file_ContainsEntry(path, filename)) {
            Dialogs::msgBox(QStringLiteral("The song/video you have selected is already in the "
                                           "bookmarks.\n\nThis song will not be copied into the "
                                           "bookmarks.\n"),
                            Dialogs::vbInformation,
                            QStringLiteral("Song/Video Already In Bookmarks"));
            continue;
        }
        if (!LineFiles::append(path, filename)) break;
        window_WriteLog(filename + QStringLiteral(" added to the Bookmarks list."));
    }
    window_InstallBookmarks(ctx);
}

void mnuBookmark_Click(MainContext& ctx, int index) {
    if (index < 1) return;
    const QString filename = modFiles::file_ReadLine(bookmarks_Path(), index);
    ListModel& list = ctx.lstvPlaylist();
    Commands& c = ctx.commands();
    if (listview_CountMatches(list, filename, PlaylistColumn::Filename) != 0) {
        int row = 1;
        while (row <= list.count() &&
               list.text(row - 1, PlaylistColumn::Filename).toLower() != filename.toLower())
            ++row;
        c.run(QStringLiteral("mnuStop"));
        listview_SelectItem(list, row);
        c.run(QStringLiteral("mnuPlay"));
        return;
    }
    // A song outside the list becomes the whole list.
    mnuNew_Click(ctx);
    playlist_AddSong(ctx, QString(), QString(), QString(), filename);
    if (c.isChecked(QStringLiteral("mnuTagsShowTagsAsFilesAreAdded")))
        playlist_UpdateItem(ctx, 1, false);
    listview_Renumber(list);
    ctx.call(ctx.window_ResetRandomFilenames);
    // A list view selects the first row added to it, and row 1 plays the selection.
    if (!listview_HasSelection(list)) listview_SelectItem(list, 1);
    if (ctx.player_Play) ctx.player_Play(1);
}

bool mnuClearBookmarks_Click(MainContext& ctx) {
    const bool yes =
        Dialogs::msgBox(QStringLiteral("Once the bookmarks have been cleared, you will not be able "
                                       "to get them back again.\n\nDo you wish to continue?\n"),
                        Dialogs::vbQuestion | Dialogs::vbYesNo,
                        QStringLiteral("Clear Bookmarks Confirmation")) == Dialogs::vbYes;
    if (yes) modFiles::file_Delete(bookmarks_Path());
    window_InstallBookmarks(ctx);
    return yes;
}

void mnuEditBookmarks_Click(MainContext& ctx) {
    FrmEditBookmarks::open(ctx);
}

void Bookmarks_install(MainContext& ctx) {
    window_InstallBookmarks(ctx);
    Commands& c = ctx.commands();
    MainContext* p = &ctx;
    c.add(QStringLiteral("mnuAddSelected"), QStringLiteral("&Add Selected"));
    c.add(QStringLiteral("mnuEditBookmarks"), QStringLiteral("&Edit Bookmarks..."));
    c.add(QStringLiteral("mnuClearBookmarks"), QStringLiteral("&Clear Bookmarks..."));
    c.setHandler(QStringLiteral("mnuAddSelected"), [p] { mnuAddSelected_Click(*p); });
    c.setHandler(QStringLiteral("mnuEditBookmarks"), [p] { mnuEditBookmarks_Click(*p); });
    c.setHandler(QStringLiteral("mnuClearBookmarks"), [p] { mnuClearBookmarks_Click(*p); });
    c.setHandler(QStringLiteral("mnuOpenBookmark"), [] {});
}
