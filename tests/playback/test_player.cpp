#include "core/ScriptedPlayer.h"
#include "core/SliderModel.h"
#include "playback/Player.h"
#include "playback/PlayerTimers.h"
#include "playlists/RowsFixture.h"

namespace {

using namespace PlaylistColumn;

// The transport over a scripted engine, with the other parts' hooks recorded.
class PlayerTest : public RowsFixture {
protected:
    void SetUp() override {
        RowsFixture::SetUp();
        ctx.setPlayer(&engine);
        Player_install(ctx);
        ctx.player_NextTrack = [this] { calls << QStringLiteral("next"); };
        ctx.tracking_Add = [this](const QString& a, const QString&, const QString&) {
            calls << QStringLiteral("track ") + a;
        };
        ctx.window_AddRandomFilename = [this](const QString&) {
            calls << QStringLiteral("random");
        };
        ctx.volumes_ApplyStored = [this](const QString& f) { calls << QStringLiteral("vol ") + f; };
        ctx.video_IsOpened = [this] { return videoOpen; };
        ctx.video_Open = [this] { videoOpen = true; };
        ctx.video_Close = [this] { videoOpen = false; };
        ctx.tmrPosition_Timer = [this] { tick(); };
    }
    void TearDown() override {
        ctx.setPlayer(nullptr);
        RowsFixture::TearDown();
    }
    void tick() {
        tmrPosition_Timer(ctx, [this](const QString& t) { timePanel = t; });
    }
    QStringList played() {
        QStringList names;
        for (const QString& f : engine.played())
            names << QFileInfo(f).completeBaseName();
        return names;
    }
    QStringList titles() {
        QStringList t;
        for (const auto& a : dialogs.asked())
            t << a.title;
        return t;
    }

