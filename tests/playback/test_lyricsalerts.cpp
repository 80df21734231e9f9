#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "playback/FrmLyrics.h"
#include "playback/FrmPlaying.h"
#include "playback/Lyrics.h"
#include "playback/SongAlert.h"
#include "playback/TrackAdvance.h"
#include "support/TempHome.h"
#include "system/modWindows.h"

#include <QApplication>
#include <QFileInfo>
#include <QLabel>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class LyricsAlerts : public ::testing::Test {
protected:
    void SetUp() override {
        LyricsAlerts_install(ctx);
        lyrics_SetReader([this](const QString& f) {
            ++reads;
            return lyrics.value(QFileInfo(f).fileName());
        });
        lyrics = {{"a.mp3", "first words"},
                  {"b.MP3", "second words"},
                  {"c.mp3", ""},
                  {"d.ogg", "never read"}};
        ctx.commands().setChecked("mnuWindowsShowEachSongAsItsPlayed", true);
        ctx.lstvPlaylist().addRow({"1", "Artist", "Song", "", "Play", "", "/m/a.mp3"});
        ctx.PlayingRowIndex = 1;
        ctx.PlayingDetails = {QStringLiteral("Artist"), QStringLiteral("Song"),
                              QStringLiteral("/m/a.mp3")}; // as player_Play records them
    }
    void TearDown() override {
        lyrics_Close();
        player_ClosePlaying();
        lyrics_SetReader(nullptr);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QString shown() { return lyrics_Window().txtLyrics()->toPlainText(); }

    TempHome home;
    MainContext ctx;
    QHash<QString, QString> lyrics;
    int reads = 0;
};

TEST_F(LyricsAlerts, LyricsWindowFollowsTheSongs) {
    lyrics_OpenFile(ctx, "/m/a.mp3");
    EXPECT_TRUE(lyrics_IsOpened());
    EXPECT_TRUE(lyrics_Window().isVisible());
    EXPECT_EQ(lyrics_Window().windowTitle(), "VELDOR Lyrics");
    EXPECT_EQ(shown(), "first words");

    lyrics_OpenFile(ctx, "/m/b.MP3"); // lyrics again while open: the box stays empty
    EXPECT_TRUE(lyrics_IsOpened());
    EXPECT_EQ(shown(), "");

    lyrics_OpenFile(ctx, "/m/c.mp3"); // none: closes
    EXPECT_FALSE(lyrics_IsOpened());
    EXPECT_FALSE(lyrics_Window().isVisible());

    lyrics_OpenFile(ctx, "/m/b.MP3");
    EXPECT_EQ(shown(), "second words");
    const int before = reads;
    lyrics_OpenFile(ctx, "/m/d.ogg"); // not an MPEG audio file: closes, tag not read
    EXPECT_FALSE(lyrics_IsOpened());
    EXPECT_EQ(reads, before);

    lyrics_SetReader(nullptr); // no tag reader yet: nothing opens
    lyrics_OpenFile(ctx, "/m/a.mp3");
    EXPECT_FALSE(lyrics_IsOpened());
}

