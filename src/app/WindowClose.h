#pragma once

class FrmMain;

// Exit in order: everything saved only at exit, then the process ends at the second tick.
void window_SaveSettingsOnClose(FrmMain& window);
void mnuExit_Click(FrmMain& window);
// True when the close is cancelled. unloadMode 0: the user closes the window; 2: the session
// ends (or the process is told to terminate); 3: the window is ended from outside.
bool Form_QueryUnload(FrmMain& window, int unloadMode);
void window_CloseAll(FrmMain& window);
// Leaves to the tray when there is one; without a tray there is nowhere to go, so it exits.
void window_MinimizeToTray(FrmMain& window);
