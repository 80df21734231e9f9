#include "cd/CdDrive.h"
#include "cd/CdImage.h"
#include "cd/CdInstall.h"
#include "cd/CdPlayer.h"
#include "cd/FrmCDPlayer.h"
#include "cd/modCDAudio.h"
#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/SliderModel.h"
#include "core/modControls.h"
#include "playback/MpvPlayer.h"
#include "support/TempHome.h"

#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <atomic>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace modCDAudio;

namespace {

constexpr double kTolerance = 0.25; // seconds: the engine starts and ends on its own blocks

// The CD routines over the real engine; its sound lands in a raw file (or pipe) of the test.
class CdPlaybackTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_oldAo = qgetenv("VELDOR_AO");
        m_oldFile = qgetenv("VELDOR_AO_FILE");
        cue =
            CdImage::write(home.path(), QStringLiteral("tones"), {{440, 3}, {880, 2}, {1320, 4.5}});
        ASSERT_FALSE(cue.isEmpty());
    }
    void TearDown() override {
        cd_SetSender({});
        drive.reset();
        engine.reset();
        qputenv("VELDOR_AO", m_oldAo);
        qputenv("VELDOR_AO_FILE", m_oldFile);
    }
    void useDrive(const char* ao, const QString& file) {
        qputenv("VELDOR_AO", ao);
        qputenv("VELDOR_AO_FILE", file.toUtf8());
        drive = std::make_unique<CdDrive>([this] {
            engine = std::make_unique<MpvPlayer>();
            return engine.get();
        });
        cd_SetSender([this](const QString& c, QString* r) { return drive->send(c, r); });
        ASSERT_TRUE(cd_Open(cue));
    }
    // Waits for the disc to play to its end.
    bool playedThrough(int ms = 15000) {
        for (QElapsedTimer t; !t.isValid() || t.elapsed() < ms;) {
            if (!t.isValid()) t.start();
            if (engine && engine->PlayState() == wmpPlayer::Stopped) return true;
            QTest::qWait(20);
        }
        return false;
    }
    QByteArray output() const { return TempHome::readFile(home.file("out.raw")); }
    static double seconds(const QByteArray& raw) {
        return double(raw.size()) / CdImage::kBytesPerSecond;
    }

    TempHome home;
    QString cue;
    std::unique_ptr<MpvPlayer> engine;
    std::unique_ptr<CdDrive> drive;
    QByteArray m_oldAo, m_oldFile;
};

// Reads a pipe at four times the speed of sound, as a slow sound card would take it.
class PacedReader {
public:
    explicit PacedReader(const QString& fifo) {
        m_fd = ::open(QFile::encodeName(fifo).constData(), O_RDWR | O_NONBLOCK);
        m_thread = std::thread([this] {
            char buf[17640]; // a tenth of a second
            while (!m_stop) {
                pollfd p{m_fd, POLLIN, 0};
                if (::poll(&p, 1, 20) <= 0) continue;
                const ssize_t n = ::read(m_fd, buf, sizeof buf);
                if (n > 0) {
                    std::lock_guard<std::mutex> l(m_lock);
                    m_data.append(buf, n);
                }
                std::this_thread::sleep_for(std::chrono::milliseconds(25));
            }
        });
    }
    ~PacedReader() {
        m_stop = true;
        m_thread.join();
        ::close(m_fd);
    }
    QByteArray data() {
        std::lock_guard<std::mutex> l(m_lock);
        return m_data;
    }

private:
    int m_fd;
    std::atomic_bool m_stop{false};
    std::mutex m_lock;
    QByteArray m_data;
    std::thread m_thread;
};

} // namespace

TEST_F(CdPlaybackTest, PlayStartsAtTheTrackOrPlaceSoughtAndRunsOnToTheEndOfTheDisc) {
    useDrive("pcm", home.file("out.raw"));
    ASSERT_TRUE(cd_SeekTrack(2));
    ASSERT_TRUE(cd_Play());
    ASSERT_TRUE(playedThrough());
    QByteArray raw = output();
    EXPECT_NEAR(seconds(raw), 6.5, kTolerance) << "tracks 2 and 3";
    EXPECT_EQ(CdImage::frequencyAt(raw, 0.3), 880);
    EXPECT_EQ(CdImage::frequencyAt(raw, 1.6), 880);
    EXPECT_EQ(CdImage::frequencyAt(raw, 2.5), 1320);
    EXPECT_FALSE(cd_IsPlaying());
    EXPECT_EQ(cd_CurrentTrack(), "1") << "a disc played out stands at its start";

    // Two seconds into the last track: only its last two and a half seconds sound.
    QFile::remove(home.file("out.raw"));
    ASSERT_TRUE(cd_SeekTrack(3));
    ASSERT_TRUE(cd_SeekPosition(QStringLiteral("00:02:00")));
    ASSERT_TRUE(cd_Play());
    ASSERT_TRUE(playedThrough());
    raw = output();
    EXPECT_NEAR(seconds(raw), 2.5, kTolerance);
    EXPECT_EQ(CdImage::frequencyAt(raw, 0.2), 1320);
}

