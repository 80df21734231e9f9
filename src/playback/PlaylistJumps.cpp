#include "playback/PlaylistJumps.h"

#include "core/Commands.h"
#include "core/MainContext.h"
#include "core/PlaylistCombo.h"
#include "core/SettingsCatalogue.h"
#include "playback/TrackAdvance.h"
#include "playlists/PlaylistRows.h"

namespace {

bool playOnSkip() {
    return settings_IsOn(QStringLiteral("Settings"), QStringLiteral("PlayPlaylistsOnSkip"));
}

// The combo's click loads the entry; the first row of the new list is then the playing one.
void jumpTo(MainContext& ctx, int index, bool start) {
    playlist_UpdatePlaylist(ctx, 0);
    ctx.cmbPlaylists().setListIndex(index);
    advance_Select(ctx, advance_FirstRow(ctx));
    window_ResetRandomFilenames(ctx);
    if ((start || playOnSkip()) && ctx.player_Play) ctx.player_Play(1);
}

} // namespace

void player_NextPlaylist(MainContext& ctx, bool start) {
    const PlaylistCombo& combo = ctx.cmbPlaylists();
    if (combo.listIndex() == combo.count() - 1) return;
    jumpTo(ctx, combo.listIndex() + 1, start);
}

void player_PreviousPlaylist(MainContext& ctx, bool start) {
    // From entry 1 (or from nothing shown) there is no playlist before.
    const PlaylistCombo& combo = ctx.cmbPlaylists();
    if (combo.listIndex() <= 1) return;
    jumpTo(ctx, combo.listIndex() - 1, start);
}

void mnuJumpToNextPlaylist_Click(MainContext& ctx) {
    player_NextPlaylist(ctx, false);
}

void mnuJumpToPreviousPlaylist_Click(MainContext& ctx) {
    player_PreviousPlaylist(ctx, false);
}

void mnuJumpToRandomPlaylist_Click(MainContext& ctx) {
    PlaylistCombo& combo = ctx.cmbPlaylists();
    if (combo.count() == 6) return;
    // A draw of ListCount lies past the last entry: the combo refuses it and the list stays.
    jumpTo(ctx, advance_RandomNumber(combo.count(), 0, false, 20), false);
}

void PlaylistJumps_install(MainContext& ctx) {
    MainContext* p = &ctx;
    Commands& c = ctx.commands();
    c.setHandler(QStringLiteral("mnuJumpToNextPlaylist"), [p] { mnuJumpToNextPlaylist_Click(*p); });
    c.setHandler(QStringLiteral("mnuJumpToPreviousPlaylist"),
                 [p] { mnuJumpToPreviousPlaylist_Click(*p); });
    c.setHandler(QStringLiteral("mnuJumpToRandomPlaylist"),
                 [p] { mnuJumpToRandomPlaylist_Click(*p); });
}
