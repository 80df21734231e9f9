#pragma once
#include <QString>

class FrmMain;

// Restoring the main window at start-up, and the command line.
void window_Setup(FrmMain& window);
void window_ProcessCommandLine(FrmMain& window, QString commandLine);
// The menu states kept in settings, first-wins for the exclusive groups.
void window_RestoreMenuStates(FrmMain& window);
