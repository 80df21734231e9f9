#include "playback/Player.h"

#include "core/Colors.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/SliderModel.h"
#include "core/modControls.h"
#include "core/modFiles.h"
#include "core/wmpPlayer.h"
#include "playlists/PlaylistRows.h"

#include <cmath>

namespace {

using namespace PlaylistColumn;

bool checked(MainContext& ctx, const char* menu) {
    const QString name = QString::fromLatin1(menu);
    return ctx.commands().has(name) && ctx.commands().isChecked(name);
}

void failed() {
    Dialogs::msgBox(QStringLiteral("An error occured while trying to play the selected media "
                                   "file.\n\nThis function will not continue.\n"),
                    Dialogs::vbExclamation, QStringLiteral("Error Playing Media File"));
}

// Continues the paused song where it was held, whatever row is selected now.
void resume(MainContext& ctx) {
    ctx.call(ctx.player_Starting);
    wmpPlayer& p = ctx.player();
    p.setFileName(ctx.PausedFilename);
    p.Play();
    p.setCurrentPosition(ctx.PausedPosition);
    ctx.PlayerPaused = false;
    ctx.PausedFilename.clear();
}

int rewindRate() {
    return int(settings_Number(QStringLiteral("Settings"), QStringLiteral("RewindForwardRate"),
                               QStringLiteral("5")));
}

// Tags of the song just started, into its row; "[None]" where the tag says nothing.
void showTags(MainContext& ctx, int row, const QString& filename) {
    PlaylistTagReader* reader = playlist_TagReader();
    if (!reader || !modFiles::file_Exists(filename)) return;
    ListModel& list = ctx.lstvPlaylist();
    if (row < 1 || row > list.count() || list.text(row - 1, Filename) != filename) return;
    const PlaylistTagReader::Texts t = checked(ctx, "mnuTagsUseID3v2Tags")
                                           ? reader->readID3v2(filename)
                                           : reader->readID3v1(filename);
    const QString none = QStringLiteral("[None]");
    list.setText(row - 1, Artist, t.artist.trimmed().isEmpty() ? none : t.artist);
    list.setText(row - 1, Title, t.title.trimmed().isEmpty() ? none : t.title);
    list.setText(row - 1, Year, t.year);
}

} // namespace

bool player_IsVideoFile(const QString& filename) {
    static const QStringList video{
        QStringLiteral("mpe"),  QStringLiteral("mpa"), QStringLiteral("m1v"), QStringLiteral("mpg"),
        QStringLiteral("mpeg"), QStringLiteral("wmv"), QStringLiteral("avi")};
    return video.contains(modFiles::file_GetExtension(filename).toLower());
}

