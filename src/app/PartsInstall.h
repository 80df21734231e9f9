#pragma once
#include <memory>

class FrmMain;
class FrmVideo;

// Every part's commands and hooks on the main window and its context. The main window's own
// events come last: they grey what still has no handler, so every part must stand by then.
// The video window returned owns the media control: keep it for the life of the process.
std::unique_ptr<FrmVideo> Parts_install(FrmMain& window);
