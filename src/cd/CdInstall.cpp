#include "cd/CdInstall.h"

#include "cd/CdDrive.h"
#include "cd/CdPlayer.h"
#include "cd/FrmCDPlayer.h"
#include "cd/modCDAudio.h"
#include "core/Commands.h"
#include "core/MainContext.h"
#include "playback/MpvPlayer.h"

#include <QPointer>

namespace {
QPointer<CdDrive> g_drive;
} // namespace

CdDrive* cd_Drive() {
    return g_drive.data();
}

void CDPlayer_install(MainContext& ctx) {
    // The disc has an engine of its own, made when it first plays, so that the playlist's song
    // keeps its place and its state while the CD player comes and goes.
    auto* drive = new CdDrive([] { return new MpvPlayer(0, g_drive.data()); }, &ctx);
    g_drive = drive;
    modCDAudio::cd_SetSender(
        [drive](const QString& command, QString* reply) { return drive->send(command, reply); });

    QObject::connect(drive, &CdDrive::aboutToPlay, &ctx, [&ctx] {
        if (ctx.playerActive() || ctx.PlayerPaused) ctx.call(ctx.player_Stop);
    });
    auto previousStarting = ctx.player_Starting;
    ctx.player_Starting = [previousStarting] {
        if (previousStarting) previousStarting();
        if (!g_drive || !g_drive->playing()) return;
        if (FrmCDPlayer* window = FrmCDPlayer::current())
            window->rules().mnuStop_Click();
        else
            modCDAudio::cd_Stop();
    };

    ctx.commands().setHandler(QStringLiteral("mnuOpenCDPlayer"),
                              [&ctx] { FrmCDPlayer::showFor(ctx); });
    auto previousCloseAll = ctx.window_CloseAll;
    ctx.window_CloseAll = [previousCloseAll] {
        if (previousCloseAll) previousCloseAll();
        if (FrmCDPlayer* window = FrmCDPlayer::current()) window->close();
    };
    QObject::connect(&ctx, &QObject::destroyed, [] {
        modCDAudio::cd_SetSender({});
        delete FrmCDPlayer::current();
    });
}
