#pragma once

#include <QString>

class MainContext;

// The transport between the rows of the playlist and the media control. Every start goes through
// player_Play, every full stop through player_Stop. Installed into the context's hooks and the
// commands mnuPlay, mnuStop, mnuPause, mnuRewind, mnuFastForward.

// `mode`: 1 an ordinary start (counted), 0 a random pick (kept in the random history), 2 a step
// inside the random history (neither).
void player_Play(MainContext& ctx, int mode);
void player_Stop(MainContext& ctx);
void mnuPause_Click(MainContext& ctx);
void mnuRewind_Click(MainContext& ctx);
void mnuFastForward_Click(MainContext& ctx);
// The user let go of the position slider at `seconds`.
void sldPosition_Scroll(MainContext& ctx, int seconds);

// True for the extensions that open the video window ("mpa" among them, as it always was).
bool player_IsVideoFile(const QString& filename);

void Player_install(MainContext& ctx);
