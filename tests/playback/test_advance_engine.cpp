// The advance driven by the real engine's end of stream, heard in its pcm output.
#include "core/Commands.h"
#include "core/DialogScript.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/modControls.h"
#include "playback/MpvPlayer.h"
#include "playback/Player.h"
#include "playback/PlayerTimers.h"
#include "playback/TrackAdvance.h"
#include "playlists/PlaylistEditing.h"
#include "playlists/PlaylistRows.h"
#include "support/MediaFiles.h"
#include "support/PcmEngine.h"
#include "support/TempHome.h"

#include <QTest>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>

namespace {

constexpr qsizetype kBytesPerSecond = PcmEngine::kBytesPerSecond;
constexpr qsizetype kWindow = kBytesPerSecond / 100;

// Each song is a tone of its own loudness and length, so the output tells which played.
struct Song {
    const char* name;
    double seconds;
    double amplitude;
};
const Song kSongs[] = {{"A", 0.3, 0.15}, {"B", 0.4, 0.35}, {"C", 0.5, 0.55}, {"D", 0.3, 0.75}};

class EngineAdvance : public ::testing::Test {
protected:
    void SetUp() override {
        engine = std::make_unique<PcmEngine>(home);
        mpv = &engine->player();
        ASSERT_TRUE(mpv->isValid());
        Dialogs::setResponder(&dialogs);
        ctx.setPlayer(mpv);
        Player_install(ctx); // also takes the end of a stream to the advance
        TrackAdvance_install(ctx);
        ctx.tmrPosition_Timer = [this] { tmrPosition_Timer(ctx, [](const QString&) {}); };
        for (const char* m : {"mnuPlayingGoThroughPlaylistNormally", "mnuPlaylistStopAfterEnding",
                              "mnuWorkForwardThroughList"})
            ctx.commands().setChecked(QString::fromLatin1(m), true);
    }
    void TearDown() override {
        ctx.setPlayer(nullptr);
        engine.reset();
        Dialogs::setResponder(nullptr);
    }

    ListModel& list() { return ctx.lstvPlaylist(); }
    void addSongs(std::initializer_list<const char*> artists,
                  std::initializer_list<const char*> statuses = {}) {
        int i = 0;
        for (const char* artist : artists) {
            const QString status = i < int(statuses.size())
                                       ? QString::fromLatin1(statuses.begin()[i])
                                       : QStringLiteral("Play");
            const Song& s = kSongs[i++];
            const QString path = home.file(QString::fromLatin1(s.name) + QStringLiteral(".wav"));
            ASSERT_TRUE(MediaFiles::makeWav(path, s.seconds, 440, s.amplitude));
            list().addRow({QString::number(i), QString::fromLatin1(artist),
                           QString::fromLatin1(s.name), QString(), status, QString(), path});
        }
    }
    void start(int row) {
        listview_SelectItem(list(), row);
        ctx.player_Play(1);
    }
    // Waits until the player has let the last file go, then a little longer, so that anything
    // the rules would wrongly start next would be heard.
    void runUntilStopped() {
        EXPECT_TRUE(QTest::qWaitFor([&] { return mpv->FileName() == QLatin1String("1"); }, 20000));
        QTest::qWait(300);
    }
    // The songs heard, in order: runs of windows at one loudness, each as long as a song.
    QStringList heard() const {
        const QByteArray raw = engine->output();
        QStringList out;
        int current = -1;
        qsizetype runBytes = 0;
        const auto flush = [&] {
            if (current < 0) return;
            const Song& s = kSongs[current];
            const int plays = int(std::lround(double(runBytes) / (s.seconds * kBytesPerSecond)));
            for (int i = 0; i < plays; ++i)
                out << QString::fromLatin1(s.name);
        };
        for (qsizetype at = 0; at + kWindow <= raw.size(); at += kWindow) {
            const int peak = MediaFiles::peaks(raw.mid(at, kWindow)).first;
            int song = -1;
            if (peak > 1000) {
                double best = 1e9;
                for (int i = 0; i < int(std::size(kSongs)); ++i) {
                    const double d = std::abs(peak - kSongs[i].amplitude * 32767);
                    if (d < best) best = d, song = i;
                }
            }
            if (song < 0) continue; // silence between songs
            if (song != current) {
                flush();
                current = song;
                runBytes = 0;
            }
            runBytes += kWindow;
        }
        flush();
        return out;
    }

    TempHome home;
    MainContext ctx;
    ScriptedResponder dialogs;
    std::unique_ptr<PcmEngine> engine;
    MpvPlayer* mpv = nullptr;
};

TEST_F(EngineAdvance, NormalModePlaysTheListOnceAndStops) {
    addSongs({"x", "y", "z"});
    start(1);
    runUntilStopped();
    EXPECT_EQ(heard(), QStringList({"A", "B", "C"}));
    EXPECT_EQ(mpv->PlayState(), wmpPlayer::Stopped);
}

TEST_F(EngineAdvance, RepeatOnceThenOnToTheEnd) {
    addSongs({"x", "y"});
    ctx.commands().run(QStringLiteral("mnuPlayingRepeatOnce"));
    start(1);
    runUntilStopped();
    EXPECT_EQ(heard(), QStringList({"A", "A", "B"}));
}

TEST_F(EngineAdvance, RepeatLeavesTheLastRowToThePlaylistMode) {
    addSongs({"x", "y"});
    ctx.commands().run(QStringLiteral("mnuPlayingRepeat"));
    start(2);
    runUntilStopped();
    EXPECT_EQ(heard(), QStringList({"B"}));
}

TEST_F(EngineAdvance, PlayNextBeatsTheEndOfTheList) {
    addSongs({"x", "y", "z"});
    start(3);
    ctx.PlayNextRowIndex = 2;
    runUntilStopped();
    EXPECT_EQ(heard(), QStringList({"C", "B", "C"}));
}

TEST_F(EngineAdvance, ShuffleByArtistStopsWhenNoSameArtistFollows) {
    addSongs({"x", "y", "x", "y"});
    ctx.commands().run(QStringLiteral("mnuPlayingShuffleByArtist"));
    start(1);
    runUntilStopped();
    EXPECT_EQ(heard(), QStringList({"A", "C"}));
}

TEST_F(EngineAdvance, SkipRowsAreLeftToThePlayerAndALastSkipEndsTheList) {
    addSongs({"x", "y", "z", "w"}, {"Play", "Skip Once", "Play", "Skip"});
    ctx.commands().run(QStringLiteral("mnuPlaylistRepeatOnce"));
    start(1);
    runUntilStopped();
    // B is skipped once, D always; the list runs once more and ends on D.
    EXPECT_EQ(heard(), QStringList({"A", "C", "A", "B", "C"}));
}

// Reached by the advance, a "Remove" row plays and goes at once, and the row after it still
// plays.
TEST_F(EngineAdvance, RemoveRowReachedByTheAdvanceGoesAsItStarts) {
    PlaylistEditing_install(ctx);
    addSongs({"x", "y", "z", "w"}, {"Play", "Remove", "Play", "Play"});
    start(1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return list().count() == 3; }, 10000));
    EXPECT_EQ(mpv->FileName(), home.file(QStringLiteral("B.wav")));
    runUntilStopped();
    EXPECT_EQ(heard(), QStringList({"A", "B", "C", "D"}));
    QStringList titles;
    for (int i = 0; i < list().count(); ++i)
        titles << list().text(i, PlaylistColumn::Title);
    EXPECT_EQ(titles, QStringList({"A", "C", "D"}));
}

} // namespace
