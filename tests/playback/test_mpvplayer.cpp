#include "playback/MpvPlayer.h"
#include "support/MediaFiles.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

namespace {

constexpr qsizetype kBytesPerSecond = 44100 * 4; // s16 stereo

// An engine on the given audio output; the environment is put back afterwards.
class MpvPlayerTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_dir.isValid());
        m_oldAo = qgetenv("VELDOR_AO");
        m_oldFile = qgetenv("VELDOR_AO_FILE");
    }
    void TearDown() override {
        m_player.reset();
        qputenv("VELDOR_AO", m_oldAo);
        qputenv("VELDOR_AO_FILE", m_oldFile);
    }
    MpvPlayer& engine(const char* ao) {
        qputenv("VELDOR_AO", ao);
        qputenv("VELDOR_AO_FILE", pcm().toUtf8());
        m_player = std::make_unique<MpvPlayer>();
        EXPECT_TRUE(m_player->isValid());
        return *m_player;
    }
    QString path(const QString& name) const { return m_dir.filePath(name); }
    QString pcm() const { return path(QStringLiteral("out.raw")); }
    QByteArray output() const {
        QFile f(pcm());
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    QString wav(const QString& name, double seconds, double amplitude = 0.5) {
        const QString p = path(name);
        EXPECT_TRUE(MediaFiles::makeWav(p, seconds, 440, amplitude));
        return p;
    }
    // Plays `file` to its end; false if no end of stream came.
    static bool playThrough(MpvPlayer& p, const QString& file) {
        QSignalSpy ended(&p, &wmpPlayer::EndOfStream);
        p.setFileName(file);
        p.Play();
        return ended.wait(10000) && ended.count() == 1;
    }

    QTemporaryDir m_dir;
    QByteArray m_oldAo, m_oldFile;
    std::unique_ptr<MpvPlayer> m_player;
};

TEST_F(MpvPlayerTest, SongsAppendToThePcmOutputOneEndEach) {
    MpvPlayer& p = engine("pcm");
    const QString a = wav(QStringLiteral("a.wav"), 0.5, 0.2);
    const QString b = wav(QStringLiteral("b.wav"), 1.0, 0.8);
    EXPECT_EQ(p.PlayState(), wmpPlayer::Stopped);
    ASSERT_TRUE(playThrough(p, a));
    EXPECT_EQ(p.PlayState(), wmpPlayer::Stopped);
    const qsizetype afterA = output().size();
    ASSERT_TRUE(playThrough(p, b));
    const QByteArray raw = output();
    EXPECT_NEAR(double(afterA), 0.5 * kBytesPerSecond, 0.05 * kBytesPerSecond);
    EXPECT_NEAR(double(raw.size()), 1.5 * kBytesPerSecond, 0.08 * kBytesPerSecond);
    // A then B: the quiet song first, the loud one behind it.
    EXPECT_LT(MediaFiles::peaks(raw.left(afterA)).first, 8000);
    EXPECT_GT(MediaFiles::peaks(raw, afterA).first, 20000);

    // Play again after the end starts the last file from the top.
    QSignalSpy ended(&p, &wmpPlayer::EndOfStream);
    p.Play();
    ASSERT_TRUE(ended.wait(10000));
    EXPECT_NEAR(double(output().size()), 2.5 * kBytesPerSecond, 0.1 * kBytesPerSecond);
}

TEST_F(MpvPlayerTest, StopAndLoadingAnotherFileRaiseNoEnd) {
    MpvPlayer& p = engine("null");
    const QString a = wav(QStringLiteral("a.wav"), 1.5);
    const QString b = wav(QStringLiteral("b.wav"), 0.6);
    QSignalSpy ended(&p, &wmpPlayer::EndOfStream);

    p.setFileName(a);
    p.Play();
    EXPECT_EQ(p.PlayState(), wmpPlayer::Playing);
    QTest::qWait(200);
    p.Stop();
    EXPECT_EQ(p.PlayState(), wmpPlayer::Stopped);
    EXPECT_EQ(p.CurrentPosition(), 0.0);

    // Replacing a song near its end: only the new one ends.
    p.setFileName(a);
    p.Play();
    QTest::qWait(1000);
    p.setFileName(b);
    p.Play();
    QTest::qWait(1200);
    EXPECT_EQ(ended.count(), 1);

    // Releasing by a name that is no file stops without an end.
    p.setFileName(a);
    p.Play();
    QTest::qWait(100);
    p.setFileName(QStringLiteral("1"));
    EXPECT_EQ(p.PlayState(), wmpPlayer::Stopped);
    QTest::qWait(1700);
    EXPECT_EQ(ended.count(), 1);
}

