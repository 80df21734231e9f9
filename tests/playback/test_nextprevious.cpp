#include "playback/AdvanceFixture.h"

// Next, Previous and Random: one step whatever the play mode, and the history of random picks.
class NextPrevious : public AdvanceFixture {};

TEST_F(NextPrevious, NextWrapsAndAStoppedPlayerContinuesFromTheSelection) {
    addRows(3);
    start(3);
    mnuNextTrack_Click(ctx);
    EXPECT_EQ(played(), QStringList({"C", "A"})) << "wraps whatever the playlist mode";

    ctx.call(ctx.player_Stop);
    tick();
    select(2);
    mnuNextTrack_Click(ctx);
    EXPECT_EQ(played().last(), "C");
}

TEST_F(NextPrevious, WithoutPlayOnNextAStoppedPlayerOnlyMovesTheSelection) {
    addRows(3);
    setting("Settings", "PlayOnNextAndPrevious", "0");
    select(2);
    mnuNextTrack_Click(ctx);
    EXPECT_TRUE(played().isEmpty());
    EXPECT_EQ(listview_SelectedIndex(list()), 3);
    EXPECT_EQ(ctx.PlayingRowIndex, 3);
    mnuPrevious_Click(ctx);
    EXPECT_TRUE(played().isEmpty());
    EXPECT_EQ(listview_SelectedIndex(list()), 2);

    start(1); // playing: Next plays
    mnuNextTrack_Click(ctx);
    EXPECT_EQ(played(), QStringList({"A", "B"}));
}

TEST_F(NextPrevious, PreviousLandsOnlyOnPlayRowsAndWraps) {
    addRow("A");
    addRow("B", {}, {}, "Skip");
    addRow("C", {}, {}, "Play Once");
    addRow("D");
    start(4);
    mnuPrevious_Click(ctx);
    tick();
    EXPECT_EQ(played().last(), "A");
    mnuPrevious_Click(ctx);
    tick();
    EXPECT_EQ(played().last(), "D") << "from row 1 to the end";

    // A "Skip" on row 1 wraps the walk too.
    list().setText(0, PlaylistColumn::Status, "Skip");
    start(2);
    mnuPrevious_Click(ctx);
    EXPECT_EQ(played().last(), "D");
}

TEST_F(NextPrevious, PreviousOnAListWithoutPlayRowsEnds) {
    addRow("A", {}, {}, "Play Once");
    addRow("B", {}, {}, "Play Once");
    addRow("C", {}, {}, "Skip");
    addRow("D", {}, {}, "Remove");
    for (int row : {1, 2, 4}) {
        select(row);
        mnuPrevious_Click(ctx); // returns: nothing to land on
    }
    EXPECT_TRUE(played().isEmpty());

    c().run("mnuWorkBackwardsThroughPlaylist");
    start(2);
    endSong(); // the advance backwards goes through Previous
    EXPECT_EQ(played(), QStringList({"B"}));
    EXPECT_EQ(listview_SelectedIndex(list()), 2);
}

TEST_F(NextPrevious, RandomOnSmallListsStepsOnAndDrawsHalfTheListOtherwise) {
    addRows(5);
    start(2);
    mnuRandom_Click(ctx);
    EXPECT_EQ(played(), QStringList({"B", "C"}));
    EXPECT_EQ(modes.last(), 1);

    QList<int> sizes;
    advance_SetRandomNumber([&](int maximum, int floor, bool unique, int size) {
        EXPECT_EQ(maximum, list().count());
        EXPECT_EQ(floor, 0);
        EXPECT_TRUE(unique);
        sizes << size;
        return 0; // the draw at the full hour
    });
    for (int rows : {6, 7, 9, 11}) {
        while (list().count() < rows)
            addRow(QStringLiteral("R%1").arg(list().count() + 1));
        mnuRandom_Click(ctx);
    }
    EXPECT_EQ(sizes, QList<int>({3, 4, 4, 6})) << "half the list, rounded half to even";
    EXPECT_EQ(played().last(), "A") << "a draw of 0 plays row 1";
    EXPECT_EQ(modes.last(), 0);
    EXPECT_EQ(ctx.RandomFilenames.size(), 1) << "the same pick is recorded once";
}

TEST_F(NextPrevious, RandomHistoryIsWalkedByPreviousAndNext) {
    addRows(8);
    setMode("mnuPlayingPickRandomSongs");
    QList<int> draws = {5, 2, 7};
    advance_SetRandomNumber([&](int, int, bool, int) { return draws.takeFirst(); });
    start(1);
    endSong();
    endSong();
    mnuRandom_Click(ctx);
    tick();
    EXPECT_EQ(played(), QStringList({"A", "E", "B", "G"}));
    EXPECT_EQ(ctx.RandomHistoryCount, 3);
    EXPECT_EQ(ctx.RandomHistoryPosition, 3);

    const auto step = [&](void (*f)(MainContext&)) {
        f(ctx);
        tick();
        return played().last();
    };
    EXPECT_EQ(step(mnuPrevious_Click), "B");
    EXPECT_EQ(step(mnuPrevious_Click), "E");
    EXPECT_EQ(modes.last(), 2) << "history steps are neither recorded nor counted";
    EXPECT_EQ(step(mnuPrevious_Click), "D") << "position 0 reads nothing: a plain step";
    EXPECT_EQ(ctx.RandomHistoryPosition, 0);
    EXPECT_EQ(step(mnuNextTrack_Click), "E");
    EXPECT_EQ(step(mnuNextTrack_Click), "B");
    EXPECT_EQ(step(mnuNextTrack_Click), "G");
    EXPECT_EQ(step(mnuNextTrack_Click), "H") << "the end of the history: a plain step";
    EXPECT_EQ(ctx.RandomHistoryCount, 3);

    // A picked file that left the list falls through, the position already moved.
    list().removeRow(1); // B
    start(7);            // H
    EXPECT_EQ(step(mnuPrevious_Click), "G") << "B is gone: the plain walk back from H";
    EXPECT_EQ(ctx.RandomHistoryPosition, 2);
    EXPECT_EQ(step(mnuPrevious_Click), "E");
}

TEST_F(NextPrevious, RandomHistoryKeepsEachFileOnceAndResets) {
    window_AddRandomFilename(ctx, "/m/a.mp3");
    window_AddRandomFilename(ctx, "/m/b.mp3");
    ctx.RandomHistoryPosition = 1;
    window_AddRandomFilename(ctx, "/M/A.MP3");
    EXPECT_EQ(ctx.RandomHistoryCount, 2);
    EXPECT_EQ(ctx.RandomHistoryPosition, 1) << "a second pick of a song leaves the position";
    window_AddRandomFilename(ctx, "/m/c.mp3");
    EXPECT_EQ(ctx.RandomFilenames, QStringList({"/m/a.mp3", "/m/b.mp3", "/m/c.mp3"}));
    EXPECT_EQ(ctx.RandomHistoryPosition, 3);
    ctx.window_ResetRandomFilenames();
    EXPECT_EQ(ctx.RandomHistoryCount, 0);
    EXPECT_EQ(ctx.RandomHistoryPosition, 0);
    EXPECT_TRUE(ctx.RandomFilenames.isEmpty());
}
