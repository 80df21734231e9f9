// Loudness measured on the real engine's output: raw s16 stereo written by ao=pcm.
#include "SoundFixture.h"

#include "playback/Player.h"
#include "support/MediaFiles.h"
#include "support/PcmEngine.h"

#include <QSignalSpy>
#include <cmath>
#include <memory>

namespace {

constexpr qsizetype kBytesPerSecond = PcmEngine::kBytesPerSecond;

struct Level {
    double left = 0, right = 0; // RMS of each channel
};

// RMS of each channel of the raw output between two byte offsets, leaving out 100 ms at both
// ends, where a change made right after the start may not have reached the samples yet.
Level levelOf(const QByteArray& raw, qsizetype from, qsizetype to) {
    const qsizetype margin = kBytesPerSecond / 10;
    from = (from + margin) & ~qsizetype(3);
    to = qMin(to, raw.size()) - margin;
    double l2 = 0, r2 = 0;
    qsizetype n = 0;
    for (qsizetype i = from; i + 3 < to; i += 4, ++n) {
        qint16 l, r;
        std::memcpy(&l, raw.constData() + i, 2);
        std::memcpy(&r, raw.constData() + i + 2, 2);
        l2 += double(l) * l;
        r2 += double(r) * r;
    }
    return n ? Level{std::sqrt(l2 / n), std::sqrt(r2 / n)} : Level{};
}

double dB(double level, double reference) {
    return 20 * std::log10(qMax(level, 1e-3) / reference);
}

class SoundEngine : public SoundFixture {
protected:
    void SetUp() override {
        engine = std::make_unique<PcmEngine>(home);
        ASSERT_TRUE(engine->player().isValid());
        SoundFixture::SetUp();
        ctx.setPlayer(&engine->player());
        tone = home.file(QStringLiteral("tone.wav"));
        ASSERT_TRUE(MediaFiles::makeWav(tone, 1.0, 440, 0.9));
    }
    void TearDown() override {
        SoundFixture::TearDown();
        ctx.setPlayer(nullptr);
        engine.reset();
    }
    QByteArray output() const { return engine->output(); }
    // A song start: load, the stored volume, play. Returns the
    // level of the song in the output once it has played to its end.
    Level playSong(const QString& file) {
        const qsizetype before = output().size();
        QSignalSpy ended(&ctx, &MainContext::endOfStream);
        ctx.player().setFileName(file);
        // Before Play: the pcm output runs far ahead of real time, so a change made after the
        // start could miss a one-second song altogether.
        ctx.volumes_ApplyStored(file.toLower());
        ctx.player().Play();
        EXPECT_TRUE(ended.wait(10000)) << file.toStdString();
        const QByteArray raw = output();
        EXPECT_GT(raw.size() - before, kBytesPerSecond / 2);
        return levelOf(raw, before, raw.size());
    }
    // The level of the tone at full volume, centred.
    double reference() {
        ctx.sldVolume().scroll(100);
        ctx.sldBalance().scroll(50);
        const Level full = playSong(tone);
        EXPECT_NEAR(full.left, 0.9 * 32767 / std::sqrt(2.0), 600);
        return full.left;
    }