void player_Play(MainContext& ctx, int mode) {
    ListModel& list = ctx.lstvPlaylist();
    wmpPlayer& player = ctx.player();

    // 1. One song at a time.
    if (listview_SelectedCount(list) > 1) {
        Dialogs::msgBox(QStringLiteral("You have selected more than 1 song from the playlist.\n\n"
                                       "When playing songs, you must only select 1 song at a "
                                       "time.\n"),
                        Dialogs::vbExclamation, QStringLiteral("Multiple Songs Selected"));
        return;
    }
    int row = listview_SelectedIndex(list);
    if (row < 1) {
        if (ctx.PlayerPaused) return resume(ctx);
        return failed();
    }

    // 2. A missing file gives way to the next existing one below it.
    if (!modFiles::file_Exists(list.text(row - 1, Filename))) {
        int found = 0;
        for (int i = row + 1; i <= list.count() && !found; ++i)
            if (modFiles::file_Exists(list.text(i - 1, Filename))) found = i;
        if (!found) {
            Dialogs::msgBox(
                QStringLiteral("It has been detected that the files in this playlist do not "
                               "exist.\n\nPlease check the files in this playlist before "
                               "continuing.\n"),
                Dialogs::vbExclamation, QStringLiteral("Files In Playlist Do Not Exist"));
            return;
        }
        row = found;
        listview_SelectItem(list, row);
    }

    // 3. Play while paused continues the paused song.
    if (ctx.PlayerPaused) return resume(ctx);

    // 4. The row's status.
    const QString status = list.text(row - 1, Status);
    const bool last = row == list.count();
    if (status == QLatin1String("Skip")) {
        if (last) return ctx.call(ctx.player_NextTrack);
        bool found = false;
        while (!found && list.text(row - 1, Status) == QLatin1String("Skip") &&
               row < list.count()) {
            ++row;
            listview_SelectItem(list, row);
            found = list.text(row - 1, Status) != QLatin1String("Skip");
        }
        if (found) player_Play(ctx, 1);
        return;
    }
    if (status == QLatin1String("Skip Once")) {
        list.setText(row - 1, Status, QStringLiteral("Play"));
        if (last) return ctx.call(ctx.player_NextTrack);
        listview_SelectItem(list, row + 1);
        return player_Play(ctx, 1);
    }
    if (status == QLatin1String("Play Once")) list.setText(row - 1, Status, QStringLiteral("Skip"));

    // 5-6.
    const QString filename = list.text(row - 1, Filename);
    player.setFileName(filename);
    ctx.PlayingRowIndex = row;
    ctx.PlayingDetails = {list.text(row - 1, Artist), list.text(row - 1, Title), filename};

    // 8.
    ctx.call(ctx.player_Starting);
    player.Play();
    listview_SelectItem(list, ctx.PlayingRowIndex);
    playlist_UpdatePlaylist(ctx, ctx.PlayingRowIndex);

    // 9. A volume stored for this file.
    if (ctx.volumes_ApplyStored) ctx.volumes_ApplyStored(player.FileName().toLower());

    // 10. The row has just started, so it goes whatever the last tick of the position timer
    // saw; the advance then goes on with the row that took its place.
    if (list.text(row - 1, Status) == QLatin1String("Remove")) {
        const int before = list.count();
        const int state = ctx.TransportState;
        ctx.TransportState = 1;
        ctx.commands().run(QStringLiteral("mnuRemoveSelected"));
        ctx.TransportState = state;
        if (list.count() < before && ctx.PlayingRowIndex == row) ctx.PlayingRowIndex = row - 1;
    }

    // 11.
    if (checked(ctx, "mnuTagsShowTagsAsFilesArePlayed"))
        showTags(ctx, ctx.PlayingRowIndex, filename);

    // 12. The picture shows only for video files.
    const bool videoOpen = ctx.video_IsOpened && ctx.video_IsOpened();
    if (player_IsVideoFile(filename)) {
        if (!videoOpen) ctx.call(ctx.video_Open);
    } else if (videoOpen) {
        ctx.call(ctx.video_Close);
    }

    // 13.
    ctx.call(ctx.player_ShowPlaying);
    if (checked(ctx, "mnuWindowsShowLyricsWhenAvailable") && ctx.lyrics_OpenFile)
        ctx.lyrics_OpenFile(filename);

    // 14. One more try when the control did not start.
    if (player.PlayState() != wmpPlayer::Playing) {
        player.setFileName(filename);
        player.Play();
    }
    if (player.PlayState() != wmpPlayer::Playing) return failed();

    // 15-16.
    window_WriteLog(
        QStringLiteral("Played %1 - %2.").arg(ctx.PlayingDetails.Artist, ctx.PlayingDetails.Title));
    if (mode == 1 && ctx.tracking_Add)
        ctx.tracking_Add(ctx.PlayingDetails.Artist, ctx.PlayingDetails.Title,
                         ctx.PlayingDetails.Filename);
    else if (mode == 0 && ctx.window_AddRandomFilename)
        ctx.window_AddRandomFilename(filename);
    // The display follows at once rather than at the next tick.
    ctx.call(ctx.tmrPosition_Timer);
}

