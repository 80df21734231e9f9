#include "playback/TrackAdvance.h"

#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/PlaylistCombo.h"
#include "core/Settings.h"
#include "core/SettingsCatalogue.h"
#include "core/modControls.h"
#include "core/modFiles.h"
#include "core/modMath.h"
#include "core/wmpPlayer.h"
#include "playback/PlayModes.h"
#include "playback/PlaylistJumps.h"
#include "playlists/PlaylistRows.h"

namespace {

using namespace PlaylistColumn;

RandomNumberFn& randomSource() {
    static RandomNumberFn fn;
    return fn;
}

bool checked(MainContext& ctx, const char* menu) {
    return ctx.commands().isChecked(QString::fromLatin1(menu));
}

void play(MainContext& ctx, int mode) {
    if (ctx.player_Play) ctx.player_Play(mode);
}

void stopIfPaused(MainContext& ctx) {
    if (ctx.PlayerPaused) ctx.call(ctx.player_Stop);
}

QString cell(MainContext& ctx, int index, int column) {
    ListModel& list = ctx.lstvPlaylist();
    if (index < 1 || index > list.count()) return {};
    return list.text(index - 1, column);
}

// The album of a row's file from its tag; "" without a file or a reader.
QString albumOf(MainContext& ctx, int index) {
    const QString filename = cell(ctx, index, Filename);
    PlaylistTagReader* reader = playlist_TagReader();
    if (!reader || filename.isEmpty() || !modFiles::file_Exists(filename)) return {};
    return reader->readAlbum(filename, checked(ctx, "mnuTagsUseID3v2Tags"));
}

// Plays on through the rows below that share the playing row's value; none left stops.
void shuffleBy(MainContext& ctx, int column) {
    const auto value = [&](int index) {
        return column < 0 ? albumOf(ctx, index) : cell(ctx, index, column);
    };
    const QString current = value(ctx.PlayingRowIndex);
    const int count = ctx.lstvPlaylist().count();
    for (int i = qMax(ctx.PlayingRowIndex, 0) + 1; i <= count; ++i) {
        if (value(i).compare(current, Qt::CaseInsensitive) == 0) {
            advance_Select(ctx, i);
            advance_StartRule(ctx, 1);
            return;
        }
    }
    ctx.call(ctx.player_Stop);
}

void repeatPlayingRow(MainContext& ctx) {
    ctx.player().Stop();
    ctx.player().setFileName(cell(ctx, ctx.PlayingRowIndex, Filename));
    play(ctx, 1);
}

// The end of the list: the playlist mode decides.
void endOfList(MainContext& ctx) {
    PlaylistCombo& combo = ctx.cmbPlaylists();
    Commands& c = ctx.commands();
    if (checked(ctx, "mnuPlaylistSwitchToNext")) {
        if (combo.listIndex() == 0 && combo.listIndex() == combo.count() - 1) {
            player_StopSequence(ctx);
            return;
        }
        playlist_UpdatePlaylist(ctx, 0);
        // Past the last entry the combo refuses the index and the same list plays again.
        combo.setListIndex(combo.listIndex() + 1);
        advance_Select(ctx, advance_FirstRow(ctx));
        window_ResetRandomFilenames(ctx);
        advance_StartRule(ctx, 1);
    } else if (checked(ctx, "mnuPlaylistRepeat")) {
        advance_Select(ctx, advance_FirstRow(ctx));
        advance_StartRule(ctx, 1);
    } else if (checked(ctx, "mnuPlaylistRepeatOnce")) {
        advance_Select(ctx, advance_FirstRow(ctx));
        advance_StartRule(ctx, 1);
        c.run(QStringLiteral("mnuPlaylistStopAfterEnding"));
    } else if (checked(ctx, "mnuPlaylistPickRandomAfterEnding")) {
        if (combo.count() == 6) {
            c.setChecked(QStringLiteral("mnuPlaylistStopAfterEnding"), true);
            player_StopSequence(ctx);
            return;
        }
        playlist_UpdatePlaylist(ctx, 0);
        combo.setListIndex(advance_RandomNumber(combo.count(), 0, false, 20));
        advance_Select(ctx, advance_FirstRow(ctx));
        window_ResetRandomFilenames(ctx);
        advance_StartRule(ctx, 1);
    } else if (checked(ctx, "mnuPlaylistStopAfterEnding")) {
        player_StopSequence(ctx);
    }
}

// Step 2 of Next and Previous in random mode: the history entry at the (already moved)
// position, if its file is still in the list. False falls through to the plain step.
bool playFromHistory(MainContext& ctx) {
    const int pos = ctx.RandomHistoryPosition;
    if (pos < 1 || pos > ctx.RandomFilenames.size()) return false;
    const QString f = ctx.RandomFilenames.at(pos - 1);
    ListModel& list = ctx.lstvPlaylist();
    if (f.isEmpty() || listview_CountMatches(list, f, Filename) < 1) return false;
    int row = 0;
    for (int i = 0; i < list.count() && !row; ++i)
        if (list.text(i, Filename).compare(f, Qt::CaseInsensitive) == 0) row = i + 1;
    ctx.call(ctx.player_Stop);
    advance_Select(ctx, row);
    advance_StartRule(ctx, 2);
    return true;
}

} // namespace

