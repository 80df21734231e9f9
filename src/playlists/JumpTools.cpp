#include "playlists/JumpTools.h"

#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/modControls.h"
#include "playlists/PlaylistRows.h"

namespace {

void playRow(MainContext& ctx, int row) {
    if (ctx.PlayerPaused) ctx.call(ctx.player_Stop);
    listview_SelectItem(ctx.lstvPlaylist(), row);
    if (ctx.player_Play) ctx.player_Play(1);
}

void jumpBy(MainContext& ctx, int step) {
    const int count = ctx.lstvPlaylist().count();
    if (count == 0) return;
    const bool fits = step > 0 ? count - ctx.PlayingRowIndex > step : ctx.PlayingRowIndex > -step;
    if (!fits) return;
    ctx.PlayingRowIndex += step;
    playRow(ctx, ctx.PlayingRowIndex);
}

} // namespace

int jump_MiddleRow(int count) {
    int half = count / 2;
    if (count % 2 && half % 2) ++half; // 3.5 goes up to 4, 2.5 stays at 2
    // One row has no middle but itself.
    return count > 0 ? qMax(1, half) : 0;
}

void mnuJumpToCurrentlyPlaying_Click(MainContext& ctx) {
    if (!ctx.playerActive()) return;
    ListModel& list = ctx.lstvPlaylist();
    const QString& playing = ctx.PlayingDetails.Filename;
    for (int i = 0; i < list.count(); ++i) {
        if (list.text(i, PlaylistColumn::Filename) != playing) continue;
        listview_SelectItem(list, i + 1);
        playlist_UpdatePlaylist(ctx, i + 1);
        ctx.PlayingRowIndex = i + 1;
        return;
    }
}

void mnuJumpToFirstTrack_Click(MainContext& ctx) {
    if (ctx.lstvPlaylist().count() > 0) playRow(ctx, 1);
}

void mnuJumpToMiddleTrack_Click(MainContext& ctx) {
    const int count = ctx.lstvPlaylist().count();
    if (count > 0) playRow(ctx, jump_MiddleRow(count));
}

void mnuJumpToLastTrack_Click(MainContext& ctx) {
    const int count = ctx.lstvPlaylist().count();
    if (count > 0) playRow(ctx, count);
}

void mnuJumpForward10Tracks_Click(MainContext& ctx) {
    jumpBy(ctx, 10);
}
void mnuJumpForward5Tracks_Click(MainContext& ctx) {
    jumpBy(ctx, 5);
}
void mnuJumpBack5Tracks_Click(MainContext& ctx) {
    jumpBy(ctx, -5);
}
void mnuJumpBack10Tracks_Click(MainContext& ctx) {
    jumpBy(ctx, -10);
}

void JumpTools_install(MainContext& ctx) {
    Commands& c = ctx.commands();
    MainContext* p = &ctx;
    const auto on = [&](const char* name, void (*handler)(MainContext&)) {
        c.setHandler(QString::fromLatin1(name), [p, handler] { handler(*p); });
    };
    on("mnuJumpToCurrentlyPlaying", mnuJumpToCurrentlyPlaying_Click);
    on("mnuJumpToFirstTrack", mnuJumpToFirstTrack_Click);
    on("mnuJumpToMiddleTrack", mnuJumpToMiddleTrack_Click);
    on("mnuJumpToLastTrack", mnuJumpToLastTrack_Click);
    on("mnuJumpForward10Tracks", mnuJumpForward10Tracks_Click);
    on("mnuJumpForward5Tracks", mnuJumpForward5Tracks_Click);
    on("mnuJumpBack5Tracks", mnuJumpBack5Tracks_Click);
    on("mnuJumpBack10Tracks", mnuJumpBack10Tracks_Click);
}
