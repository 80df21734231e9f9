#include "playback/Player.h"

#include "core/Colors.h"
#include "core/Commands.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "playback/wmpPlayer.h"
#include "playlists/ListModel.h"
#include "playlists/PlaylistRows.h"

void player_Stop(MainContext& ctx) {
    ctx.TransportState = 1;
    ctx.PlayerPaused = false;
    ctx.player().Stop();
    ctx.player().setFileName(QStringLiteral("1"));
    playlist_UpdatePlaylist(ctx, 0);
    if (ctx.PlayNextRowIndex > 0) {
        const qint64 colour =
            Colors::parse(settings_Read(QStringLiteral("Appearance"), QStringLiteral("FontColour")),
                          Colors::SystemWindowText);
        ctx.lstvPlaylist().setRowStyle(ctx.PlayNextRowIndex - 1, false, colour);
        ctx.commands().setCaption(QStringLiteral("mnuPlayNext"),
                                  QStringLiteral("Play Ne&xt...\tX"));
        ctx.PlayNextRowIndex = 0;
    }
}

void Player_install(MainContext& ctx) {
    ctx.player_Stop = [&ctx] { player_Stop(ctx); };
}
