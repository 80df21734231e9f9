#pragma once

class MainContext;

// Keeps default.spp close to the list while the program runs, so that a crash loses at most the
// last second of edits. A second after the rows stop changing (at most a few seconds into a long
// run of changes) their text is taken and written by a worker thread, replacing the file in one
// step; an emptied list removes it, as the exit does. Changes of style alone are not written.
void PlaylistAutosave_install(MainContext& ctx);

// Stops the timer and waits for a write under way: the exit's own save must be the last.
void PlaylistAutosave_stop(MainContext& ctx);

// Milliseconds of quiet before a write, and the longest a change waits; for tests.
void PlaylistAutosave_setDelays(int quietMs, int longestMs);
