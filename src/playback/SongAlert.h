#pragma once

class FrmPlaying;
class MainContext;

// The song alert: artist and title for three seconds when a song starts while the program is
// in the background.
void player_ShowPlaying(MainContext& ctx);
// Removes an alert still on the screen.
void player_ClosePlaying();
// The alert on the screen, or nullptr.
FrmPlaying* player_PlayingAlert();

void mnuWindowsShowEachSongAsItsPlayed_Click(MainContext& ctx);

// Installs the alert and the lyrics into the context's hooks and the two menus' handlers.
void LyricsAlerts_install(MainContext& ctx);
