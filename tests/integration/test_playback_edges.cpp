// Awkward media and a restart, against the real program.
#include "integration/VeldorProcess.h"
#include "support/MediaFiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <functional>
#include <gtest/gtest.h>
#include <iostream>

namespace {

constexpr qint64 kBytesPerSecond = 44100 * 4;

// The play count tracking.ssb holds for `file` ("01", "02", ...), or "" when it has none.
QString playCount(const QString& trackingFile, const QString& file) {
    const QList<QByteArray> lines = VeldorProcess::read(trackingFile).split('\n');
    for (qsizetype i = 3; i < lines.size(); ++i)
        if (lines[i].trimmed() == '"' + file.toUtf8() + '"')
            return QString::fromUtf8(lines[i - 1].trimmed()).remove(QLatin1Char('"'));
    return {};
}

// "h:mm:ss" or "m:ss" in seconds; -1 when it is not a length.
int seconds(const QString& text) {
    int total = 0;
    const QStringList parts = text.split(QLatin1Char(':'));
    if (parts.size() < 2) return -1;
    for (const QString& p : parts) {
        bool ok = false;
        total = total * 60 + p.toInt(&ok);
        if (!ok) return -1;
    }
    return total;
}

class Edges : public ::testing::Test {
protected:
    void SetUp() override { prepare(v); }
    // No tray to hide in.
    void prepare(VeldorProcess& p) {
        VeldorProcess::write(p.file(QStringLiteral("settings.ini")),
                             "[Settings]\r\nUseSystemTraySupport=0\r\n");
        QDir().mkpath(p.file(QStringLiteral("media")));
    }
    void playThroughPcm(VeldorProcess& p) {
        p.setEnv(QStringLiteral("VELDOR_AO"), QStringLiteral("pcm"));
        p.setEnv(QStringLiteral("VELDOR_AO_FILE"), p.file(QStringLiteral("out.raw")));
    }
    // The list of an earlier run: one row per file, in "Play".
    static void savedPlaylist(VeldorProcess& p, const QStringList& files) {
        QByteArray bytes;
        for (const QString& f : files)
            for (const QString& cell :
                 {QString(), QString(), QString(), QString(), QStringLiteral("Play"), QString(), f})
                bytes += '"' + cell.toUtf8() + "\"\r\n";
        VeldorProcess::write(p.file(QStringLiteral("Playlists/default.spp")), bytes);
    }
    // Each start of a song by the user counts once in tracking.ssb: the surest outside sign
    // that the player took the song.
    static QString plays(VeldorProcess& p, const QString& file) {
        return playCount(p.file(QStringLiteral("tracking.ssb")), file);
    }
    QString media(const QString& name) { return v.file(QStringLiteral("media/") + name); }
    VeldorProcess v;
};

// A file listed in an earlier run and gone since: the next existing row plays instead; with no
// file left the user is told, and the program carries on.
TEST_F(Edges, AVanishedFileGivesWayToTheNextAndNoneLeftIsReported) {
    playThroughPcm(v);
    const QString gone = media(QStringLiteral("gone.wav"));
    ASSERT_TRUE(MediaFiles::makeWav(gone, 0.3));
    ASSERT_TRUE(MediaFiles::makeWav(media(QStringLiteral("here.wav")), 0.5));
    savedPlaylist(v, {gone, media(QStringLiteral("here.wav"))});
    QFile::remove(gone);
    v.start({QStringLiteral("/play")});
    ASSERT_NE(v.waitForWindow(), 0u);
    const qint64 size = settledSize(v.file(QStringLiteral("out.raw")), kBytesPerSecond * 4 / 10);
    EXPECT_NEAR(double(size), 0.5 * kBytesPerSecond, 0.1 * kBytesPerSecond);
    EXPECT_EQ(plays(v, media(QStringLiteral("here.wav"))), QStringLiteral("01"));
    EXPECT_EQ(plays(v, gone), QString());
    EXPECT_TRUE(VeldorProcess::read(v.dialogLog()).isEmpty()) << v.dialogLog().toStdString();
    v.exitThroughMenu();
    EXPECT_TRUE(v.waitForExit());

    VeldorProcess none;
    prepare(none);
    savedPlaylist(none, {gone});
    none.start({QStringLiteral("/play")});
    ASSERT_NE(none.waitForWindow(), 0u);
    EXPECT_TRUE(waitFor([&] {
        return VeldorProcess::read(none.dialogLog()).contains("Files In Playlist Do Not Exist");
    }));
    EXPECT_FALSE(QFileInfo::exists(none.file(QStringLiteral("tracking.ssb"))) &&
                 !plays(none, gone).isEmpty());
    EXPECT_TRUE(none.running());
    none.exitThroughMenu();
    EXPECT_TRUE(none.waitForExit());
}

// Ten hours of silence, made in a moment: one minute of constant-rate frames without a length
// header, repeated. It plays, its row shows the whole length, and the transport still answers.
TEST_F(Edges, ATenHourFilePlaysPausesStopsAndPlaysAgain) {
    const QString chunk = media(QStringLiteral("minute.mp3"));
    ASSERT_TRUE(MediaFiles::run(
        QStringLiteral("ffmpeg"),
        {QStringLiteral("-y"), QStringLiteral("-loglevel"), QStringLiteral("error"),
         QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
         QStringLiteral("anullsrc=r=16000:cl=mono"), QStringLiteral("-t"), QStringLiteral("60"),
         QStringLiteral("-c:a"), QStringLiteral("libmp3lame"), QStringLiteral("-b:a"),
         QStringLiteral("8k"), QStringLiteral("-write_xing"), QStringLiteral("0"),
         QStringLiteral("-id3v2_version"), QStringLiteral("0"), chunk}));
    const QByteArray minute = VeldorProcess::read(chunk);
    ASSERT_GT(minute.size(), 50000);
    const QString long_ = media(QStringLiteral("long.mp3"));
    {
        QFile f(long_);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        for (int i = 0; i < 600; ++i)
            f.write(minute);
    }
    v.start({long_});
    ASSERT_NE(v.waitForWindow(), 0u);
    ASSERT_TRUE(waitFor([&] { return plays(v, long_) == QLatin1String("01"); }));
    // Pause, then Play resumes: the same start, not counted again.
    const auto menu = [&](const char* keys) {
        v.runMenu(QStringLiteral("p"), QString::fromLatin1(keys));
        QThread::msleep(600);
    };
    menu("a");
    menu("p");
    QThread::msleep(1000);
    EXPECT_EQ(plays(v, long_), QStringLiteral("01"));
    // Paused, then stopped: Play starts the song anew.
    menu("a");
    menu("s");
    menu("p");
    EXPECT_TRUE(waitFor([&] { return plays(v, long_) == QLatin1String("02"); }, 8000));
    EXPECT_TRUE(VeldorProcess::read(v.dialogLog()).isEmpty());
    QElapsedTimer clock;
    clock.start();
    v.exitThroughMenu();
    EXPECT_TRUE(v.waitForExit(10000));
    std::cout << "[ measured ] exit while playing the long file: " << clock.elapsed() << " ms\n";

    // The saved row's length: the whole ten hours, not the first minute.
    const QList<QByteArray> cells =
        VeldorProcess::read(v.file(QStringLiteral("Playlists/default.spp"))).split('\n');
    ASSERT_GE(cells.size(), 7);
    const QString length = QString::fromUtf8(cells[5].trimmed()).remove(QLatin1Char('"'));
    std::cout << "[ measured ] the ten-hour row's length: " << length.toStdString() << "\n";
    EXPECT_NEAR(seconds(length), 36000, 300) << length.toStdString();
}

// Counts live in tracking.ssb across runs: a song played in one run counts on in the next.
TEST_F(Edges, PlayCountsSurviveARestart) {
    playThroughPcm(v);
    const QString song = media(QStringLiteral("song.wav"));
    ASSERT_TRUE(MediaFiles::makeWav(song, 0.3));
    const QString tracking = v.file(QStringLiteral("tracking.ssb"));
    v.start({song});
    ASSERT_NE(v.waitForWindow(), 0u);
    settledSize(v.file(QStringLiteral("out.raw")), kBytesPerSecond / 4);
    v.exitThroughMenu();
    ASSERT_TRUE(v.waitForExit());
    EXPECT_EQ(playCount(tracking, song), QStringLiteral("01"));

    // The list of the first run comes back; /play starts its first row.
    QFile::remove(v.file(QStringLiteral("out.raw")));
    v.start({QStringLiteral("/play")});
    ASSERT_NE(v.waitForWindow(), 0u);
    settledSize(v.file(QStringLiteral("out.raw")), kBytesPerSecond / 4);
    EXPECT_EQ(playCount(tracking, song), QStringLiteral("02"));
    v.exitThroughMenu();
    EXPECT_TRUE(v.waitForExit());
    EXPECT_EQ(playCount(tracking, song), QStringLiteral("02"));
}

} // namespace