void player_Stop(MainContext& ctx) {
    if (ctx.TransportState == 1) return ctx.call(ctx.player_ClosePlaying);
    ctx.player().Stop();
    playlist_UpdatePlaylist(ctx, 0);
    if (ctx.sldPosition().enabled()) ctx.sldPosition().scroll(0);
    ctx.PausedPosition = 0;
    ctx.PausedFilename.clear();
    ctx.PlayerPaused = false;
    if (ctx.PlayNextRowIndex > 0) {
        const qint64 colour =
            Colors::parse(settings_Read(QStringLiteral("Appearance"), QStringLiteral("FontColour")),
                          Colors::SystemWindowText);
        if (ctx.PlayNextRowIndex <= ctx.lstvPlaylist().count())
            ctx.lstvPlaylist().setRowStyle(ctx.PlayNextRowIndex - 1, false, colour);
        ctx.commands().setCaption(QStringLiteral("mnuPlayNext"),
                                  QStringLiteral("Play Ne&xt...\tX"));
        ctx.PlayNextRowIndex = 0;
    }
    if (ctx.video_IsOpened && ctx.video_IsOpened()) ctx.call(ctx.video_Close);
    if (ctx.lyrics_IsOpened && ctx.lyrics_IsOpened()) ctx.call(ctx.lyrics_Close);
    ctx.call(ctx.tmrWindowUpdate_Timer);
    ctx.player().setFileName(QStringLiteral("1"));
    ctx.call(ctx.player_ClosePlaying);
    // The display follows at once rather than at the next tick.
    ctx.call(ctx.tmrPosition_Timer);
}

void mnuPause_Click(MainContext& ctx) {
    wmpPlayer& p = ctx.player();
    if (ctx.PlayerPaused) return resume(ctx);
    if (p.PlayState() != wmpPlayer::Playing) return;
    ctx.PausedPosition = qint32(std::lround(p.CurrentPosition()));
    ctx.PausedFilename = p.FileName();
    p.Pause();
    ctx.PlayerPaused = true;
}

void mnuRewind_Click(MainContext& ctx) {
    wmpPlayer& p = ctx.player();
    if (p.PlayState() != wmpPlayer::Playing) return;
    const int rate = rewindRate();
    const double at = p.CurrentPosition();
    if (at >= rate) p.setCurrentPosition(at - rate);
}

void mnuFastForward_Click(MainContext& ctx) {
    wmpPlayer& p = ctx.player();
    if (p.PlayState() != wmpPlayer::Playing) return;
    const int rate = rewindRate();
    const double at = p.CurrentPosition();
    if (at + rate <= p.Duration()) p.setCurrentPosition(at + rate);
}

void sldPosition_Scroll(MainContext& ctx, int seconds) {
    ctx.player().setCurrentPosition(seconds);
}

void Player_install(MainContext& ctx) {
    ctx.player_Play = [&ctx](int mode) { player_Play(ctx, mode); };
    ctx.player_Stop = [&ctx] { player_Stop(ctx); };
    Commands& c = ctx.commands();
    c.setHandler(QStringLiteral("mnuPlay"), [&ctx] { player_Play(ctx, 1); });
    c.setHandler(QStringLiteral("mnuStop"), [&ctx] { player_Stop(ctx); });
    c.setHandler(QStringLiteral("mnuPause"), [&ctx] { mnuPause_Click(ctx); });
    c.setHandler(QStringLiteral("mnuRewind"), [&ctx] { mnuRewind_Click(ctx); });
    c.setHandler(QStringLiteral("mnuFastForward"), [&ctx] { mnuFastForward_Click(ctx); });
    QObject::connect(&ctx.sldPosition(), &SliderModel::scrolled, &ctx,
                     [&ctx](int value) { sldPosition_Scroll(ctx, value); });
    // The only way a song's end reaches the advance.
    QObject::connect(&ctx, &MainContext::endOfStream, &ctx,
                     [&ctx] { ctx.call(ctx.player_NextTrack); });
}
