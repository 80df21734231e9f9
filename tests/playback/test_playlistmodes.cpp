#include "playback/AdvanceFixture.h"
#include "playback/PlaylistJumps.h"

// What happens at the end of the list, the jumps between playlists, and the mode menus.
class PlaylistModes : public AdvanceFixture {
protected:
    // Opens entry `index` of the combo as the user's choice would.
    void open(int index) {
        ctx.cmbPlaylists().setListIndex(index);
        tick();
    }
};

TEST_F(PlaylistModes, SwitchToNextStopsWithNoPlaylistAndPlaysTheSameListAfterTheLast) {
    setMode("mnuPlaylistSwitchToNext");
    makePlaylists({});
    ctx.cmbPlaylists().setListIndex(0);
    addRows(1);
    start(1);
    endSong(); // only "((Select Playlist))": stop
    EXPECT_EQ(played(), QStringList({"A"}));
    EXPECT_EQ(engine.FileName(), "1");

    makePlaylists({{"P1", {"A1", "A2"}}, {"P2", {"B1"}}});
    open(1); // "P1"
    start(1);
    ctx.RandomHistoryCount = 1;
    ctx.RandomFilenames = {"x"};
    endSong();
    endSong(); // end of P1: P2 opens and plays from its first row
    EXPECT_EQ(ctx.cmbPlaylists().text(), "P2");
    EXPECT_EQ(ctx.RandomHistoryCount, 0);
    endSong(); // end of the last playlist: no stop, P2 again
    EXPECT_EQ(ctx.cmbPlaylists().text(), "P2");
    EXPECT_EQ(played(), QStringList({"A", "A1", "A2", "B1", "B1"}));
}

TEST_F(PlaylistModes, RepeatOnceRunsTheListOneMoreTime) {
    addRows(2);
    setMode("mnuPlaylistRepeatOnce");
    start(1);
    endSong();
    endSong();
    EXPECT_TRUE(c().isChecked("mnuPlaylistStopAfterEnding"));
    EXPECT_EQ(settings_Read("Playback", "PlaylistRepeatOnce"), "0");
    endSong();
    endSong();
    EXPECT_EQ(played(), QStringList({"A", "B", "A", "B"}));
}

TEST_F(PlaylistModes, PickRandomAfterEndingOpensADrawnPlaylistButStopsAtSixEntries) {
    setMode("mnuPlaylistPickRandomAfterEnding");
    makePlaylists({{"P1", {"A1"}}, {"P2", {"B1"}}});
    advance_SetRandomNumber([](int maximum, int floor, bool unique, int size) {
        EXPECT_EQ(maximum, 3);
        EXPECT_EQ(floor, 0);
        EXPECT_FALSE(unique);
        EXPECT_EQ(size, 20);
        return 2;
    });
    open(1);
    start(1);
    endSong();
    EXPECT_EQ(ctx.cmbPlaylists().text(), "P2");
    EXPECT_EQ(played(), QStringList({"A1", "B1"}));

    makePlaylists({{"P3", {"C1"}}, {"P4", {"D1"}}, {"P5", {"E1"}}});
    ASSERT_EQ(ctx.cmbPlaylists().count(), 6);
    open(1);
    start(1);
    endSong();
    EXPECT_EQ(played().last(), "A1");
    EXPECT_EQ(engine.FileName(), "1");
    EXPECT_TRUE(c().isChecked("mnuPlaylistStopAfterEnding"));
}

TEST_F(PlaylistModes, JumpsStepBetweenPlaylistsAndStartOnlyWhenAsked) {
    makePlaylists({{"P1", {"A1"}}, {"P2", {"B1", "B2"}}});
    open(1);
    mnuJumpToPreviousPlaylist_Click(ctx); // entry 0 is never reached by stepping
    EXPECT_EQ(ctx.cmbPlaylists().listIndex(), 1);
    mnuJumpToNextPlaylist_Click(ctx);
    EXPECT_EQ(ctx.cmbPlaylists().text(), "P2");
    EXPECT_EQ(ctx.PlayingRowIndex, 1);
    EXPECT_TRUE(played().isEmpty());
    mnuJumpToNextPlaylist_Click(ctx); // the last entry: nothing
    EXPECT_EQ(ctx.cmbPlaylists().text(), "P2");

    c().run("mnuWorkBackwardsThroughPlaylist");
    player_NextPlaylist(ctx, true); // nothing after P2
    EXPECT_TRUE(played().isEmpty());
    player_PreviousPlaylist(ctx, true);
    EXPECT_EQ(played(), QStringList({"A1"}));

    setting("Settings", "PlayPlaylistsOnSkip", "1");
    mnuJumpToNextPlaylist_Click(ctx);
    EXPECT_EQ(played(), QStringList({"A1", "B2"})) << "backwards: the first row is the last";
}

