#include "integration/VeldorProcess.h"
#include "support/MediaFiles.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QMap>
#include <QProcess>
#include <QThread>
#include <gtest/gtest.h>

namespace {

constexpr qint64 kBytesPerSecond = 44100 * 4;

// A program playing into a raw pcm file.
class Playback : public ::testing::Test {
protected:
    void SetUp() override {
        v.setEnv(QStringLiteral("VELDOR_AO"), QStringLiteral("pcm"));
        v.setEnv(QStringLiteral("VELDOR_AO_FILE"), pcm());
        VeldorProcess::write(v.file(QStringLiteral("settings.ini")),
                             "[Settings]\r\nUseSystemTraySupport=0\r\n");
    }
    QString pcm() { return v.file(QStringLiteral("out.raw")); }
    QString media(const QString& name) { return v.file(QStringLiteral("media/") + name); }
    VeldorProcess v;
};

TEST_F(Playback, AFileFromTheCommandLinePlaysOnceToThePcmOutput) {
    QDir().mkpath(v.file(QStringLiteral("media")));
    ASSERT_TRUE(MediaFiles::makeMp3(media(QStringLiteral("a.mp3")), 1.0));
    v.start({media(QStringLiteral("a.mp3"))});
    ASSERT_NE(v.waitForWindow(), 0u);
    const qint64 size = settledSize(pcm(), kBytesPerSecond * 9 / 10);
    // One second of the song (the decoder adds its padding), and nothing after it.
    EXPECT_NEAR(double(size), double(kBytesPerSecond), 0.1 * kBytesPerSecond);
    QThread::msleep(800);
    EXPECT_EQ(QFileInfo(pcm()).size(), size);
    EXPECT_TRUE(v.running());
    v.exitThroughMenu();
    EXPECT_TRUE(v.waitForExit());
}

// Files the engine cannot play: the message of the failure path, never a crash or a hang.
TEST_F(Playback, BadFilesGiveTheErrorMessageAndTheProgramStaysUsable) {
    QDir().mkpath(v.file(QStringLiteral("media")));
    VeldorProcess::write(media(QStringLiteral("text.mp3")), QByteArray(5000, 'x'));
    VeldorProcess::write(media(QStringLiteral("empty.mp3")), QByteArray());
    ASSERT_TRUE(MediaFiles::makeMp3(media(QStringLiteral("whole.mp3")), 2.0));
    const QByteArray whole = VeldorProcess::read(media(QStringLiteral("whole.mp3")));
    VeldorProcess::write(media(QStringLiteral("cut.mp3")), whole.left(whole.size() / 3));
    for (const char* name : {"text.mp3", "empty.mp3"}) {
        VeldorProcess one;
        one.setEnv(QStringLiteral("VELDOR_AO"), QStringLiteral("null"));
        one.start({media(QString::fromLatin1(name))});
        ASSERT_NE(one.waitForWindow(), 0u) << name;
        EXPECT_TRUE(waitFor(
            [&] {
                return VeldorProcess::read(one.dialogLog()).contains("Error Playing Media File");
            },
            15000))
            << name;
        EXPECT_TRUE(one.running()) << name;
        one.exitThroughMenu();
        EXPECT_TRUE(one.waitForExit()) << name;
    }
    // A truncated MP3 plays what it holds.
    v.start({media(QStringLiteral("cut.mp3"))});
    ASSERT_NE(v.waitForWindow(), 0u);
    const qint64 size = settledSize(pcm(), kBytesPerSecond / 2);
    EXPECT_NEAR(double(size), 2.0 / 3 * kBytesPerSecond, 0.15 * kBytesPerSecond);
    EXPECT_FALSE(VeldorProcess::read(v.dialogLog()).contains("Error"));
    v.exitThroughMenu();
    EXPECT_TRUE(v.waitForExit());
}

TEST_F(Playback, AVideoFileOpensTheVideoWindowWithItsPicture) {
    QDir().mkpath(v.file(QStringLiteral("media")));
    const QString clip = media(QStringLiteral("clip.avi"));
    ASSERT_TRUE(MediaFiles::makeVideo(clip, 8.0, false)); // no sound track at all
    v.setEnv(QStringLiteral("VELDOR_AO"), QStringLiteral("null"));
    v.setEnv(QStringLiteral("VELDOR_VO"), QStringLiteral("gpu,x11"));
    v.start({clip});
    ASSERT_NE(v.waitForWindow(), 0u);
    QThread::msleep(2500);
    const QString shot = v.file(QStringLiteral("shot.png"));
    ASSERT_TRUE(MediaFiles::run(QStringLiteral("import"),
                                {QStringLiteral("-window"), QStringLiteral("root"), shot}));
    const QImage image(shot);
    ASSERT_FALSE(image.isNull());
    // The test picture's colour bars: many strongly coloured pixels, which the main window has
    // none of.
    qint64 vivid = 0;
    for (int y = 0; y < image.height(); y += 2)
        for (int x = 0; x < image.width(); x += 2) {
            const QColor c = image.pixelColor(x, y);
            if (c.hsvSaturation() > 200 && c.value() > 150) ++vivid;
        }
    EXPECT_GT(vivid, 2000) << shot.toStdString();
    // Its first place keeps its whole width, wider than the stored size, on the screen.
    QProcess xdotool;
    xdotool.start(QStringLiteral("sh"),
                  {QStringLiteral("-c"),
                   QStringLiteral("xdotool getwindowgeometry --shell $(xdotool search --all "
                                  "--onlyvisible --pid %1 --name '^VELDOR Video$' | head -1)")
                       .arg(v.pid())});
    xdotool.waitForFinished(10000);
    QMap<QString, int> geometry;
    for (const QByteArray& line : xdotool.readAllStandardOutput().split('\n'))
        if (const int eq = line.indexOf('='); eq > 0)
            geometry.insert(QString::fromUtf8(line.left(eq)), line.mid(eq + 1).toInt());
    ASSERT_TRUE(geometry.contains(QStringLiteral("WIDTH")));
    EXPECT_GE(geometry.value(QStringLiteral("X")), 0);
    EXPECT_LE(geometry.value(QStringLiteral("X")) + geometry.value(QStringLiteral("WIDTH")), 1280);
    EXPECT_LE(geometry.value(QStringLiteral("Y")) + geometry.value(QStringLiteral("HEIGHT")), 1024);
    EXPECT_FALSE(VeldorProcess::read(v.dialogLog()).contains("Error"));
    v.exitThroughMenu();
    EXPECT_TRUE(v.waitForExit());
}

} // namespace
