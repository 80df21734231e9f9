#pragma once

class MainContext;

// The jump tools, the management of playlist files and the generators as commands.
void mnuJumpToMedia_Click(MainContext& ctx);
void mnuJumpToTrackNumber_Click(MainContext& ctx);
void mnuJumpToTime_Click(MainContext& ctx);
void mnuGeneratePlaylist_Click(MainContext& ctx);
void mnuUseRandomSongsForPlaylist_Click(MainContext& ctx);

void PlaylistTools_install(MainContext& ctx);