TEST_F(MpvPlayerTest, PauseHoldsThePositionAndSeeksMoveIt) {
    MpvPlayer& p = engine("null");
    const QString a = wav(QStringLiteral("a.wav"), 4.0);
    p.setFileName(a);
    EXPECT_NEAR(p.Duration(), 4.0, 0.05);
    p.Play();
    QTest::qWait(400);
    p.Pause();
    EXPECT_EQ(p.PlayState(), wmpPlayer::Paused);
    QTest::qWait(100);
    const double held = p.CurrentPosition();
    EXPECT_GT(held, 0.1);
    QTest::qWait(500);
    EXPECT_DOUBLE_EQ(p.CurrentPosition(), held);
    p.Pause(); // pausing a paused player changes nothing
    EXPECT_EQ(p.PlayState(), wmpPlayer::Paused);

    p.setCurrentPosition(2.5);
    QTest::qWait(200);
    EXPECT_NEAR(p.CurrentPosition(), 2.5, 0.1);
    p.Play();
    EXPECT_EQ(p.PlayState(), wmpPlayer::Playing);
    QTest::qWait(300);
    EXPECT_GT(p.CurrentPosition(), 2.55);

    // The resume of the transport: same name, play, position.
    p.Pause();
    p.setFileName(a);
    p.Play();
    p.setCurrentPosition(1);
    QTest::qWait(200);
    EXPECT_NEAR(p.CurrentPosition(), 1.1, 0.2);
}

TEST_F(MpvPlayerTest, FilesThatCannotPlayLeaveTheEngineStoppedAndUsable) {
    MpvPlayer& p = engine("pcm");
    QSignalSpy ended(&p, &wmpPlayer::EndOfStream);
    const QString text = path(QStringLiteral("notes.mp3"));
    const QString empty = path(QStringLiteral("empty.mp3"));
    {
        QFile f(text);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(QByteArray(4000, 'x'));
        QFile e(empty);
        ASSERT_TRUE(e.open(QIODevice::WriteOnly));
    }
    for (const QString& bad : {text, empty, path(QStringLiteral("gone.wav"))}) {
        p.setFileName(bad);
        p.Play();
        EXPECT_NE(p.PlayState(), wmpPlayer::Playing) << bad.toStdString();
        EXPECT_EQ(p.Duration(), 0.0);
    }
    QTest::qWait(300);
    EXPECT_EQ(ended.count(), 0);
    EXPECT_TRUE(playThrough(p, wav(QStringLiteral("ok.wav"), 0.3)));
}

TEST_F(MpvPlayerTest, VolumeAndBalanceAttenuateInHundredthsOfADecibel) {
    EXPECT_EQ(MpvPlayer::balanceGains(0), std::make_pair(1.0, 1.0));
    EXPECT_NEAR(MpvPlayer::balanceGains(-2000).second, 0.1, 1e-9);
    EXPECT_NEAR(MpvPlayer::balanceGains(4000).first, 0.01, 1e-9);

    MpvPlayer& p = engine("pcm");
    const QString a = wav(QStringLiteral("a.wav"), 0.4, 0.5);
    p.setVolume(-2000); // 20 dB down: a tenth of the amplitude
    ASSERT_TRUE(playThrough(p, a));
    auto [left, right] = MediaFiles::peaks(output());
    EXPECT_NEAR(left, 1638, 250);
    EXPECT_NEAR(right, 1638, 250);

    p.setVolume(0);
    p.setBalance(-2000); // right channel 20 dB down
    const qsizetype before = output().size();
    ASSERT_TRUE(playThrough(p, a));
    std::tie(left, right) = MediaFiles::peaks(output(), before);
    EXPECT_NEAR(left, 16384, 800);
    EXPECT_NEAR(right, 1638, 250);
    EXPECT_EQ(p.Volume(), 0);
    EXPECT_EQ(p.Balance(), -2000);

    // A mono song still plays through the balance.
    const QString mono = path(QStringLiteral("mono.wav"));
    ASSERT_TRUE(MediaFiles::run(QStringLiteral("sox"),
                                {a, mono, QStringLiteral("remix"), QStringLiteral("1")}));
    const qsizetype beforeMono = output().size();
    ASSERT_TRUE(playThrough(p, mono));
    EXPECT_GT(output().size() - beforeMono, kBytesPerSecond / 4);
}

} // namespace

// A display without GL gets the plain X11 output straight away; the environment's choice wins.
TEST(MpvPlayerOutputs, NoGlOnTheDisplayMeansPlainX11) {
    EXPECT_EQ(MpvPlayer::videoOutputs({}, true, true), QByteArray("gpu,x11"));
    EXPECT_EQ(MpvPlayer::videoOutputs({}, true, false), QByteArray("x11"));
    EXPECT_EQ(MpvPlayer::videoOutputs({}, false, true), QByteArray("null"));
    EXPECT_EQ(MpvPlayer::videoOutputs("gpu", true, false), QByteArray("gpu"));
}
