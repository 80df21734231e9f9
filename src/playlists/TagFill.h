#pragma once
#include <functional>

class MainContext;

// playlist_ShowMP3Data for the rows from `firstRow` (1-based) on, in slices of a few
// milliseconds once the event loop runs, so that a long command line shows the window first.
// The status bar says what playlist_ShowMP3Data says while it runs; `done` runs at the end.
void playlist_ShowMP3DataInSlices(MainContext& ctx, int firstRow, std::function<void()> done);
