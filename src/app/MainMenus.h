#pragma once

class Commands;
class QMenuBar;
class QToolBar;

// The menu bar and toolbar of the main window, built from the named commands.
namespace MainMenus {

// Creates every command of the main window with its caption and check mode.
void createCommands(Commands& commands);
void buildMenuBar(Commands& commands, QMenuBar* bar);
void buildToolbar(Commands& commands, QToolBar* toolbar);
// Key hints behind a tab in the captions.
void appendKeyHints(Commands& commands);

} // namespace MainMenus
