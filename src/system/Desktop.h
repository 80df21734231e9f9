#pragma once

class MainContext;
class QWidget;

// Global keys, the main window's own keys, the tray icon, the session-bus player and the window
// commands of the desktop. Call after the player's commands stand and before the menus that
// have no command yet are greyed.
void Desktop_install(MainContext& ctx, QWidget* mainWindow);
