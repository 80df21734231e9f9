#include "playback/SongAlert.h"

#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "playback/FrmPlaying.h"
#include "playback/Lyrics.h"
#include "playlists/PlaylistRows.h"

#include <QCoreApplication>
#include <QPointer>

namespace {
QPointer<FrmPlaying>& alert() {
    static QPointer<FrmPlaying> a;
    return a;
}
} // namespace

FrmPlaying* player_PlayingAlert() {
    return alert();
}

void player_ClosePlaying() {
    if (FrmPlaying* a = alert()) {
        alert() = nullptr;
        a->unload();
    }
}

void player_ShowPlaying(MainContext& ctx) {
    if (!ctx.commands().isChecked(QStringLiteral("mnuWindowsShowEachSongAsItsPlayed")) ||
        ctx.ApplicationActive)
        return;
    player_ClosePlaying();
    auto* a = new FrmPlaying;
    alert() = a;
    QObject::connect(a, &FrmPlaying::unloaded, a, [a] {
        if (alert() == a) alert() = nullptr;
    });
    if (QCoreApplication* app = QCoreApplication::instance())
        QObject::connect(app, &QCoreApplication::aboutToQuit, a, &FrmPlaying::unload);
    MainContext* p = &ctx;
    a->clicked = [p] { p->commands().run(QStringLiteral("mnuOpen")); };
    ListModel& list = ctx.lstvPlaylist();
    const int row = ctx.PlayingRowIndex - 1;
    // A "Remove" row is gone by now: the song's own details then.
    QString artist = ctx.PlayingDetails.Artist, title = ctx.PlayingDetails.Title;
    if (row >= 0 && row < list.count() &&
        list.text(row, PlaylistColumn::Filename) == ctx.PlayingDetails.Filename) {
        artist = list.text(row, PlaylistColumn::Artist);
        title = list.text(row, PlaylistColumn::Title);
    }
    a->setText(artist + QStringLiteral(" - ") + title);
    a->show();
}

void mnuWindowsShowEachSongAsItsPlayed_Click(MainContext& ctx) {
    const QString menu = QStringLiteral("mnuWindowsShowEachSongAsItsPlayed");
    const bool on = !ctx.commands().isChecked(menu);
    ctx.commands().setChecked(menu, on);
    settings_Write(QStringLiteral("Settings"), QStringLiteral("ShowCurrentSongAlerts"),
                   on ? QStringLiteral("1") : QStringLiteral("0"));
}

void LyricsAlerts_install(MainContext& ctx) {
    MainContext* p = &ctx;
    ctx.player_ShowPlaying = [p] { player_ShowPlaying(*p); };
    ctx.player_ClosePlaying = [] { player_ClosePlaying(); };
    ctx.lyrics_OpenFile = [p](const QString& f) { lyrics_OpenFile(*p, f); };
    ctx.lyrics_Close = [] { lyrics_Close(); };
    ctx.lyrics_IsOpened = [] { return lyrics_IsOpened(); };
    Commands& c = ctx.commands();
    c.setHandler(QStringLiteral("mnuWindowsShowLyricsWhenAvailable"),
                 [p] { mnuWindowsShowLyricsWhenAvailable_Click(*p); });
    c.setHandler(QStringLiteral("mnuWindowsShowEachSongAsItsPlayed"),
                 [p] { mnuWindowsShowEachSongAsItsPlayed_Click(*p); });
}
