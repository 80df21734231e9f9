#pragma once
#include <QString>
#include <functional>

class MainContext;

// What plays next: the end of a song, Next, Previous and Random. The modes are the check marks
// of the play-mode, playlist-mode and direction menus, read afresh at every step.

// The end of a song (or the Next Advanced command): Play Next first, then the end of the list
// and the modes.
void player_NextTrack(MainContext& ctx);
// The advance's own stop: the engine stops and lets the file go, the playing mark goes, the
// video and lyrics windows close. Play Next, pause state and the position stay as they are.
void player_StopSequence(MainContext& ctx);

// One step down or up the list, whatever the modes (but the random history).
void mnuNextTrack_Click(MainContext& ctx);
void mnuPrevious_Click(MainContext& ctx);
// One random pick; lists of up to five rows step on instead.
void mnuRandom_Click(MainContext& ctx);

// The history of random picks, walked by Next and Previous in random mode.
void window_AddRandomFilename(MainContext& ctx, const QString& filename);
void window_ResetRandomFilenames(MainContext& ctx);

// --- shared by the advance's routines
// Plays `mode` when "PlayOnNextAndPrevious" is on or something plays; a stopped player with the
// setting off only keeps the selection.
void advance_StartRule(MainContext& ctx, int mode);
// PlayingRowIndex = index, and the list selects it.
void advance_Select(MainContext& ctx, int index);
// Row 1 when working forward, else the last row.
int advance_FirstRow(MainContext& ctx);
// The random draw (math_RandomNumber); tests replace it, nullptr restores it.
using RandomNumberFn = std::function<int(int maximum, int floor, bool unique, int tableSize)>;
void advance_SetRandomNumber(RandomNumberFn fn);
int advance_RandomNumber(int maximum, int floor, bool unique, int tableSize);

// Installs the routines above into the context's hooks, the menus' handlers (Next, Previous,
// Random, the modes, the directions, the playlist jumps).
void TrackAdvance_install(MainContext& ctx);
