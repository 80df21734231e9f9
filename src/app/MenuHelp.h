#pragma once
#include <QString>

class MainContext;
class QMenuBar;

// Help for the menu entry under the pointer, on the status bar's first panel. While a menu shows
// its help, PlaylistBusy keeps the position display off that panel.

// The help text of a main-window entry, or "" when it has none.
QString menu_HelpText(const QString& menuName);
// A menu entry was hovered (nullptr or an entry without help: no entry with help is highlighted).
void menu_Hovered(MainContext& ctx, const QString& menuName);
// The menus closed.
void menu_Closed(MainContext& ctx);
void MenuHelp_install(MainContext& ctx, QMenuBar* bar);