void advance_SetRandomNumber(RandomNumberFn fn) {
    randomSource() = std::move(fn);
}

int advance_RandomNumber(int maximum, int floor, bool unique, int tableSize) {
    if (randomSource()) return randomSource()(maximum, floor, unique, tableSize);
    return modMath::math_RandomNumber(maximum, floor, unique, tableSize);
}

void advance_StartRule(MainContext& ctx, int mode) {
    if (settings_IsOn(QStringLiteral("Settings"), QStringLiteral("PlayOnNextAndPrevious")) ||
        ctx.TransportState == 0 || ctx.TransportState == 2)
        play(ctx, mode);
}

void advance_Select(MainContext& ctx, int index) {
    ctx.PlayingRowIndex = index;
    listview_SelectItem(ctx.lstvPlaylist(), index);
}

int advance_FirstRow(MainContext& ctx) {
    return checked(ctx, "mnuWorkForwardThroughList") ? 1 : ctx.lstvPlaylist().count();
}

void player_StopSequence(MainContext& ctx) {
    ctx.player().Stop();
    playlist_UpdatePlaylist(ctx, 0);
    ctx.player().setFileName(QStringLiteral("1"));
    if (ctx.video_IsOpened && ctx.video_IsOpened()) ctx.call(ctx.video_Close);
    if (ctx.lyrics_IsOpened && ctx.lyrics_IsOpened()) ctx.call(ctx.lyrics_Close);
}

void player_NextTrack(MainContext& ctx) {
    stopIfPaused(ctx);

    // Play Next beats everything, the end of the list included, and plays even when stopped.
    if (ctx.PlayNextRowIndex >= 1) {
        advance_Select(ctx, ctx.PlayNextRowIndex);
        play(ctx, 1);
        ctx.commands().setCaption(QStringLiteral("mnuPlayNext"),
                                  QStringLiteral("Play Ne&xt...\tX"));
        ctx.PlayNextRowIndex = 0;
        return;
    }

    // The end of the list is tested before the play mode: there the playlist mode decides.
    const int count = ctx.lstvPlaylist().count();
    const bool atEnd =
        (ctx.PlayingRowIndex == count && !checked(ctx, "mnuWorkBackwardsThroughPlaylist")) ||
        (ctx.PlayingRowIndex == 1 && !checked(ctx, "mnuWorkForwardThroughList"));
    if (atEnd) {
        endOfList(ctx);
        return;
    }

    Commands& c = ctx.commands();
    if (checked(ctx, "mnuPlayingShuffleByArtist")) {
        shuffleBy(ctx, Artist);
    } else if (checked(ctx, "mnuPlayingShuffleByAlbum")) {
        shuffleBy(ctx, -1);
    } else if (checked(ctx, "mnuPlayingShuffleByYear")) {
        shuffleBy(ctx, Year);
    } else if (checked(ctx, "mnuPlayingStopAfterEnding")) {
        player_StopSequence(ctx);
    } else if (checked(ctx, "mnuPlayingPickRandomSongs")) {
        mnuRandom_Click(ctx);
    } else if (checked(ctx, "mnuPlayingRepeat")) {
        repeatPlayingRow(ctx);
    } else if (checked(ctx, "mnuPlayingRepeatOnce")) {
        repeatPlayingRow(ctx);
        c.run(QStringLiteral("mnuPlayingGoThroughPlaylistNormally"));
    } else if (checked(ctx, "mnuPlayingGoThroughPlaylistNormally") ||
               checked(ctx, "mnuPlayingIntroduction")) {
        // The backwards menu's Enabled is read, not its check mark: in these two modes it
        // always stands enabled.
        if (checked(ctx, "mnuWorkForwardThroughList"))
            mnuNextTrack_Click(ctx);
        else if (c.isEnabled(QStringLiteral("mnuWorkBackwardsThroughPlaylist")))
            mnuPrevious_Click(ctx);
    }
}

