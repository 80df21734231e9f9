#include "integration/VeldorProcess.h"
#include "support/MediaFiles.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QThread>
#include <gtest/gtest.h>

namespace {

constexpr qint64 kBytesPerSecond = 44100 * 4;

// Two songs on the command line: the first plays, its end starts the second, and at the end of
// the list the default playlist mode stops.
TEST(Advance, SongsOnTheCommandLinePlayInTurnAndStopAtTheEnd) {
    VeldorProcess v;
    const QString pcm = v.file(QStringLiteral("out.raw"));
    v.setEnv(QStringLiteral("VELDOR_AO"), QStringLiteral("pcm"));
    v.setEnv(QStringLiteral("VELDOR_AO_FILE"), pcm);
    VeldorProcess::write(v.file(QStringLiteral("settings.ini")),
                         "[Settings]\r\nUseSystemTraySupport=0\r\n");
    const QString quiet = v.file(QStringLiteral("quiet.wav"));
    const QString loud = v.file(QStringLiteral("loud.wav"));
    ASSERT_TRUE(MediaFiles::makeWav(quiet, 0.5, 440, 0.2));
    ASSERT_TRUE(MediaFiles::makeWav(loud, 0.7, 440, 0.8));
    v.start({quiet, loud});
    ASSERT_NE(v.waitForWindow(), 0u);
    const qint64 size = settledSize(pcm, kBytesPerSecond, 800);
    EXPECT_NEAR(double(size), 1.2 * kBytesPerSecond, 0.1 * kBytesPerSecond);
    const QByteArray raw = VeldorProcess::read(pcm);
    const qint64 split = qint64(0.5 * kBytesPerSecond) & ~qint64(3);
    // The stored volume scales both alike: the loud one is four times the quiet one.
    const int first = MediaFiles::peaks(raw.left(split - 4000)).first;
    const int second = MediaFiles::peaks(raw, split + 4000).first;
    EXPECT_GT(first, 0);
    EXPECT_NEAR(double(second) / qMax(first, 1), 4.0, 0.5);
    EXPECT_TRUE(v.running());
    v.exitThroughMenu();
    EXPECT_TRUE(v.waitForExit());
}

} // namespace
