#pragma once
#include <QString>

class MainContext;

// The named playlists in {AppPath}/Playlists: the combo `cmbPlaylists`, the "Send To" menu and
// the File menu commands that open, save and clear the playlist.

// The first entry of the combo: the rows belong to no named playlist.
inline constexpr auto kSelectPlaylist = u"((Select Playlist))";

// {AppPath}/Playlists/{name}.spp
QString playlist_PathOf(const QString& name);

void window_InstallPlaylists(MainContext& ctx);
void window_RemoveFilenameMenus(MainContext& ctx);
// Shows the entry named by the title of `name` (a file name or path) without opening it; the
// last of equal entries wins, compared case and all. Entry 0 when none matches.
void playlist_Select(MainContext& ctx, const QString& name);

void cmbPlaylists_Click(MainContext& ctx);
void mnuNew_Click(MainContext& ctx);
void mnuOpenPlaylist_Click(MainContext& ctx);
void mnuSave_Click(MainContext& ctx);
void mnuSavePlaylistAs_Click(MainContext& ctx);
void mnuSaveAsDefault_Click(MainContext& ctx);
void mnuUpdate_Click(MainContext& ctx);
// "Send To": appends the selected rows to the playlist of entry `index` of `mnuItem`.
void mnuItem_Click(MainContext& ctx, int index);

// Registers the command handlers above (and mnuPrint) and connects the combo's click.
void PlaylistFiles_install(MainContext& ctx);