    std::unique_ptr<PcmEngine> engine;
    QString tone;
};

TEST_F(SoundEngine, VolumeFollowsTheSliderInDecibels) {
    const double full = reference();
    ctx.sldVolume().scroll(50);
    EXPECT_NEAR(dB(playSong(tone).left, full), -30, 1.0);
    ctx.sldVolume().scroll(20);
    const Level low = playSong(tone);
    EXPECT_NEAR(dB(low.left, full), -48, 1.0);
    EXPECT_NEAR(dB(low.right, full), -48, 1.0);
}

// The bottom of the slider is 60 dB down, not silence, also on 16-bit output.
TEST_F(SoundEngine, VolumeZeroIsSixtyDecibelsDown) {
    const double full = reference();
    ctx.sldVolume().scroll(0);
    const Level quiet = playSong(tone);
    EXPECT_NEAR(dB(quiet.left, full), -60, 1.5);
    EXPECT_NEAR(dB(quiet.right, full), -60, 1.5);
}

TEST_F(SoundEngine, BalanceAtTheEndsLeavesOneChannelFiftyDecibelsDown) {
    const double full = reference();
    ctx.sldBalance().scroll(0);
    const Level left = playSong(tone);
    EXPECT_NEAR(dB(left.left, full), 0, 0.5);
    EXPECT_NEAR(dB(left.right, full), -50, 1.5);
    ctx.sldBalance().scroll(100);
    const Level right = playSong(tone);
    EXPECT_NEAR(dB(right.left, full), -50, 1.5);
    EXPECT_NEAR(dB(right.right, full), 0, 0.5);
}

TEST_F(SoundEngine, AStoredVolumeHoldsForItsSongAndTheSliderReturns) {
    const double full = reference();
    const QString stored = home.file(QStringLiteral("Stored.wav"));
    ASSERT_TRUE(MediaFiles::makeWav(stored, 1.0, 440, 0.9));
    volumes().setAlwaysAdjust(true);
    volumes().volumes_Add(QStringLiteral("a"), QStringLiteral("t"), 50, stored);

    ctx.sldVolume().scroll(100);
    EXPECT_NEAR(dB(playSong(stored).left, full), -30, 1.0);
    EXPECT_EQ(ctx.sldVolume().value(), 50);
    EXPECT_NEAR(dB(playSong(tone).left, full), 0, 0.5);
    EXPECT_EQ(ctx.sldVolume().value(), 100);
}

TEST_F(SoundEngine, MuteIsNearSilenceWhileTheSliderStays) {
    const double full = reference();
    ctx.sldVolume().scroll(80);
    ctx.commands().run(QStringLiteral("mnuMute"));
    const Level muted = playSong(tone);
    EXPECT_LT(dB(muted.left, full), -59);
    EXPECT_LT(dB(muted.right, full), -59);
    EXPECT_EQ(ctx.sldVolume().value(), 80);
    ctx.commands().run(QStringLiteral("mnuMute"));
    EXPECT_NEAR(dB(playSong(tone).left, full), -12, 1.0);
}

// A stored volume is in force from the song's first sample, though the song starts before the
// volume is applied; so are the balance and the mute.
TEST_F(SoundEngine, StoredVolumeBalanceAndMuteHoldFromTheFirstSample) {
    Player_install(ctx);
    const QString stored = home.file(QStringLiteral("Stored.wav"));
    ASSERT_TRUE(MediaFiles::makeWav(stored, 1.0, 440, 0.9));
    volumes().setAlwaysAdjust(true);
    volumes().volumes_Add(QStringLiteral("a"), QStringLiteral("t"), 0, stored);
    addRow(QStringLiteral("a"), QStringLiteral("t"), stored);
    addRow(QStringLiteral("b"), QStringLiteral("u"), tone);
    ctx.sldVolume().scroll(100);
    const auto firstPeaks = [this](int row) {
        const qsizetype before = output().size();
        QSignalSpy ended(&ctx, &MainContext::endOfStream);
        selectOnly(row);
        player_Play(ctx, 1);
        EXPECT_TRUE(ended.wait(10000));
        return MediaFiles::peaks(output().mid(before, kBytesPerSecond / 5));
    };
    EXPECT_LT(firstPeaks(1).first, 100); // 60 dB down: about 30
    EXPECT_EQ(ctx.sldVolume().value(), 0);
    EXPECT_GT(firstPeaks(2).first, 25000); // the slider's level comes back with the next song

    ctx.sldBalance().scroll(0);
    const auto balanced = firstPeaks(2);
    EXPECT_GT(balanced.first, 25000);
    EXPECT_LT(balanced.second, 200);
    ctx.commands().run(QStringLiteral("mnuMute"));
    EXPECT_LT(firstPeaks(2).first, 100);
}

} // namespace
