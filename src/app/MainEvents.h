#pragma once

class FrmMain;

// Wires the main window's widgets to the routines: the playlist's events, its pop-up menus,
// the "Send To" entries, the lock's look, the console window.
void MainEvents_install(FrmMain& window);