TEST_F(LyricsAlerts, OnlyTheProgramClosesTheLyricsWindow) {
    ctx.commands().setChecked("mnuAlwaysOnTop", true);
    lyrics_OpenFile(ctx, "/m/a.mp3");
    EXPECT_TRUE(lyrics_Window().windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_TRUE(lyrics_Window().testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_FALSE(lyrics_Window().close());
    EXPECT_TRUE(lyrics_Window().isVisible());

    player_StopSequence(ctx);
    EXPECT_FALSE(lyrics_IsOpened());
    EXPECT_FALSE(lyrics_Window().isVisible());
    EXPECT_FALSE(lyrics_Window().windowFlags() & Qt::WindowStaysOnTopHint);
}

TEST_F(LyricsAlerts, LyricsSizeIsKeptInTwips) {
    FrmLyrics& w = lyrics_Window();
    settings_Write("Lyrics", "Width", "4500");
    settings_Write("Lyrics", "Height", "3000");
    lyrics_GetSize();
    EXPECT_EQ(w.width(), modWindows::twipsToPixels(4500, &w));
    EXPECT_EQ(w.height(), modWindows::twipsToPixels(3000, &w));
    w.resize(400, 300);
    lyrics_SaveSize();
    EXPECT_EQ(settings_Read("Lyrics", "Width"),
              QString::number(modWindows::pixelsToTwips(400, &w)));
    EXPECT_EQ(settings_Read("Lyrics", "Height"),
              QString::number(modWindows::pixelsToTwips(300, &w)));
}

TEST_F(LyricsAlerts, MenusFlipAndWrite) {
    ctx.commands().run("mnuWindowsShowLyricsWhenAvailable");
    EXPECT_TRUE(ctx.commands().isChecked("mnuWindowsShowLyricsWhenAvailable"));
    EXPECT_EQ(settings_Read("Settings", "ShowLyricsWhenAvailable"), "1");
    ctx.commands().run("mnuWindowsShowEachSongAsItsPlayed");
    EXPECT_FALSE(ctx.commands().isChecked("mnuWindowsShowEachSongAsItsPlayed"));
    EXPECT_EQ(settings_Read("Settings", "ShowCurrentSongAlerts"), "0");
    ctx.player_ShowPlaying(); // switched off: no alert
    EXPECT_EQ(player_PlayingAlert(), nullptr);
}

TEST_F(LyricsAlerts, AlertShowsAtTheBottomCentreWhileTheProgramIsInTheBackground) {
    ctx.ApplicationActive = true; // the program has the focus: no alert
    ctx.player_ShowPlaying();
    EXPECT_EQ(player_PlayingAlert(), nullptr);

    ctx.ApplicationActive = false;
    ctx.player_ShowPlaying();
    FrmPlaying* a = player_PlayingAlert();
    ASSERT_NE(a, nullptr);
    EXPECT_TRUE(a->isVisible());
    EXPECT_EQ(a->lblText()->text(), "Artist - Song");
    EXPECT_TRUE(a->windowFlags() & Qt::WindowDoesNotAcceptFocus);
    EXPECT_TRUE(a->windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_TRUE(a->testAttribute(Qt::WA_ShowWithoutActivating));

    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_LE(qAbs(a->geometry().center().x() - area.center().x()), 1);
    EXPECT_LE(a->geometry().bottom(), area.bottom());
    EXPECT_GT(a->geometry().top(), area.center().y());
    EXPECT_GT(a->width(), a->lblText()->fontMetrics().horizontalAdvance("Artist - Song"));

    const QPointer<FrmPlaying> first = a;
    ctx.PlayingRowIndex = 0; // a second song replaces the alert
    ctx.PlayingDetails = {};
    ctx.player_ShowPlaying();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(first.isNull());
    EXPECT_EQ(player_PlayingAlert()->lblText()->text(), " - ");
}

TEST_F(LyricsAlerts, AlertGoesAfterThreeTicksAtOnceOnStopAndOnAClick) {
    ctx.player_ShowPlaying();
    FrmPlaying* a = player_PlayingAlert();
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(a->tmrTimer()->interval(), 1000);
    a->tmrTimer_Timer();
    a->tmrTimer_Timer();
    EXPECT_TRUE(a->isVisible());
    a->tmrTimer_Timer();
    EXPECT_FALSE(a->isVisible());
    EXPECT_EQ(player_PlayingAlert(), nullptr);

    ctx.player_ShowPlaying(); // a stop within the three seconds
    a = player_PlayingAlert();
    ctx.player_ClosePlaying();
    EXPECT_FALSE(a->isVisible());
    EXPECT_EQ(player_PlayingAlert(), nullptr);

    int opened = 0;
    ctx.commands().setHandler("mnuOpen", [&] { ++opened; });
    ctx.player_ShowPlaying();
    a = player_PlayingAlert();
    QTest::mouseClick(a, Qt::LeftButton, {}, a->rect().center());
    EXPECT_FALSE(a->isVisible());
    EXPECT_EQ(player_PlayingAlert(), nullptr);
    EXPECT_EQ(opened, 1);
}

} // namespace
