#pragma once
#include <memory>

class FrmMain;
class FrmVideo;

// The player's windows and displays tied to the main window: the video window (which owns the
// media control and attaches it), the display refresh hooks, and the menu help. The video window
// returned must outlive every use of the control: keep it for the life of the process.
std::unique_ptr<FrmVideo> PlayerWiring_install(FrmMain& window);