    ScriptedPlayer engine;
    QStringList calls;
    bool videoOpen = false;
    QString timePanel;
};

TEST_F(PlayerTest, PlayStartsTheSelectedRowAndTellsEveryoneInOrder) {
    addRows(3);
    select({2});
    ctx.commands().run(QStringLiteral("mnuPlay"));
    EXPECT_EQ(played(), QStringList{QStringLiteral("B")});
    EXPECT_EQ(ctx.PlayingRowIndex, 2);
    EXPECT_EQ(ctx.PlayingDetails.Artist, QStringLiteral("B"));
    EXPECT_EQ(calls, (QStringList{QStringLiteral("vol ") + list().text(1, Filename).toLower(),
                                  QStringLiteral("track B")}));
    EXPECT_TRUE(log().contains(QStringLiteral("Played B - .")));
    EXPECT_EQ(ctx.TransportState, 0);
    EXPECT_EQ(ctx.statusText(), QStringLiteral("Status:  Playing... 02.  B - "));
    EXPECT_EQ(ctx.TrayTip, QStringLiteral("VELDOR:  Playing\n02. B - "));

    // Random picks and history steps are not counted.
    calls.clear();
    player_Play(ctx, 0);
    player_Play(ctx, 2);
    EXPECT_EQ(calls.filter(QStringLiteral("track")).size(), 0);
    EXPECT_EQ(calls.filter(QStringLiteral("random")).size(), 1);
}

TEST_F(PlayerTest, RefusalsAndTheMissingFileScan) {
    addRows(2);
    select({1, 2});
    player_Play(ctx, 1);
    EXPECT_EQ(titles(), QStringList{QStringLiteral("Multiple Songs Selected")});
    EXPECT_TRUE(engine.played().isEmpty());

    // A missing row gives way to the next existing one; the missing row stays.
    add(QStringLiteral("Gone"), missing(QStringLiteral("g.mp3")));
    list().addRow({}, 0);
    list().setRowTexts(0, {QString(), QStringLiteral("Gone0"), QString(), QString(),
                           QStringLiteral("Play"), QString(), missing(QStringLiteral("h.mp3"))});
    select({1});
    player_Play(ctx, 1);
    EXPECT_EQ(played(), QStringList{QStringLiteral("A")});
    EXPECT_EQ(list().count(), 4);

    // Nothing existing from the selection down: the message, no advance.
    dialogs.clear();
    select({4});
    player_Play(ctx, 1);
    EXPECT_EQ(titles(), QStringList{QStringLiteral("Files In Playlist Do Not Exist")});
    EXPECT_FALSE(calls.contains(QStringLiteral("next")));
}

TEST_F(PlayerTest, RowStatusesSkipPlayOnceAndRemove) {
    addRows(5);
    list().setText(1, Status, QStringLiteral("Skip"));
    list().setText(2, Status, QStringLiteral("Skip Once"));
    list().setText(3, Status, QStringLiteral("Play Once"));
    select({2});
    player_Play(ctx, 1);
    // B skipped, C's skip used up, D plays once and is marked to skip from now on.
    EXPECT_EQ(played(), QStringList{QStringLiteral("D")});
    EXPECT_EQ(list().text(2, Status), QStringLiteral("Play"));
    EXPECT_EQ(list().text(3, Status), QStringLiteral("Skip"));

    // "Skip" on the last row hands over to the advance.
    list().setText(4, Status, QStringLiteral("Skip"));
    select({5});
    player_Play(ctx, 1);
    EXPECT_TRUE(calls.contains(QStringLiteral("next")));

    // A run of skips to the end stops silently on the last row.
    calls.clear();
    select({4});
    player_Play(ctx, 1);
    EXPECT_EQ(listview_SelectedIndex(list()), 5);
    EXPECT_TRUE(calls.isEmpty());

    // "Remove" plays and goes in the same call (from a stopped player).
    ctx.commands().run(QStringLiteral("mnuStop"));
    list().setText(0, Status, QStringLiteral("Remove"));
    select({1});
    player_Play(ctx, 1);
    EXPECT_EQ(played().last(), QStringLiteral("A"));
    EXPECT_EQ(list().count(), 4);
}

TEST_F(PlayerTest, PauseResumeAndPlayWhilePausedContinueTheSameSong) {
    addRows(2);
    select({1});
    player_Play(ctx, 1);
    engine.advance(42.4);
    ctx.commands().run(QStringLiteral("mnuPause"));
    EXPECT_TRUE(ctx.PlayerPaused);
    EXPECT_EQ(ctx.PausedPosition, 42);
    tick();
    EXPECT_EQ(ctx.TransportState, 2);
    EXPECT_FALSE(ctx.sldPosition().enabled());
    EXPECT_FALSE(ctx.commands().isEnabled(QStringLiteral("mnuRewind")));
    EXPECT_TRUE(ctx.commands().isEnabled(QStringLiteral("mnuStop")));
    EXPECT_TRUE(ctx.statusText().startsWith(QStringLiteral("Status:  Paused... 01.")));

    // Play with another row selected resumes A where it was held.
    select({2});
    player_Play(ctx, 1);
    EXPECT_FALSE(ctx.PlayerPaused);
    EXPECT_EQ(engine.PlayState(), wmpPlayer::Playing);
    EXPECT_DOUBLE_EQ(engine.CurrentPosition(), 42);
    EXPECT_EQ(QFileInfo(engine.FileName()).completeBaseName(), QStringLiteral("A"));

    // Pause does not start a stopped player.
    ctx.commands().run(QStringLiteral("mnuStop"));
    ctx.commands().run(QStringLiteral("mnuPause"));
    EXPECT_FALSE(ctx.PlayerPaused);
    EXPECT_EQ(engine.PlayState(), wmpPlayer::Stopped);
}

TEST_F(PlayerTest, StopClearsTheSongPlayNextAndVideo) {
    addRows(3);
    const QString video = makeFile(QStringLiteral("clip.mpa"));
    add(QStringLiteral("V"), video);
    select({4});
    player_Play(ctx, 1);
    EXPECT_TRUE(videoOpen); // "mpa" counts as video
    select({1});
    player_Play(ctx, 1);
    EXPECT_FALSE(videoOpen);
    select({4});
    player_Play(ctx, 1);
    ctx.PlayNextRowIndex = 2;
    ctx.commands().setCaption(QStringLiteral("mnuPlayNext"), QStringLiteral("Play Next: 2"));
    ctx.commands().run(QStringLiteral("mnuStop"));
    EXPECT_FALSE(videoOpen);
    EXPECT_EQ(ctx.PlayNextRowIndex, 0);
    EXPECT_EQ(ctx.commands().caption(QStringLiteral("mnuPlayNext")),
              QStringLiteral("Play Ne&xt...\tX"));
    EXPECT_EQ(engine.FileName(), QStringLiteral("1"));
    EXPECT_EQ(ctx.TransportState, 1);
    EXPECT_EQ(ctx.statusText(), QStringLiteral("Status:  Stopped"));
    EXPECT_EQ(ctx.TrayTip, QStringLiteral("VELDOR:  Stopped"));
    EXPECT_FALSE(ctx.commands().isEnabled(QStringLiteral("mnuPause")));
    EXPECT_FALSE(ctx.sldPosition().enabled());
}

TEST_F(PlayerTest, RewindFastForwardAndTheSlider) {
    TempHome::writeFile(home.settingsFile(), "[Settings]\r\nRewindForwardRate=10\r\n");
    addRows(1);
    engine.setDuration(100);
    select({1});
    player_Play(ctx, 1);
    engine.advance(5);
    ctx.commands().run(QStringLiteral("mnuRewind")); // fewer than 10 s played: nothing
    EXPECT_DOUBLE_EQ(engine.CurrentPosition(), 5);
    ctx.commands().run(QStringLiteral("mnuFastForward"));
    EXPECT_DOUBLE_EQ(engine.CurrentPosition(), 15);
    ctx.commands().run(QStringLiteral("mnuRewind"));
    EXPECT_DOUBLE_EQ(engine.CurrentPosition(), 5);
    engine.advance(89);
    ctx.commands().run(QStringLiteral("mnuFastForward")); // past the end: nothing
    EXPECT_DOUBLE_EQ(engine.CurrentPosition(), 94);

    ctx.sldPosition().scroll(30);
    EXPECT_DOUBLE_EQ(engine.CurrentPosition(), 30);
    tick();
    EXPECT_EQ(ctx.sldPosition().maximum(), 100);
    EXPECT_EQ(ctx.sldPosition().value(), 30);
    EXPECT_EQ(timePanel, QString()); // neither time menu checked
    ctx.commands().setChecked(QStringLiteral("mnuStatusBarShowTimeRemaining"), true);
    tick();
    EXPECT_EQ(timePanel, QStringLiteral("Remaining:  01:10"));
}

TEST_F(PlayerTest, IntroductionCutsOnlyAtTheRoundedRate) {
    TempHome::writeFile(home.settingsFile(), "[Settings]\r\nIntroductionRate=10\r\n");
    ctx.commands().setChecked(QStringLiteral("mnuPlayingIntroduction"), true);
    addRows(1);
    select({1});
    player_Play(ctx, 1);
    engine.advance(9.4);
    tick();
    EXPECT_FALSE(calls.contains(QStringLiteral("next")));
    engine.advance(0.3);
    tick();
    EXPECT_TRUE(calls.contains(QStringLiteral("next")));
    // A seek beyond the rate is not caught.
    calls.clear();
    engine.setCurrentPosition(60);
    tick();
    EXPECT_FALSE(calls.contains(QStringLiteral("next")));
}

TEST_F(PlayerTest, OnlyTheEndOfStreamRunsTheAdvance) {
    addRows(1);
    select({1});
    player_Play(ctx, 1);
    engine.finish();
    EXPECT_EQ(calls.filter(QStringLiteral("next")).size(), 1);

    // A stop raises no end.
    player_Play(ctx, 1);
    ctx.commands().run(QStringLiteral("mnuStop"));
    EXPECT_EQ(calls.filter(QStringLiteral("next")).size(), 1);
}

} // namespace
