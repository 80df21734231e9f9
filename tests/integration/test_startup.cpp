#include "integration/VeldorProcess.h"

#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <gtest/gtest.h>

namespace {

QByteArray sppRow(const QString& number, const QString& path) {
    QByteArray out;
    for (const QString& v :
         {number, QStringLiteral("Artist of ") + path, QStringLiteral("Title"),
          QStringLiteral("1999"), QStringLiteral("Play"), QStringLiteral("03:41"), path})
        out += '"' + v.toUtf8() + "\"\r\n";
    return out;
}

QString settings(VeldorProcess& v, const char* section, const char* key) {
    return VeldorProcess::settingsValue(v.file(QStringLiteral("settings.ini")),
                                        QString::fromLatin1(section), QString::fromLatin1(key));
}

} // namespace

// What an orderly exit leaves behind, whichever way the exit came.
class ExitLeaves : public ::testing::TestWithParam<const char*> {};

TEST_P(ExitLeaves, SettingsPlaylistAndLog) {
    VeldorProcess v;
    VeldorProcess::write(v.file("settings.ini"), "[Settings]\r\nRememberTheConsoleLogs=1\r\n");
    VeldorProcess::write(v.file("Playlists/default.spp"),
                         sppRow("7", "/music/a b, é.mp3") + sppRow("9", "/music/c.mp3"));
    v.start();
    ASSERT_NE(v.waitForWindow(), 0u);
    const QString way = QString::fromLatin1(GetParam());
    if (way == "menu")
        v.exitThroughMenu();
    else if (way == "sigterm")
        v.terminate();
    else
        v.requestClose(); // without a tray, closing the window exits
    ASSERT_TRUE(v.waitForExit());
    EXPECT_EQ(v.exitCode(), 0);

    EXPECT_EQ(settings(v, "VELDOR", "Version"), "0.5");
    EXPECT_EQ(settings(v, "VELDOR", "Build"), "#1");
    EXPECT_EQ(settings(v, "VELDOR", "BetaInformation"), "Beta 5");
    EXPECT_EQ(settings(v, "Sound", "Volume"), "50");
    EXPECT_EQ(settings(v, "Sound", "Balance"), "50");
    EXPECT_EQ(settings(v, "ColumnHeaders_MainWindow", "Artist"), "3000");
    EXPECT_EQ(settings(v, "Playback", "LastPlayed"), "1");
    EXPECT_EQ(settings(v, "Playback", "PlaylistUsed"), "");
    EXPECT_NE(settings(v, "Position_MainWindow", "Window_Width"), "<absent>");
    EXPECT_NE(settings(v, "Lyrics", "Width"), "<absent>");
    EXPECT_NE(settings(v, "Lyrics", "Height"), "<absent>");
    // The rows of the run come back renumbered, paths intact.
    EXPECT_EQ(VeldorProcess::read(v.file("Playlists/default.spp")),
              sppRow("01", "/music/a b, é.mp3") + sppRow("02", "/music/c.mp3"));
    const QByteArray log = VeldorProcess::read(v.file("console.log"));
    EXPECT_TRUE(log.startsWith("VELDOR started at ")) << log.toStdString();
    EXPECT_TRUE(log.contains(QByteArray(97, '-') + "\r\n"));
    EXPECT_TRUE(QFileInfo(v.file("Logs")).isDir());
    EXPECT_TRUE(QFileInfo(v.file("Moods")).isDir());
    EXPECT_TRUE(QFileInfo(v.file("Updates")).isDir());
}

INSTANTIATE_TEST_SUITE_P(Ways, ExitLeaves, ::testing::Values("menu", "sigterm", "close"));

TEST(Startup, FirstRunWritesTheHeaderAndAnEmptyListLeavesNoDefault) {
    VeldorProcess v;
    VeldorProcess::write(v.file("Playlists/default.spp"), QByteArray());
    v.start();
    ASSERT_NE(v.waitForWindow(), 0u);
    v.terminate();
    ASSERT_TRUE(v.waitForExit());
    const QByteArray ini = VeldorProcess::read(v.file("settings.ini"));
    EXPECT_TRUE(ini.startsWith("; VELDOR Settings:\r\n\r\n")) << ini.toStdString();
    EXPECT_FALSE(QFile::exists(v.file("Playlists/default.spp")));
}

TEST(Startup, SecondCopyRaisesTheFirstAndChangesNothing) {
    VeldorProcess v;
    v.start();
    ASSERT_NE(v.waitForWindow(), 0u);
    const QByteArray before = VeldorProcess::read(v.file("settings.ini"));
    VeldorProcess::write(v.file("song.mp3"), "x");
    EXPECT_EQ(v.runSecondCopy({v.file("song.mp3")}), 0);
    EXPECT_EQ(VeldorProcess::read(v.file("settings.ini")), before);
    EXPECT_TRUE(v.running());
    v.terminate();
    ASSERT_TRUE(v.waitForExit());
    // The second start's file never reached the running copy.
    EXPECT_FALSE(QFile::exists(v.file("Playlists/default.spp")));
}

