#pragma once
#include <QString>
#include <functional>

class MainContext;

// The transport's display, refreshed every 500 ms and on demand: the position slider, the status
// bar's first and third panels, the tray tip, TransportState, the enabling of the transport
// commands, and the Introduction mode's cut.

// "mm:ss"; minutes may pass two digits.
QString player_FormatSeconds(double seconds);

// One tick. `setTimePanel` receives panel 3's text.
void tmrPosition_Timer(MainContext& ctx, const std::function<void(const QString&)>& setTimePanel);

// Sets Enabled only when it differs, so that a tick changes nothing that stands.
void menu_Enable(MainContext& ctx, const QString& menu);
void menu_Disable(MainContext& ctx, const QString& menu);
