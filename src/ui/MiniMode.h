#pragma once

class FrmMini;
class MainContext;
class QWidget;

// Mini-Mode: `mnuSwitchToMiniMode` hides the main window and shows FrmMini while playback goes
// on; back to full mode shows the main window again.
void MiniMode_install(MainContext& ctx, QWidget* mainWindow);
void mnuSwitchToMiniMode_Click(MainContext& ctx, QWidget* mainWindow);
// The one window, made on first use; nullptr until then.
FrmMini* miniMode_Window();
