#include "ToolsFixture.h"

#include "core/Settings.h"
#include "playlists/FrmJumpToNumber.h"
#include "playlists/FrmJumpToTime.h"
#include "playlists/JumpTools.h"

#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

class JumpToolsTest : public ToolsFixture {
protected:
    void run(const char* name) { ASSERT_TRUE(ctx.commands().run(name)) << name; }
};

TEST_F(JumpToolsTest, MiddleRoundsHalvesToTheEvenNeighbour) {
    EXPECT_EQ(jump_MiddleRow(5), 2);
    EXPECT_EQ(jump_MiddleRow(7), 4);
    EXPECT_EQ(jump_MiddleRow(6), 3);
    EXPECT_EQ(jump_MiddleRow(1), 1);
    addRows(7);
    run("mnuJumpToMiddleTrack");
    run("mnuJumpToFirstTrack");
    run("mnuJumpToLastTrack");
    EXPECT_EQ(started, (QList<int>{4, 1, 7}));
}

TEST_F(JumpToolsTest, RelativeMovesOnlyWhenTheTargetIsInsideTheList) {
    addRows(20);
    ctx.PlayingRowIndex = 10; // 10 rows from the end
    run("mnuJumpForward10Tracks");
    EXPECT_TRUE(started.isEmpty());
    EXPECT_EQ(ctx.PlayingRowIndex, 10);
    ctx.PlayingRowIndex = 9; // 11 from the end
    run("mnuJumpForward10Tracks");
    EXPECT_EQ(ctx.PlayingRowIndex, 19);
    run("mnuJumpBack10Tracks");
    run("mnuJumpForward5Tracks");
    run("mnuJumpBack5Tracks");
    EXPECT_EQ(started, (QList<int>{19, 9, 14, 9}));
    ctx.PlayingRowIndex = 5;
    run("mnuJumpBack5Tracks");
    EXPECT_EQ(started.size(), 4);
}

TEST_F(JumpToolsTest, PausedPlayerStopsFirstAndEmptyListDoesNothing) {
    for (const char* name : {"mnuJumpToFirstTrack", "mnuJumpToMiddleTrack", "mnuJumpToLastTrack",
                             "mnuJumpForward5Tracks", "mnuJumpBack5Tracks"})
        run(name);
    EXPECT_TRUE(started.isEmpty());
    addRows(3);
    ctx.PlayerPaused = true;
    run("mnuJumpToLastTrack");
    EXPECT_EQ(stops, 1);
    EXPECT_EQ(started, QList<int>{3});
}

TEST_F(JumpToolsTest, CurrentlyPlayingMatchesTheFileExactlyAndOnlyWhileActive) {
    addRows(3);
    ctx.PlayingDetails.Filename = "/m/2.wav";
    ctx.TransportState = 1;
    run("mnuJumpToCurrentlyPlaying");
    EXPECT_EQ(ctx.PlayingRowIndex, 0);
    ctx.TransportState = 2;
    ctx.PlayingDetails.Filename = "/M/2.WAV";
    run("mnuJumpToCurrentlyPlaying");
    EXPECT_EQ(ctx.PlayingRowIndex, 0);
    ctx.PlayingDetails.Filename = "/m/2.wav";
    run("mnuJumpToCurrentlyPlaying");
    EXPECT_EQ(ctx.PlayingRowIndex, 2);
    EXPECT_EQ(listview_SelectedIndex(list()), 2);
    EXPECT_TRUE(list().isBold(1, 0));
}

TEST_F(JumpToolsTest, TrackNumberRefusesZeroEmptyAndPastTheEnd) {
    addRows(4);
    run("mnuJumpToTrackNumber");
    auto* w = window<FrmJumpToNumber>();
    ASSERT_TRUE(w);
    for (const char* text : {"", "0", "5", "99999999999"}) {
        w->txtNum->setText(text);
        w->cmdJump_Click();
    }
    const QString invalid = "It has been detected that the track number you have entered is "
                            "invalid.\n\nThis function will not continue.\n";
    EXPECT_EQ(messages(), (QStringList{"it has been detected that you have not entered a playlist "
                                       "number.\n\nThis function will not be proformed.\n",
                                       invalid, invalid, invalid}));
    EXPECT_EQ(asked().first(), "message|Jump To Track Number Error");
    EXPECT_TRUE(w->isVisible());
    // Letters never reach the box.
    w->txtNum->clear();
    w->txtNum->insert("4x");
    EXPECT_EQ(w->txtNum->text(), "");
    w->txtNum->insert("4");
    w->opOptions[1]->setChecked(true);
    w->cmdJump_Click();
    EXPECT_EQ(started, QList<int>{4});
    EXPECT_EQ(settings_Read("JumpToTrackNumber", "OptionSelectSongAndPlayIt"), "1");
    EXPECT_EQ(settings_Read("JumpToTrackNumber", "OptionSelectSong"), "0");
    EXPECT_FALSE(window<FrmJumpToNumber>());
}

TEST_F(JumpToolsTest, TrackNumberRemembersPlayNext) {
    addRows(4);
    settings_Write("JumpToTrackNumber", "OptionSelectSong", "0");
    settings_Write("JumpToTrackNumber", "OptionSelectSongAndSetItToNext", "1");
    auto* w = FrmJumpToNumber::open(ctx);
    EXPECT_TRUE(w->opOptions[2]->isChecked());
    w->txtNum->setText("2");
    w->cmdJump_Click();
    EXPECT_EQ(ctx.PlayNextRowIndex, 2);
    EXPECT_TRUE(started.isEmpty());
}

TEST_F(JumpToolsTest, TimeOpensOnlyWhilePlayingAndRefusesBadTimes) {
    addRows(1);
    run("mnuJumpToTime");
    EXPECT_FALSE(window<FrmJumpToTime>());
    player.setDuration(125);
    const QString song = home.file("media/1.wav");
    TempHome::writeFile(song, "RIFF");
    player.setFileName(song);
    player.Play();
    ctx.TransportState = 0;
    run("mnuJumpToTime");
    auto* w = window<FrmJumpToTime>();
    ASSERT_TRUE(w);
    EXPECT_EQ(w->lblLength->text(), "Length:  02:05");
    const auto jump = [&](const char* mins, const char* secs) {
        w->txtMins->setText(mins);
        w->txtSecs->setText(secs);
        w->cmdJump_Click();
    };
    jump("", "1");
    jump("1", "");
    jump("1", "60");
    jump("2", "6");
    const QString tail = "\n\nThis function will not continue.\n";
    EXPECT_EQ(messages(),
              (QStringList{
                  "It has been detected that you have not entered anything into the Minutes "
                  "section." +
                      tail,
                  "It has been detected that you have not entered anything into the Seconds "
                  "section." +
                      tail,
                  "It has been detected that the seconds you have entered are invalid." + tail,
                  "The time that you have entered is larger than the duration of the song/video." +
                      tail}));
    player.Pause();
    jump("0", "30");
    EXPECT_EQ(messages().last(), "It has been detected that the player is no longer playing any "
                                 "music.\n\nThis function will not be proformed.\n");
    EXPECT_EQ(player.CurrentPosition(), 0);
    player.Play();
    jump("2", "5");
    EXPECT_EQ(player.CurrentPosition(), 125);
    EXPECT_FALSE(window<FrmJumpToTime>());
    EXPECT_EQ(asked().last(), "message|Jump To Time Error");
}