TEST_F(CdPlaybackTest, PauseHoldsThePlaceAndPlayGoesOnFromIt) {
    const QString fifo = home.file("out.pipe");
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    PacedReader reader(fifo);
    useDrive("pcm", fifo);
    ASSERT_TRUE(cd_SeekTrack(1));
    ASSERT_TRUE(cd_Play());
    for (QElapsedTimer t; seconds(reader.data()) < 1.2;) {
        if (!t.isValid()) t.start();
        ASSERT_LT(t.elapsed(), 10000) << "no sound came";
        QTest::qWait(10);
    }
    ASSERT_TRUE(cd_Pause());
    EXPECT_FALSE(cd_IsPlaying());
    EXPECT_EQ(cd_Mode(), "stopped");
    const int heldAt = cd_PositionSeconds();
    const QString heldIn = cd_CurrentTrack();
    QTest::qWait(600); // what was on its way drains
    const qsizetype drained = reader.data().size();
    QTest::qWait(400);
    EXPECT_EQ(reader.data().size(), drained) << "nothing sounds while paused";
    EXPECT_EQ(cd_PositionSeconds(), heldAt);
    EXPECT_EQ(cd_CurrentTrack(), heldIn);

    ASSERT_TRUE(cd_Play());
    ASSERT_TRUE(playedThrough());
    QTest::qWait(300);
    const QByteArray raw = reader.data();
    // Played on from the place it held: the disc once, no part twice, none left out.
    EXPECT_NEAR(seconds(raw), 9.5, kTolerance);
    EXPECT_EQ(CdImage::frequencyAt(raw, 0.5), 440);
    EXPECT_EQ(CdImage::frequencyAt(raw, 2.6), 440);
    EXPECT_EQ(CdImage::frequencyAt(raw, 3.5), 880);
    EXPECT_EQ(CdImage::frequencyAt(raw, 7.0), 1320);
}

TEST_F(CdPlaybackTest, TheWindowFollowsTheDiscAndStopsOnTheLastTrack) {
    useDrive("null", QString());
    CdPlayer cd([this] { return QStringList{cue}; });
    cd.mnuNew_Click();
    ASSERT_EQ(cd.lstvPlaylist().count(), 3);

    listview_SelectItem(cd.lstvPlaylist(), 2);
    cd.mnuPlay_Click();
    EXPECT_EQ(cd.CDState, 0);
    EXPECT_EQ(cd.CurrentTrack, 2);
    EXPECT_TRUE(cd.lstvPlaylist().isBold(1, 0));
    EXPECT_FALSE(cd.lstvPlaylist().isBold(0, 0));
    EXPECT_TRUE(cd.tmrWindowUpdate()->isActive()) << "the tick follows a turning disc";
    EXPECT_EQ(cd.panelText(CdPlayer::StatusPanel), "Status:  Playing... Audio Track 2");

    // Pause, then Pause again: playing goes on from the held place.
    QTest::qWait(300);
    cd.mnuPause_Click();
    EXPECT_EQ(cd.CDState, 2);
    EXPECT_TRUE(cd.CDPaused);
    EXPECT_FALSE(cd_IsPlaying());
    cd.mnuPause_Click();
    EXPECT_EQ(cd.CDState, 0);
    EXPECT_TRUE(cd_IsPlaying());
    EXPECT_EQ(cd_CurrentTrack(), "2");

    // Seeking by the slider: within the selected track, and on playing.
    cd.sldPosition_MouseDown();
    EXPECT_FALSE(cd_IsPlaying());
    cd.sldPosition().setValue(1);
    cd.sldPosition_MouseUp();
    EXPECT_TRUE(cd_IsPlaying());
    EXPECT_EQ(cd_CurrentTrack(), "2");
    EXPECT_GE(cd_PositionSeconds(), 1);

    // Next reaches the last row: the tick stops it at once.
    cd.mnuNext_Click();
    EXPECT_EQ(cd.CDState, 1);
    EXPECT_EQ(cd.CurrentTrack, 0);
    EXPECT_FALSE(cd_IsPlaying());
    EXPECT_EQ(cd.panelText(CdPlayer::StatusPanel), "Status:  Stopped");
    EXPECT_FALSE(cd.tmrWindowUpdate()->isActive()) << "nothing ticks while nothing turns";
}

