#include "app/PlayerWiring.h"

#include "app/FrmMain.h"
#include "app/MenuHelp.h"
#include "app/WindowUpdate.h"
#include "core/MainContext.h"
#include "playback/FrmVideo.h"

#include <QMenuBar>

std::unique_ptr<FrmVideo> PlayerWiring_install(FrmMain& window) {
    MainContext& ctx = window.ctx();
    ctx.tmrPosition_Timer = [&window] { tmrPosition_Timer(window); };
    ctx.tmrWindowUpdate_Timer = [&window] { tmrWindowUpdate_Timer(window); };
    MenuHelp_install(ctx, window.menuBar());

    auto video = std::make_unique<FrmVideo>(ctx, &window);
    video->install();
    video->hide();
    video->video_Update();
    return video;
}
