#pragma once
#include <memory>

class FrmMain;
class FrmVideo;

// The player's windows and displays tied to the main window: the video window (which owns the
// media control and attaches it), the display refresh hooks, and the menu help. The video window
// returned must outlive every use of the control: keep it for the life of the process.
std::unique_ptr<FrmVideo> PlayerWiring_install(FrmMain& window);

// Starts the media engine once the main window has been painted (or a moment after start-up when
// the window stays hidden) if the playlist holds rows, else when the first row arrives: its
// library loads on a thread of its own meanwhile. A song started before that starts the engine
// itself.
void PlayerWiring_startEngineWhenShown(FrmMain& window, FrmVideo& video);
