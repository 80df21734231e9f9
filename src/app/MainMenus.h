#pragma once
#include <QHash>
#include <QStringList>

class Commands;
class QMenuBar;
class QToolBar;

// The menu bar and toolbar of the main window, built from the named commands.
namespace MainMenus {

// Creates every command of the main window with its caption and check mode.
void createCommands(Commands& commands);
void buildMenuBar(Commands& commands, QMenuBar* bar);
void buildToolbar(Commands& commands, QToolBar* toolbar);
// Names of the sub-menus (commands that only hold other commands).
QStringList containerNames();
// Toolbar buttons and the commands they forward to.
QHash<QString, QString> toolbarTargets();
// Key hints behind a tab in the captions.
void appendKeyHints(Commands& commands);

} // namespace MainMenus
