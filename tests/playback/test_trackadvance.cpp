#include "playback/AdvanceFixture.h"

// The end of a song through the scripted engine: play modes, the end of the list, Play Next.
class TrackAdvance : public AdvanceFixture {};

TEST_F(TrackAdvance, NormalModeStepsDownAndStopsAtTheEnd) {
    addRows(3);
    start(1);
    endSong();
    endSong();
    EXPECT_EQ(played(), QStringList({"A", "B", "C"}));
    EXPECT_EQ(ctx.PlayingRowIndex, 3);
    EXPECT_EQ(modes, QList<int>({1, 1, 1}));

    endSong(); // the default playlist mode: stop after the last row
    EXPECT_EQ(played(), QStringList({"A", "B", "C"}));
    EXPECT_EQ(engine.FileName(), "1");
    EXPECT_EQ(engine.PlayState(), wmpPlayer::Stopped);
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(list().isBold(i, 0)) << "the playing mark is cleared";
}

TEST_F(TrackAdvance, RepeatRepeatsUntilTheLastRowWhereThePlaylistModeDecides) {
    addRows(3);
    setMode("mnuPlayingRepeat");
    start(2);
    endSong();
    endSong();
    EXPECT_EQ(played(), QStringList({"B", "B", "B"}));

    start(3);
    endSong(); // last row, "Stop After Ending": not repeated
    EXPECT_EQ(played(), QStringList({"B", "B", "B", "C"}));

    setMode("mnuPlaylistRepeat");
    start(3);
    endSong();
    EXPECT_EQ(played().last(), "A");
}

TEST_F(TrackAdvance, RepeatOnceRepeatsOnceThenGoesThroughNormally) {
    addRows(3);
    setMode("mnuPlayingRepeatOnce");
    start(1);
    endSong();
    EXPECT_TRUE(c().isChecked("mnuPlayingGoThroughPlaylistNormally"));
    EXPECT_FALSE(c().isChecked("mnuPlayingRepeatOnce"));
    EXPECT_EQ(settings_Read("Playback", "PlayingRepeatOnce"), "0");
    endSong();
    EXPECT_EQ(played(), QStringList({"A", "A", "B"}));
}

TEST_F(TrackAdvance, OneRowListIsAtTheEndInEitherDirection) {
    addRows(1);
    setMode("mnuPlayingRepeat");
    start(1);
    endSong(); // Repeat does not count on the only row: the list stops
    EXPECT_EQ(played(), QStringList({"A"}));

    setMode("mnuPlaylistRepeat");
    start(1);
    endSong();
    c().run("mnuWorkBackwardsThroughPlaylist");
    endSong();
    EXPECT_EQ(played(), QStringList({"A", "A", "A", "A"}));
}

TEST_F(TrackAdvance, StopAfterEndingStopsEverySongAndStays) {
    addRows(3);
    bool videoOpen = false, lyricsOpen = false;
    int videoClosed = 0, lyricsClosed = 0;
    ctx.video_IsOpened = [&] { return videoOpen; };
    ctx.video_Close = [&] { ++videoClosed, videoOpen = false; };
    ctx.lyrics_IsOpened = [&] { return lyricsOpen; };
    ctx.lyrics_Close = [&] { ++lyricsClosed, lyricsOpen = false; };
    setMode("mnuPlayingStopAfterEnding");
    start(1);
    videoOpen = lyricsOpen = true;
    endSong();
    EXPECT_EQ(played(), QStringList({"A"}));
    EXPECT_EQ(engine.FileName(), "1");
    EXPECT_EQ(videoClosed, 1);
    EXPECT_EQ(lyricsClosed, 1);
    EXPECT_TRUE(c().isChecked("mnuPlayingStopAfterEnding"));

    endSong(); // closed windows are left alone
    EXPECT_EQ(videoClosed, 1);
    EXPECT_EQ(lyricsClosed, 1);
}