TEST_F(CdPlaybackTest, DiscAndPlaylistNeverSoundTogetherAndTheWindowGoesAtExit) {
    qputenv("VELDOR_AO", "null");
    qputenv("VELDOR_CD_DEVICE", cue.toUtf8());
    {
        MainContext ctx;
        int playlistStops = 0;
        ctx.player_Stop = [&] {
            ++playlistStops;
            ctx.TransportState = 1;
        };
        int earlierCloseAll = 0;
        ctx.window_CloseAll = [&] { ++earlierCloseAll; };
        CDPlayer_install(ctx);

        // Two opens in a row give one window.
        ASSERT_TRUE(ctx.commands().run(QStringLiteral("mnuOpenCDPlayer")));
        FrmCDPlayer* window = FrmCDPlayer::current();
        ASSERT_NE(window, nullptr);
        ctx.commands().run(QStringLiteral("mnuOpenCDPlayer"));
        EXPECT_EQ(FrmCDPlayer::current(), window);
        EXPECT_EQ(window->windowTitle(), "CD Player");
        CdPlayer& cd = window->rules();
        ASSERT_EQ(cd.lstvPlaylist().count(), 3);

        // The disc starts: the playlist's song stops.
        ctx.TransportState = 0;
        cd.mnuPlay_Click();
        EXPECT_EQ(playlistStops, 1);
        ASSERT_TRUE(cd_IsPlaying());
        // The playlist starts: the disc stops.
        ctx.call(ctx.player_Starting);
        EXPECT_FALSE(cd_IsPlaying());
        EXPECT_EQ(cd.CDState, 1);

        // The image is taken away while it plays: silence and empty values, no more.
        cd.mnuPlay_Click();
        ASSERT_TRUE(cd_IsPlaying());
        for (const QString& f : {cue, home.file("tones.bin")})
            QFile::remove(f);
        cd.tmrWindowUpdate_Timer();
        EXPECT_FALSE(cd_IsPlaying());
        EXPECT_EQ(cd_TotalLength(), "None");
        cd.mnuNew_Click();
        EXPECT_EQ(cd.panelText(CdPlayer::TracksPanel), "Tracks:  None");

        // Closing everything at exit closes the window too, after what was there before.
        ctx.call(ctx.window_CloseAll);
        EXPECT_EQ(earlierCloseAll, 1);
        QTest::qWait(50);
        EXPECT_EQ(FrmCDPlayer::current(), nullptr);
        EXPECT_FALSE(
            settings_Read(QStringLiteral("ColumnHeaders_CDPlayer"), QStringLiteral("Number"))
                .isEmpty());
    }
    qunsetenv("VELDOR_CD_DEVICE");
}

TEST_F(CdPlaybackTest, WithoutADiscTheStatusShowsWholeAtTheFirstSize) {
    qputenv("VELDOR_AO", "null");
    qputenv("VELDOR_CD_DEVICE", home.file("none.cue").toUtf8());
    {
        MainContext ctx;
        CDPlayer_install(ctx);
        ASSERT_TRUE(ctx.commands().run(QStringLiteral("mnuOpenCDPlayer")));
        FrmCDPlayer* window = FrmCDPlayer::current();
        ASSERT_NE(window, nullptr);
        window->rules().tmrWindowUpdate_Timer();
        QTest::qWait(50);
        // The longest texts a first opening shows: the track number must not be cut off.
        const auto* status = window->findChild<QLabel*>(QStringLiteral("sbStatusBar.Panel1"));
        ASSERT_NE(status, nullptr);
        EXPECT_EQ(status->text(), "Status:  Playing... Audio Track 0");
        EXPECT_EQ(window->rules().panelText(CdPlayer::TracksPanel), "Tracks:  None");
        EXPECT_GE(status->width(), status->sizeHint().width());
        ctx.call(ctx.window_CloseAll);
    }
    qunsetenv("VELDOR_CD_DEVICE");
}