void mnuNextTrack_Click(MainContext& ctx) {
    stopIfPaused(ctx);
    if (checked(ctx, "mnuPlayingPickRandomSongs") && ctx.RandomHistoryCount >= 1 &&
        ctx.RandomHistoryPosition != ctx.RandomHistoryCount) {
        ++ctx.RandomHistoryPosition;
        if (playFromHistory(ctx)) return;
    }
    ListModel& list = ctx.lstvPlaylist();
    const int count = list.count();
    if (count == 0) return; // nothing to step to
    // A stopped player continues from the selection, a playing one from the playing row.
    if (ctx.TransportState == 1) ctx.PlayingRowIndex = listview_SelectedIndex(list);
    if (ctx.PlayingRowIndex == count) ctx.PlayingRowIndex = 0;
    advance_Select(ctx, ctx.PlayingRowIndex + 1);
    advance_StartRule(ctx, 1);
}

void mnuPrevious_Click(MainContext& ctx) {
    stopIfPaused(ctx);
    if (checked(ctx, "mnuPlayingPickRandomSongs") && ctx.RandomHistoryCount >= 1 &&
        ctx.RandomHistoryPosition >= 1) {
        --ctx.RandomHistoryPosition;
        if (playFromHistory(ctx)) return;
    }
    ListModel& list = ctx.lstvPlaylist();
    const int count = list.count();
    if (count == 0) return;
    if (ctx.TransportState == 1) ctx.PlayingRowIndex = listview_SelectedIndex(list);

    // Walk back to the nearest row in "Play", wrapping from row 1 to the end. A list without
    // such a row would walk for ever: one full round finds nothing and leaves all as it was.
    int index = ctx.PlayingRowIndex;
    if (index <= 1 || index > count) index = count + 1;
    bool found = false;
    for (int steps = 0; steps < count && !found; ++steps) {
        --index;
        found = list.text(index - 1, Status) == QLatin1String("Play");
        if (!found && index == 1) index = count + 1;
    }
    if (!found) return;
    advance_Select(ctx, index);
    advance_StartRule(ctx, 1);
}

void mnuRandom_Click(MainContext& ctx) {
    const int count = ctx.lstvPlaylist().count();
    if (count < 6) {
        mnuNextTrack_Click(ctx);
        return;
    }
    stopIfPaused(ctx);
    // Half the list, rounded half to even: no song comes back before about half were played.
    int size = count / 2;
    if (count % 2 && size % 2) ++size;
    int r = advance_RandomNumber(count, 0, true, size);
    if (r == 0) r = 1;
    advance_Select(ctx, r);
    play(ctx, 0);
}

void window_AddRandomFilename(MainContext& ctx, const QString& filename) {
    for (const QString& f : std::as_const(ctx.RandomFilenames))
        if (f.compare(filename, Qt::CaseInsensitive) == 0) return;
    ctx.RandomFilenames.append(filename);
    ctx.RandomHistoryCount = int(ctx.RandomFilenames.size());
    ctx.RandomHistoryPosition = ctx.RandomHistoryCount;
}

void window_ResetRandomFilenames(MainContext& ctx) {
    ctx.RandomHistoryCount = 0;
    ctx.RandomHistoryPosition = 0;
    ctx.RandomFilenames.clear();
}

void TrackAdvance_install(MainContext& ctx) {
    MainContext* p = &ctx;
    ctx.player_NextTrack = [p] { player_NextTrack(*p); };
    ctx.window_AddRandomFilename = [p](const QString& f) { window_AddRandomFilename(*p, f); };
    ctx.window_ResetRandomFilenames = [p] { window_ResetRandomFilenames(*p); };
    Commands& c = ctx.commands();
    c.setHandler(QStringLiteral("mnuNextTrack"), [p] { mnuNextTrack_Click(*p); });
    c.setHandler(QStringLiteral("mnuPrevious"), [p] { mnuPrevious_Click(*p); });
    c.setHandler(QStringLiteral("mnuRandom"), [p] { mnuRandom_Click(*p); });
    // Next (Advanced) is the advance itself, Play Next and the modes included.
    c.setHandler(QStringLiteral("mnuNextTrackAdvanced"), [p] { p->call(p->player_NextTrack); });
    PlayModes_install(ctx);
    PlaylistJumps_install(ctx);
}
