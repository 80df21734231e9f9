#include "playlists/PlaylistTools.h"

#include "core/Commands.h"
#include "core/MainContext.h"
#include "playlists/FrmGeneratePlaylist.h"
#include "playlists/FrmJump.h"
#include "playlists/FrmJumpToNumber.h"
#include "playlists/FrmJumpToTime.h"
#include "playlists/FrmRandomSongsPlaylist.h"
#include "playlists/JumpTools.h"
#include "playlists/ManagePlaylists.h"

namespace {
// The generators read the rows; a locked list keeps them away, also when run by name.
bool locked(MainContext& ctx) {
    return ctx.commands().isChecked(QStringLiteral("mnuLockPlaylist"));
}
} // namespace

void mnuJumpToMedia_Click(MainContext& ctx) {
    FrmJump::open(ctx);
}

void mnuJumpToTrackNumber_Click(MainContext& ctx) {
    FrmJumpToNumber::open(ctx);
}

void mnuJumpToTime_Click(MainContext& ctx) {
    FrmJumpToTime::open(ctx);
}

void mnuGeneratePlaylist_Click(MainContext& ctx) {
    if (!locked(ctx)) FrmGeneratePlaylist::open(ctx);
}

void mnuUseRandomSongsForPlaylist_Click(MainContext& ctx) {
    if (!locked(ctx)) FrmRandomSongsPlaylist::open(ctx);
}

void PlaylistTools_install(MainContext& ctx) {
    JumpTools_install(ctx);
    ManagePlaylists_install(ctx);
    Commands& c = ctx.commands();
    MainContext* p = &ctx;
    c.setHandler(QStringLiteral("mnuJumpToMedia"), [p] { mnuJumpToMedia_Click(*p); });
    c.setHandler(QStringLiteral("mnuJumpToTrackNumber"), [p] { mnuJumpToTrackNumber_Click(*p); });
    c.setHandler(QStringLiteral("mnuJumpToTime"), [p] { mnuJumpToTime_Click(*p); });
    c.setHandler(QStringLiteral("mnuGeneratePlaylist"), [p] { mnuGeneratePlaylist_Click(*p); });
    c.setHandler(QStringLiteral("mnuUseRandomSongsForPlaylist"),
                 [p] { mnuUseRandomSongsForPlaylist_Click(*p); });
}