TEST(Startup, CommandLineFormsFillTheList) {
    VeldorProcess v;
    const QString odd = v.file("Mü sic, \"x\"/a b.mp3");
    VeldorProcess::write(odd, "x");
    VeldorProcess::write(v.file("two.wav"), "x");
    v.start({odd, v.file("two.wav")});
    ASSERT_NE(v.waitForWindow(), 0u);
    v.terminate();
    ASSERT_TRUE(v.waitForExit());
    const QByteArray spp = VeldorProcess::read(v.file("Playlists/default.spp"));
    EXPECT_TRUE(spp.contains(v.file("two.wav").toUtf8())) << spp.toStdString();
    EXPECT_TRUE(spp.contains("\"two\"")) << "a file without tags shows its title as artist";

    // A single playlist file opens as the list.
    VeldorProcess w;
    VeldorProcess::write(w.file("mine.spp"), sppRow("1", "/x/one.mp3") + sppRow("2", "/x/two.mp3"));
    w.start({w.file("mine.spp")});
    ASSERT_NE(w.waitForWindow(), 0u);
    w.terminate();
    ASSERT_TRUE(w.waitForExit());
    const QByteArray loaded = VeldorProcess::read(w.file("Playlists/default.spp"));
    EXPECT_TRUE(loaded.contains("/x/one.mp3") && loaded.contains("/x/two.mp3"));

    // Qt's own options and their values are not files to add.
    VeldorProcess q;
    VeldorProcess::write(q.file("three.wav"), "x");
    q.start({"-style", "fusion", q.file("three.wav")});
    ASSERT_NE(q.waitForWindow(), 0u);
    q.terminate();
    ASSERT_TRUE(q.waitForExit());
    const QByteArray styled = VeldorProcess::read(q.file("Playlists/default.spp"));
    EXPECT_TRUE(styled.contains(q.file("three.wav").toUtf8())) << styled.toStdString();
    EXPECT_FALSE(styled.contains("fusion") || styled.contains("-style")) << styled.toStdString();
}

TEST(Startup, SwitchNewEmptiesTheList) {
    VeldorProcess v;
    VeldorProcess::write(v.file("Playlists/default.spp"), sppRow("1", "/x/one.mp3"));
    v.start({"--new"});
    ASSERT_NE(v.waitForWindow(), 0u);
    v.terminate();
    ASSERT_TRUE(v.waitForExit());
    EXPECT_FALSE(QFile::exists(v.file("Playlists/default.spp")));
}

TEST(Startup, NoSoundDeviceTellsTheUserAndWritesNothing) {
    VeldorProcess v;
    v.setEnv("VELDOR_AO", "alsa:device=[nonexistent]");
    v.start();
    ASSERT_TRUE(v.waitForExit(30000));
    const QByteArray dialogs = VeldorProcess::read(v.dialogLog());
    EXPECT_TRUE(
        dialogs.startsWith("message\tSound Error\tIt has been detected you have no sound devices "
                           "currently installed.\\n\\nVELDOR will now close.\\n"))
        << dialogs.toStdString();
    EXPECT_FALSE(QFile::exists(v.file("settings.ini")));
}

TEST(Startup, DamagedFilesDoNotStopTheProgram) {
    VeldorProcess v;
    QByteArray garbage;
    for (int i = 0; i < 4096; ++i)
        garbage += char((i * 131 + 7) % 256);
    VeldorProcess::write(v.file("settings.ini"), garbage);
    VeldorProcess::write(v.file("Playlists/default.spp"), "\"1\"\r\n\"only half a row\r\n");
    v.start();
    ASSERT_NE(v.waitForWindow(), 0u);
    v.terminate();
    ASSERT_TRUE(v.waitForExit());
    EXPECT_EQ(v.exitCode(), 0);
    EXPECT_TRUE(VeldorProcess::read(v.dialogLog()).contains("Error Loading List"));
    // What was there stays; our keys are added.
    EXPECT_TRUE(VeldorProcess::read(v.file("settings.ini")).startsWith(garbage.left(100)));
    EXPECT_EQ(settings(v, "Sound", "Volume"), "50");
}

TEST(Startup, VersionAndHelpPrintAndLeave) {
    VeldorProcess v;
    v.start({"--version"});
    ASSERT_TRUE(v.waitForExit());
    EXPECT_TRUE(v.output().startsWith("VELDOR 0.5.1"));
    EXPECT_FALSE(QFile::exists(v.file("settings.ini")));
}

TEST(Startup, CommandsRunByNameAsAClickWould) {
    VeldorProcess v;
    v.start();
    ASSERT_NE(v.waitForWindow(), 0u);
    EXPECT_EQ(v.runCommand(QStringLiteral("mnuNoSuchEntry")), QStringLiteral("unknown"));
    EXPECT_EQ(v.runCommand(QStringLiteral("mnuStop")), QStringLiteral("disabled")); // nothing plays
    EXPECT_EQ(v.runCommand(QStringLiteral("mnuExit")), QStringLiteral("ok"));
    ASSERT_TRUE(v.waitForExit());
    EXPECT_EQ(v.exitCode(), 0);
}
