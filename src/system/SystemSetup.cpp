#include "system/SystemSetup.h"
#include "core/App.h"
#include "system/FrmCheckForUpdates.h"
#include "system/modFileAssociations.h"

void SystemSetup_install(MainContext& ctx) {
    CheckForUpdates_install(ctx);
    modFileAssociations::filetype_RegisterAtStartup(App::Title());
}