TEST_F(PlaylistModes, RandomPlaylistJump) {
    makePlaylists({{"P1", {"A1"}}, {"P2", {"B1"}}});
    open(1);
    int draw = 3; // ListCount: past the last entry, refused
    advance_SetRandomNumber([&](int, int, bool, int) { return draw; });
    mnuJumpToRandomPlaylist_Click(ctx);
    EXPECT_EQ(ctx.cmbPlaylists().text(), "P1");
    draw = 2;
    mnuJumpToRandomPlaylist_Click(ctx);
    EXPECT_EQ(ctx.cmbPlaylists().text(), "P2");
    EXPECT_TRUE(played().isEmpty());

    makePlaylists({{"P3", {"C1"}}, {"P4", {"D1"}}, {"P5", {"E1"}}});
    open(1);
    mnuJumpToRandomPlaylist_Click(ctx); // six entries: nothing
    EXPECT_EQ(ctx.cmbPlaylists().text(), "P1");
}

TEST_F(PlaylistModes, ModeMenusAreExclusiveAndWrittenAtOnce) {
    setMode("mnuPlayingRepeat");
    int on = 0;
    for (QAction* a : c().all())
        if (a->objectName().startsWith("mnuPlaying") && a->isChecked()) ++on;
    EXPECT_EQ(on, 1);
    EXPECT_EQ(settings_Read("Playback", "PlayingRepeat"), "1");
    EXPECT_EQ(settings_Read("Playback", "PlayingGoThroughPlaylistNormally"), "0");
    EXPECT_FALSE(c().isEnabled("mnuWorkForwardThroughList"));
    EXPECT_FALSE(c().isEnabled("mnuWorkBackwardsThroughPlaylist"));
    setMode("mnuPlayingIntroduction");
    EXPECT_TRUE(c().isEnabled("mnuWorkBackwardsThroughPlaylist"));

    setMode("mnuPlaylistSwitchToNext");
    EXPECT_FALSE(c().isChecked("mnuPlaylistStopAfterEnding"));
    EXPECT_EQ(settings_Read("Playback", "PlaylistStopAfterEnding"), "0");
    EXPECT_EQ(settings_Read("Playback", "PlaylistSwitchToNext"), "1");

    c().run("mnuWorkBackwardsThroughPlaylist");
    EXPECT_FALSE(c().isChecked("mnuWorkForwardThroughList"));
    EXPECT_EQ(settings_Read("PlayMode", "WorkForwardThroughList"), "0");
    EXPECT_EQ(settings_Read("PlayMode", "WorkBackwardsThroughPlaylist"), "1");
}

TEST_F(PlaylistModes, AModeRestoredByItsMarkSetsTheDirectionMenusWithoutWriting) {
    QFile::remove(home.settingsFile());
    c().setChecked("mnuPlayingGoThroughPlaylistNormally", false);
    c().setChecked("mnuPlayingShuffleByYear", true);
    EXPECT_FALSE(c().isEnabled("mnuWorkBackwardsThroughPlaylist"));
    EXPECT_FALSE(QFile::exists(home.settingsFile()));

    // Neither direction checked: the advance reads the backwards menu's Enabled, not its mark.
    c().setChecked("mnuPlayingShuffleByYear", false);
    c().setChecked("mnuPlayingGoThroughPlaylistNormally", true);
    c().setChecked("mnuWorkForwardThroughList", false);
    addRows(3);
    start(2);
    endSong();
    EXPECT_EQ(played().last(), "A");
}
