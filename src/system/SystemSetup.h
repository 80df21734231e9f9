#pragma once

class MainContext;

// Start-up work of the desktop integration: registering the media types when the settings ask
// for it, and the update check behind its menu entry.
void SystemSetup_install(MainContext& ctx);
