#pragma once

class MainContext;
class QMenu;

// The sub-menus of the File menu filled at run time: Open Mood, Open Bookmark, Recent Media
// Files and Recent Playlists, each showing its menu array of the main window. Needs widgets; a
// context without them keeps its arrays only.
void PlaylistMenus_install(MainContext& ctx);
// Adds the mood and bookmark entries to the pop-up's "Send To" menu.
void PlaylistMenus_addSendTo(MainContext& ctx, QMenu* sendTo);
