#pragma once

class MainContext;

// The plain moves of the Jump menu. Each one that plays does nothing on an empty list; the
// relative ones do nothing when the move would leave the list.
void mnuJumpToCurrentlyPlaying_Click(MainContext& ctx);
void mnuJumpToFirstTrack_Click(MainContext& ctx);
void mnuJumpToMiddleTrack_Click(MainContext& ctx);
void mnuJumpToLastTrack_Click(MainContext& ctx);
void mnuJumpForward10Tracks_Click(MainContext& ctx);
void mnuJumpForward5Tracks_Click(MainContext& ctx);
void mnuJumpBack5Tracks_Click(MainContext& ctx);
void mnuJumpBack10Tracks_Click(MainContext& ctx);

// The middle row of `count` rows: half of it, a half going to the even neighbour.
int jump_MiddleRow(int count);

void JumpTools_install(MainContext& ctx);
