#pragma once
#include <QString>

class MainContext;

// Bookmarks: one flat list of songs in {AppPath}/bookmarks.sbl, one path a line, in menu order.
// The menu array "mnuBookmark" has one entry a line, from 1; a bookmark is its line number.

QString bookmarks_Path();
// The menu shows at most this many lines; a longer file stays as it is.
constexpr int MaxBookmarkMenus = 500;

void window_RemoveBookmarkMenus(MainContext& ctx);
void window_InstallBookmarks(MainContext& ctx);
void mnuAddSelected_Click(MainContext& ctx);
void mnuBookmark_Click(MainContext& ctx, int index);
// Asks, deletes the file on Yes; the menu is rebuilt either way. True on Yes.
bool mnuClearBookmarks_Click(MainContext& ctx);
void mnuEditBookmarks_Click(MainContext& ctx);

// Fills the menu and registers the handlers.
void Bookmarks_install(MainContext& ctx);
