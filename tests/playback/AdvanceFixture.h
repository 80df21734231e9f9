#pragma once
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/DialogScript.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "playback/Player.h"
#include "core/ScriptedPlayer.h"
#include "playback/TrackAdvance.h"
#include "playlists/ListFiles.h"
#include "core/ListModel.h"
#include "core/PlaylistCombo.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/PlaylistRows.h"
#include "core/modControls.h"
#include "support/TempHome.h"

#include <QDir>
#include <QFileInfo>
#include <gtest/gtest.h>

// A main context over a fresh data folder whose songs play through a scripted engine, started
// by the player's own start where it stands, else by a small stand-in (the selected row is
// loaded and played, PlayingRowIndex follows it).
class AdvanceFixture : public ::testing::Test {
protected:
    void SetUp() override {
        QDir().mkpath(home.file(QStringLiteral("Playlists")));
        Dialogs::setResponder(&dialogs);
        ConsoleLog::instance().setText({});
        ctx.setPlayer(&engine);
        Player_install(ctx);
        TrackAdvance_install(ctx);
        PlaylistFiles_install(ctx);
        ctx.PlaylistComboReady = true;
        // The player's own start where it stands, else a small stand-in; the modes asked for
        // are kept either way.
        const auto real = ctx.player_Play;
        ctx.player_Play = [this, real](int mode) {
            modes << mode;
            if (real)
                real(mode);
            else
                standInPlay(mode);
        };
        // The end of a stream reaches the advance through the hook, whoever connects it.
        ctx.player_NextTrack = [this] {
            ++advances;
            player_NextTrack(ctx);
        };
        // The modes of a first start.
        for (const char* m : {"mnuPlayingGoThroughPlaylistNormally", "mnuPlaylistStopAfterEnding",
                              "mnuWorkForwardThroughList"})
            ctx.commands().setChecked(QString::fromLatin1(m), true);
    }
    void TearDown() override {
        advance_SetRandomNumber(nullptr);
        playlist_SetTagReader(nullptr);
        Dialogs::setResponder(nullptr);
    }

    void standInPlay(int mode) {
        const int row = listview_SelectedIndex(list());
        if (row < 1) return;
        engine.setFileName(list().text(row - 1, PlaylistColumn::Filename));
        ctx.PlayingRowIndex = row;
        engine.Play();
        playlist_UpdatePlaylist(ctx, row);
        if (mode == 0 && ctx.window_AddRandomFilename)
            ctx.window_AddRandomFilename(engine.FileName());
    }

    ListModel& list() { return ctx.lstvPlaylist(); }
    Commands& c() { return ctx.commands(); }

    // A media file that exists; its name says which row it is.
    QString makeFile(const QString& name) {
        const QString path = home.file(QStringLiteral("media/") + name);
        TempHome::writeFile(path, "x");
        return path;
    }
    void addRow(const QString& name, const QString& artist = {}, const QString& year = {},
                const QString& status = QStringLiteral("Play")) {
        list().addRow({QString(), artist, name, year, status, QString(),
                       makeFile(name + QStringLiteral(".mp3"))});
        listview_Renumber(list());
    }
    // Rows "A", "B", ... in "Play".
    void addRows(int n) {
        for (int i = 0; i < n; ++i)
            addRow(QString(QChar('A' + i)));
    }
    // What the timer keeps: 0 playing, 1 stopped, 2 paused.
    void tick() {
        const int s = engine.PlayState();
        ctx.TransportState = s == wmpPlayer::Playing ? 0 : s == wmpPlayer::Paused ? 2 : 1;
    }
    // Starts row `row` as a double click would.
    void start(int row) {
        select(row);
        ctx.player_Play(1);
        tick();
    }
    void select(int row) {
        list().clearSelection();
        listview_SelectItem(list(), row);
    }
    // The song plays to its end; the engine raises its event and the advance runs.
    void endSong() {
        tick();
        const int before = advances;
        engine.finish();
        if (advances == before) ctx.player_NextTrack();
        tick();
    }
    // Names ("A", "B", ...) of the files played so far, in order.
    QStringList played() const {
        QStringList out;
        for (const QString& f : engine.played())
            out << QFileInfo(f).completeBaseName();
        return out;
    }
    void setMode(const char* menu) { c().run(QString::fromLatin1(menu)); }
    void setting(const char* section, const char* key, const char* value) {
        settings_Write(QString::fromLatin1(section), QString::fromLatin1(key),
                       QString::fromLatin1(value));
    }
    // Named playlists of these rows on disk, listed in the combo after "((Select Playlist))".
    void makePlaylists(const QList<QPair<QString, QStringList>>& lists) {
        for (const auto& [name, rows] : lists) {
            QByteArray bytes;
            for (const QString& r : rows)
                bytes += ListFiles::encodeRow({QString(), QString(), r, QString(),
                                               QStringLiteral("Play"), QString(),
                                               makeFile(r + QStringLiteral(".mp3"))});
            TempHome::writeFile(playlist_PathOf(name), bytes);
        }
        ctx.cmbPlaylists().clear();
        window_InstallPlaylists(ctx);
    }

    TempHome home;
    MainContext ctx;
    ScriptedPlayer engine;
    ScriptedResponder dialogs;
    QList<int> modes;
    int advances = 0;
};
