#include "integration/VeldorProcess.h"

#include <QProcess>
#include <QThread>
#include <gtest/gtest.h>

namespace {

void keys(const QString& window, const QString& sequence) {
    xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"), window});
    for (const QString& key : sequence.split(' ', Qt::SkipEmptyParts)) {
        xdotool({QStringLiteral("key"), QStringLiteral("--window"), window, key});
        QThread::msleep(150);
    }
}

// An MP3 frame header and an ID3v1 tag naming the artist.
QByteArray song(const QByteArray& artist) {
    QByteArray frame(417, '\0');
    frame[0] = char(0xFF);
    frame[1] = char(0xFB);
    frame[2] = char(0x90);
    frame[3] = char(0x64);
    QByteArray tag(128, '\0');
    tag.replace(0, 3, "TAG");
    tag.replace(3, 5, "Title");
    tag.replace(33, artist.size(), artist);
    tag.replace(93, 4, "1999");
    return frame + frame + tag;
}

QByteArray sppRow(const QString& path) {
    QByteArray out;
    for (const QString& v : {QString("1"), QString("x"), QString("y"), QString("2000"),
                             QString("Play"), QString("00:01"), path})
        out += '"' + v.toUtf8() + "\"\r\n";
    return out;
}

} // namespace

// Opened by its switch, a playlist chosen in the tree, an artist chosen, the songs exported.
TEST(MediaLibraryWindow, LoadsFromTheTreeAndExportsAnArtist) {
    VeldorProcess v;
    const QString a = v.file("music/a.mp3"), b = v.file("music/b.mp3"), c = v.file("music/c.mp3");
    VeldorProcess::write(a, song("Alpha"));
    VeldorProcess::write(b, song("Beta"));
    VeldorProcess::write(c, song("Alpha"));
    VeldorProcess::write(v.file("Playlists/Mix.spp"), sppRow(a) + sppRow(b) + sppRow(c));
    v.start({QStringLiteral("/ml")});
    ASSERT_NE(v.waitForWindow(), 0u);
    const QString library =
        xdotool({QStringLiteral("search"), QStringLiteral("--all"), QStringLiteral("--sync"),
                 QStringLiteral("--pid"), QString::number(v.pid()), QStringLiteral("--name"),
                 QStringLiteral("^Media Library$")})
            .split('\n')
            .value(0);
    ASSERT_FALSE(library.isEmpty());
    QThread::msleep(500);

    // The tree: Now Playing, Import, Export, Playlists, Mix.
    keys(library, QStringLiteral("Home Down Down Down Down Return"));
    QThread::msleep(1500);
    // The artists: the first one is Alpha.
    keys(library, QStringLiteral("Tab Down Up"));
    QThread::msleep(1000);
    // Back in the tree: Export To VELDOR...
    keys(library, QStringLiteral("shift+Tab Home Down Down Return"));
    QThread::msleep(1000);

    EXPECT_EQ(v.runCommand(QStringLiteral("mnuExit")), QStringLiteral("ok"));
    ASSERT_TRUE(v.waitForExit());
    // The paths, the last of the seven values of each row.
    const QList<QByteArray> values =
        VeldorProcess::read(v.file("Playlists/default.spp")).split('\n');
    QStringList paths;
    for (qsizetype i = 6; i < values.size(); i += 7)
        paths << QString::fromUtf8(values[i].trimmed()).remove('"');
    EXPECT_EQ(paths, (QStringList{a, c}));
    EXPECT_NE(VeldorProcess::settingsValue(v.file("settings.ini"), "Position_MediaLibrary",
                                           "Window_Width"),
              QStringLiteral("<absent>"));
}
