#pragma once

class FrmMain;

// Enabling of the commands, kept in step with the list (every 50 ms and on demand).
void window_Controls(FrmMain& window, bool enabled);
void tmrWindowUpdate_Timer(FrmMain& window);
// The transport display; the player's part fills it in.
void tmrPosition_Timer(FrmMain& window);
