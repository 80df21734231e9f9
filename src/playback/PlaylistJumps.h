#pragma once

class MainContext;

// Stepping between the named playlists of the combo. Entry 0, "((Select Playlist))", is never
// reached by stepping. A jump starts playing when asked to or when "PlayPlaylistsOnSkip" is on.
void player_NextPlaylist(MainContext& ctx, bool start);
void player_PreviousPlaylist(MainContext& ctx, bool start);
void mnuJumpToNextPlaylist_Click(MainContext& ctx);
void mnuJumpToPreviousPlaylist_Click(MainContext& ctx);
void mnuJumpToRandomPlaylist_Click(MainContext& ctx);

void PlaylistJumps_install(MainContext& ctx);
