#include "integration/VeldorProcess.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QHash>
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
        m_main = QString::number(v.waitForWindow());
        ASSERT_NE(m_main, "0");
    }
    // The visible X windows of that title other than the main window (which the search also
    // reports while it owns a dialog).
    QStringList shown(const QString& title) {
        QStringList ids =
            xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                     QStringLiteral("--pid"), QString::number(v.pid()), QStringLiteral("--name"),
                     QLatin1Char('^') + title + QLatin1Char('$')})
                .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        ids.removeAll(m_main);
        return ids;
    }
    // The visible window of that title, focused; empty when it never showed.
    QString window(const QString& title) {
        QString id;
        waitFor([&] {
            id = shown(title).value(0);
            return !id.isEmpty();
        });
        if (!id.isEmpty()) {
            m_shown.insert(title, id);
            xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"), id});
            QThread::msleep(300);
        }
        return id;
    }
    // The one window() found no longer shows.
    bool gone(const QString& title) {
        const QString id = m_shown.value(title);
        return waitFor([&] { return !shown(title).contains(id); });
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
    QString m_main;                  // X window id of the main window
    QHash<QString, QString> m_shown; // title -> X window id
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
    keys(QStringLiteral("Return"));
    keys(QStringLiteral("Return"));
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

TEST_F(PlaylistTools, ManageDeletesToTheTrash) {
    VeldorProcess::write(playlist("Ambient"), row({"1", "A", "T", "", "Play", "", "/m/a.wav"}));
    VeldorProcess::write(playlist("Rock"), row({"1", "R", "T", "", "Play", "", "/m/r.wav"}));
    v.setDialogAnswers({QStringLiteral("yes")});
    start();
    ASSERT_EQ(v.runCommand(QStringLiteral("mnuManagePlaylists")), "ok");
    ASSERT_FALSE(window(QStringLiteral("Manage Playlists")).isEmpty());
    // The first row, Ambient, is selected.
    keys(QStringLiteral("Delete"));
    EXPECT_TRUE(waitFor([&] { return !QFile::exists(playlist("Ambient")); }));
    EXPECT_TRUE(QFile::exists(v.file(QStringLiteral("xdg/Trash/files/Ambient.spp"))));
    EXPECT_TRUE(QFile::exists(playlist("Rock")));
    keys(QStringLiteral("Return"));
    EXPECT_TRUE(gone(QStringLiteral("Manage Playlists")));
    EXPECT_TRUE(dialogs().contains("Delete Current Playlist Confirmation"));
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
