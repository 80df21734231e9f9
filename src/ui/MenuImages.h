#pragma once

class QMenuBar;

// The small pictures of the main menu's items, set by sub-menu and position (separators
// counted), as the menus were laid out: File 0, 2, 7, 11, 15, 22; Playback 0, 2, 3, 4, 5, 6.
// Run it again after a menu's content changes.
void window_SetMenuImages(QMenuBar* bar);
