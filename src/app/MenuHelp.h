#pragma once
#include <QString>

class MainContext;
class QMenuBar;

// Help for the menu entry under the pointer, on the status bar's first panel. While a menu shows
// its help, PlaylistBusy keeps the position display off that panel.

// The help text of the entry at `position` (separators counted) of the menu bar's `submenu`, or
// "" when it has none.
QString menu_HelpText(int submenu, int position);
// An entry of the menu bar was hovered; -1 for an entry without a place in the table (inside a
// nested menu, or none at all).
void menu_Hovered(MainContext& ctx, int submenu, int position);
// The menus closed.
void menu_Closed(MainContext& ctx);
void MenuHelp_install(MainContext& ctx, QMenuBar* bar);
