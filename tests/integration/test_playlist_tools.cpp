#include "integration/VeldorProcess.h"
#include "support/MediaFiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>
#include <gtest/gtest.h>

// The playlist tool windows of the real program, driven by their keys as a user would.
namespace {

QByteArray row(const QStringList& cells) {
    QByteArray out;
    for (const QString& v : cells)
        out += '"' + v.toUtf8() + "\"\r\n";
    return out;
}

QString xdotool(const QStringList& args) {
    QProcess p;
    p.start(QStringLiteral("xdotool"), args);
    p.waitForFinished(15000);
    return QString::fromUtf8(p.readAllStandardOutput()).trimmed();
}

bool waitFor(const std::function<bool()>& done, int timeoutMs = 20000) {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < timeoutMs) {
        if (done()) return true;
        QThread::msleep(100);
    }
    return done();
}

class PlaylistTools : public ::testing::Test {
protected:
    void SetUp() override {
        // The Trash and the desktop's recent list stay inside the test's folder.
        v.setEnv(QStringLiteral("XDG_DATA_HOME"), v.file(QStringLiteral("xdg")));
        VeldorProcess::write(v.file(QStringLiteral("settings.ini")),
                             "[Settings]\r\nUseSystemTraySupport=0\r\n");
    }
    void start() {
        v.start();
        ASSERT_NE(v.waitForWindow(), 0u);
    }
    // The visible window of that title, focused; empty when it never showed.
    QString window(const QString& title) {
        QString id;
        waitFor([&] {
            id = xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                          QStringLiteral("--pid"), QString::number(v.pid()),
                          QStringLiteral("--name"), QLatin1Char('^') + title + QLatin1Char('$')})
                     .section(QLatin1Char('\n'), 0, 0);
            return !id.isEmpty();
        });
        if (!id.isEmpty()) {
            xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"), id});
            QThread::msleep(300);
        }
        return id;
    }
    bool gone(const QString& title) {
        return waitFor([&] {
            return xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                            QStringLiteral("--pid"), QString::number(v.pid()),
                            QStringLiteral("--name"), QLatin1Char('^') + title + QLatin1Char('$')})
                .isEmpty();
        });
    }
    void type(const QString& text) {
        xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("30"), text});
    }
    void keys(const QString& names) {
        xdotool(
            QStringList{QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("80")} +
            names.split(QLatin1Char(' ')));
        QThread::msleep(300);
    }
    QString playlist(const QString& name) {
        return v.file(QStringLiteral("Playlists/") + name + QStringLiteral(".spp"));
    }
    QByteArray dialogs() { return VeldorProcess::read(v.dialogLog()); }
    QString setting(const char* section, const char* key) {
        return VeldorProcess::settingsValue(v.file(QStringLiteral("settings.ini")),
                                            QString::fromLatin1(section), QString::fromLatin1(key));
    }

    VeldorProcess v;
};

} // namespace

TEST_F(PlaylistTools, JumpToMediaFindsByTypingAndSelects) {
    QByteArray rows;
    for (int i = 1; i <= 3; ++i)
        rows += row({QString::number(i), QStringLiteral("Artist %1").arg(i),
                     QStringLiteral("Title %1").arg(i), "", "Play", "",
                     "/m/" + QString::number(i) + ".wav"});
    VeldorProcess::write(playlist("default"), rows);
    start();
    ASSERT_EQ(v.runCommand(QStringLiteral("mnuJumpToMedia")), "ok");
    ASSERT_FALSE(window(QStringLiteral("Jump To Media")).isEmpty());
    type(QStringLiteral("artist 2"));
    keys(QStringLiteral("Return alt+s"));
    EXPECT_TRUE(gone(QStringLiteral("Jump To Media")));
    EXPECT_EQ(setting("JumpToMedia", "OptionSelectSong"), "1");
    EXPECT_EQ(setting("JumpToMedia", "SearchByAll"), "1");

    ASSERT_EQ(v.runCommand(QStringLiteral("mnuJumpToTrackNumber")), "ok");
    ASSERT_FALSE(window(QStringLiteral("Jump To Track Number")).isEmpty());
    type(QStringLiteral("9"));
    keys(QStringLiteral("Return"));
    EXPECT_TRUE(waitFor([&] { return dialogs().contains("Jump To Track Number Error"); }));
    keys(QStringLiteral("BackSpace 3 Return"));
    EXPECT_TRUE(gone(QStringLiteral("Jump To Track Number")));
    EXPECT_EQ(setting("JumpToTrackNumber", "OptionSelectSong"), "1");
    EXPECT_EQ(dialogs().count('\n'), 1) << dialogs().toStdString();
}