TEST_F(TrackAdvance, PlayNextBeatsTheEndOfTheListAndPlaysWhenStopped) {
    addRows(3);
    start(3);
    ctx.PlayNextRowIndex = 1;
    c().setCaption("mnuPlayNext", "Play Ne&xt (In Use)...\tX");
    endSong();
    EXPECT_EQ(played(), QStringList({"C", "A"}));
    EXPECT_EQ(ctx.PlayNextRowIndex, 0);
    EXPECT_EQ(c().caption("mnuPlayNext"), "Play Ne&xt...\tX");

    // Next (Advanced) is the advance itself.
    ctx.PlayNextRowIndex = 3;
    c().run("mnuNextTrackAdvanced");
    EXPECT_EQ(played().last(), "C");

    // Stopped, and Next would not start: Play Next still plays.
    setting("Settings", "PlayOnNextAndPrevious", "0");
    ctx.call(ctx.player_Stop);
    tick();
    ctx.PlayNextRowIndex = 2;
    player_NextTrack(ctx);
    EXPECT_EQ(played().last(), "B");
}

TEST_F(TrackAdvance, BackwardsStepsUpAndEndsAtRowOne) {
    addRows(3);
    c().run("mnuWorkBackwardsThroughPlaylist");
    start(3);
    endSong();
    endSong();
    endSong(); // row 1 is the end when working backwards
    EXPECT_EQ(played(), QStringList({"C", "B", "A"}));
    EXPECT_EQ(engine.FileName(), "1");

    setMode("mnuPlaylistRepeat"); // the first row backwards is the last one
    start(1);
    endSong();
    EXPECT_EQ(played().last(), "C");
}

TEST_F(TrackAdvance, PausedSongIsStoppedFirst) {
    addRows(3);
    start(1);
    engine.Pause();
    ctx.PlayerPaused = true;
    tick();
    player_NextTrack(ctx);
    EXPECT_FALSE(ctx.PlayerPaused);
    EXPECT_EQ(played(), QStringList({"A", "B"}));
}

// Shuffle by a column plays on through the rows below with the same value.
TEST_F(TrackAdvance, ShuffleByArtistAndYearPlayOnThroughEqualRowsBelow) {
    addRow("A", "x", "1990");
    addRow("B", "y", "1991");
    addRow("C", "X", "1991");
    addRow("D", "y", "1990");
    addRow("E", "x", "1992");
    setMode("mnuPlayingShuffleByArtist");
    start(1);
    endSong();
    endSong();
    EXPECT_EQ(played(), QStringList({"A", "C", "E"}));

    engine.clearLog();
    c().run("mnuWorkBackwardsThroughPlaylist"); // still only rows below
    start(2);
    endSong();
    EXPECT_EQ(played(), QStringList({"B", "D"}));
    endSong(); // no other "y" below: full stop, the mode stays
    EXPECT_EQ(played(), QStringList({"B", "D"}));
    EXPECT_EQ(engine.PlayState(), wmpPlayer::Stopped);
    EXPECT_TRUE(c().isChecked("mnuPlayingShuffleByArtist"));

    engine.clearLog();
    c().run("mnuWorkForwardThroughList");
    setMode("mnuPlayingShuffleByYear");
    start(1);
    endSong();
    EXPECT_EQ(played(), QStringList({"A", "D"}));
}

namespace {
struct AlbumReader : PlaylistTagReader {
    QHash<QString, QString> albums;
    QList<bool> asked;
    Texts readID3v1(const QString&) override { return {}; }
    Texts readID3v2(const QString&) override { return {}; }
    QString lengthText(const QString&) override { return {}; }
    QString readAlbum(const QString& filename, bool id3v2) override {
        asked << id3v2;
        return albums.value(QFileInfo(filename).completeBaseName());
    }
};
} // namespace

TEST_F(TrackAdvance, ShuffleByAlbumReadsTheTags) {
    addRows(4);
    auto reader = std::make_shared<AlbumReader>();
    reader->albums = {{"A", "One"}, {"B", "Two"}, {"C", "one"}, {"D", "One"}};
    playlist_SetTagReader(reader);
    c().setChecked("mnuTagsUseID3v2Tags", true);
    setMode("mnuPlayingShuffleByAlbum");
    start(1);
    endSong();
    EXPECT_EQ(played(), QStringList({"A", "C"}));
    EXPECT_TRUE(reader->asked.contains(true));
    EXPECT_FALSE(reader->asked.contains(false));
}

TEST_F(TrackAdvance, IntroductionStepsAsNormal) {
    addRows(2);
    setMode("mnuPlayingIntroduction");
    start(1);
    endSong();
    EXPECT_EQ(played(), QStringList({"A", "B"}));
}
