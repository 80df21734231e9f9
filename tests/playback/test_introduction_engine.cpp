// Introduction mode in real time: the engine with ao=null, the position timer at its 500 ms.
#include "core/Commands.h"
#include "core/DialogScript.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "playback/MpvPlayer.h"
#include "playback/Player.h"
#include "playback/PlayerTimers.h"
#include "playback/TrackAdvance.h"
#include "core/ListModel.h"
#include "core/modControls.h"
#include "support/MediaFiles.h"
#include "support/TempHome.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>
#include <memory>

namespace {

class IntroductionEngine : public ::testing::Test {
protected:
    void SetUp() override {
        m_oldAo = qgetenv("VELDOR_AO");
        qputenv("VELDOR_AO", "null");
        mpv = std::make_unique<MpvPlayer>();
        ASSERT_TRUE(mpv->isValid());
        Dialogs::setResponder(&dialogs);
        ctx.setPlayer(mpv.get());
        Player_install(ctx);
        TrackAdvance_install(ctx);
        ctx.tmrPosition_Timer = [this] { tmrPosition_Timer(ctx, [](const QString&) {}); };
        QObject::connect(&tmrPosition, &QTimer::timeout, [this] { ctx.tmrPosition_Timer(); });
        tmrPosition.start(500);
        for (const char* m :
             {"mnuPlayingIntroduction", "mnuPlaylistStopAfterEnding", "mnuWorkForwardThroughList"})
            ctx.commands().setChecked(QString::fromLatin1(m), true);
    }
    void TearDown() override {
        tmrPosition.stop();
        ctx.setPlayer(nullptr);
        mpv.reset();
        Dialogs::setResponder(nullptr);
        qputenv("VELDOR_AO", m_oldAo);
    }
    void addSongs(double seconds) {
        for (const char* name : {"a", "b"}) {
            const QString path = home.file(QString::fromLatin1(name) + QStringLiteral(".wav"));
            ASSERT_TRUE(MediaFiles::makeWav(path, seconds));
            ctx.lstvPlaylist().addRow({QString(), QString::fromLatin1(name), QString(), QString(),
                                       QStringLiteral("Play"), QString(), path});
        }
        listview_SelectItem(ctx.lstvPlaylist(), 1);
    }

    TempHome home;
    MainContext ctx;
    ScriptedResponder dialogs;
    std::unique_ptr<MpvPlayer> mpv;
    QTimer tmrPosition;
    QByteArray m_oldAo;
};

TEST_F(IntroductionEngine, EachSongIsCutAtTheRateAndTheListStopsAfterTheLast) {
    TempHome::writeFile(home.settingsFile(), "[Settings]\r\nIntroductionRate=1\r\n");
    addSongs(10.0);
    QElapsedTimer clock;
    clock.start();
    ctx.player_Play(1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return ctx.PlayingRowIndex == 2; }, 8000));
    // The cut came at about one second into the first song, long before its end.
    EXPECT_LT(clock.elapsed(), 6000);
    // The last song is cut too; the end of the list then stops.
    EXPECT_TRUE(QTest::qWaitFor([&] { return mpv->PlayState() == wmpPlayer::Stopped; }, 8000));
    EXPECT_LT(clock.elapsed(), 12000);
}

TEST_F(IntroductionEngine, ASongShorterThanTheRateEndsByItsEndOfStream) {
    TempHome::writeFile(home.settingsFile(), "[Settings]\r\nIntroductionRate=30\r\n");
    addSongs(1.0);
    ctx.player_Play(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ctx.PlayingRowIndex == 2; }, 5000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return mpv->PlayState() == wmpPlayer::Stopped; }, 5000));
}

} // namespace