TEST_F(PlaylistTools, JumpToTimeMovesThePlayingSong) {
    const QString song = v.file(QStringLiteral("media/tone.wav"));
    QDir().mkpath(v.file(QStringLiteral("media")));
    ASSERT_TRUE(MediaFiles::makeWav(song, 20));
    VeldorProcess::write(playlist("default"), row({"1", "A", "T", "", "Play", "00:20", song}));
    start();
    // Nothing plays yet: no window.
    v.runCommand(QStringLiteral("mnuJumpToTime"));
    QThread::msleep(500);
    EXPECT_TRUE(gone(QStringLiteral("Jump To Time")));
    ASSERT_EQ(v.runCommand(QStringLiteral("mnuPlay")), "ok");
    ASSERT_TRUE(waitFor([&] { return v.runCommand(QStringLiteral("mnuJumpToTime")) == "ok"; }));
    ASSERT_FALSE(window(QStringLiteral("Jump To Time")).isEmpty());
    type(QStringLiteral("0"));
    keys(QStringLiteral("Tab"));
    type(QStringLiteral("45"));
    keys(QStringLiteral("Return"));
    EXPECT_TRUE(waitFor([&] { return dialogs().contains("Jump To Time Error"); }));
    keys(QStringLiteral("shift+Tab"));
    type(QStringLiteral("0"));
    keys(QStringLiteral("Tab"));
    type(QStringLiteral("15"));
    keys(QStringLiteral("Return"));
    EXPECT_TRUE(gone(QStringLiteral("Jump To Time")));
    EXPECT_EQ(dialogs().count('\n'), 1) << dialogs().toStdString();
}

TEST_F(PlaylistTools, ManageRenamesAndDeletesAndTheListsFollow) {
    VeldorProcess::write(playlist("Ambient"), row({"1", "A", "T", "", "Play", "", "/m/a.wav"}));
    VeldorProcess::write(playlist("Rock"), row({"1", "R", "T", "", "Play", "", "/m/r.wav"}));
    v.setDialogAnswers({QStringLiteral("yes")});
    start();
    ASSERT_EQ(v.runCommand(QStringLiteral("mnuManagePlaylists")), "ok");
    ASSERT_FALSE(window(QStringLiteral("Manage Playlists")).isEmpty());
    // The first row, Ambient, is selected: rename it through the list's menu key.
    keys(QStringLiteral("Menu r"));
    ASSERT_FALSE(window(QStringLiteral("Rename Playlist")).isEmpty());
    type(QStringLiteral("Drone"));
    keys(QStringLiteral("Return"));
    ASSERT_TRUE(gone(QStringLiteral("Rename Playlist")));
    EXPECT_TRUE(QFile::exists(playlist("Drone")));
    EXPECT_FALSE(QFile::exists(playlist("Ambient")));
    window(QStringLiteral("Manage Playlists"));
    keys(QStringLiteral("Down Delete"));
    EXPECT_TRUE(waitFor([&] { return !QFile::exists(playlist("Rock")); }));
    EXPECT_TRUE(QFile::exists(v.file(QStringLiteral("xdg/Trash/files/Rock.spp"))));
    keys(QStringLiteral("Return"));
    EXPECT_TRUE(gone(QStringLiteral("Manage Playlists")));
    EXPECT_TRUE(dialogs().contains("Delete Current Playlist Confirmation"));
    EXPECT_TRUE(
        VeldorProcess::read(v.file(QStringLiteral("Playlists/Drone.spp"))).contains("/m/a.wav"));
}

TEST_F(PlaylistTools, GeneratorsWriteNewPlaylistsFromTheRows) {
    QByteArray rows;
    for (int i = 1; i <= 6; ++i)
        rows += row({QString::number(i), i % 2 ? "Queen" : "Abba", QStringLiteral("Song %1").arg(i),
                     "1980", "Play", "03:00", QStringLiteral("/m/%1.mp3").arg(i)});
    VeldorProcess::write(playlist("default"), rows);
    start();
    ASSERT_EQ(v.runCommand(QStringLiteral("mnuGeneratePlaylist")), "ok");
    ASSERT_FALSE(window(QStringLiteral("Generate Playlist")).isEmpty());
    type(QStringLiteral("queen"));
    keys(QStringLiteral("Return"));
    ASSERT_TRUE(waitFor([&] { return QFile::exists(playlist("Queen")); }));
    QByteArray expected;
    for (int i = 1, n = 1; i <= 6; i += 2, ++n)
        expected += row({QStringLiteral("%1").arg(n, 3, 10, QLatin1Char('0')), "Queen",
                         QStringLiteral("Song %1").arg(i), "1980", "Play", "03:00",
                         QStringLiteral("/m/%1.mp3").arg(i)});
    EXPECT_EQ(VeldorProcess::read(playlist("Queen")), expected);
    window(QStringLiteral("Generate Playlist"));
    keys(QStringLiteral("Escape"));
    EXPECT_TRUE(gone(QStringLiteral("Generate Playlist")));

    ASSERT_EQ(v.runCommand(QStringLiteral("mnuUseRandomSongsForPlaylist")), "ok");
    ASSERT_FALSE(window(QStringLiteral("Create Random Songs Playlist")).isEmpty());
    type(QStringLiteral("Mix"));
    keys(QStringLiteral("Tab"));
    type(QStringLiteral("4"));
    keys(QStringLiteral("Return"));
    ASSERT_TRUE(waitFor([&] { return QFile::exists(playlist("Mix")); }));
    const QByteArray mix = VeldorProcess::read(playlist("Mix"));
    EXPECT_EQ(mix.count('\n'), 28);
    EXPECT_TRUE(mix.startsWith("\"\"\r\n"));
    EXPECT_TRUE(dialogs().isEmpty()) << dialogs().toStdString();
}
