#include "integration/VeldorProcess.h"
#include "support/MediaFiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QProcess>
#include <QThread>
#include <atomic>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <mutex>
#include <poll.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

// The playlist tool windows of the real program, driven by their keys as a user would.
namespace {

constexpr qint64 kBytesPerSecond = 44100 * 4;

// The engine's pcm output as a pipe read at the pace of a sound card: the file output alone
// writes a song out faster than real time, too fast to act on it while it plays.
class PcmPipe {
public:
    explicit PcmPipe(const QString& path) {
        const QByteArray name = QFile::encodeName(path);
        ::mkfifo(name.constData(), 0600);
        m_fd = ::open(name.constData(), O_RDONLY | O_NONBLOCK);
        m_reader = std::thread([this] { run(); });
    }
    ~PcmPipe() {
        m_stop = true;
        m_reader.join();
        if (m_fd >= 0) ::close(m_fd);
    }
    QByteArray bytes() {
        std::lock_guard<std::mutex> lock(m_mutex);
        return m_bytes;
    }
    qint64 size() {
        std::lock_guard<std::mutex> lock(m_mutex);
        return m_bytes.size();
    }

private:
    void run() {
        QElapsedTimer clock;
        char buffer[4096];
        while (!m_stop) {
            const qint64 allowed =
                clock.isValid() ? kBytesPerSecond * clock.elapsed() / 1000 + 8192 : 8192;
            const qint64 have = size();
            pollfd p{m_fd, POLLIN, 0};
            if (have >= allowed || ::poll(&p, 1, 50) <= 0) {
                QThread::msleep(5);
                continue;
            }
            const ssize_t n =
                ::read(m_fd, buffer, size_t(qMin<qint64>(qint64(sizeof buffer), allowed - have)));
            if (n <= 0) { // no writer yet, or it closed the pipe
                QThread::msleep(20);
                continue;
            }
            if (!clock.isValid()) clock.start();
            std::lock_guard<std::mutex> lock(m_mutex);
            m_bytes.append(buffer, n);
        }
    }

    int m_fd = -1;
    std::atomic<bool> m_stop{false};
    std::mutex m_mutex;
    QByteArray m_bytes;
    std::thread m_reader;
};

class PlaylistTools : public ::testing::Test {
protected:
    void SetUp() override {
        // The Trash and the desktop's recent list stay inside the test's folder.
        v.setEnv(QStringLiteral("XDG_DATA_HOME"), v.file(QStringLiteral("xdg")));
        VeldorProcess::write(v.file(QStringLiteral("settings.ini")),
                             "[Settings]\r\nUseSystemTraySupport=0\r\n");
    }
    void start(const QStringList& arguments = {}) {
        v.start(arguments);
        m_main = QString::number(v.waitForWindow());
        ASSERT_NE(m_main, "0");
    }
    // The visible X windows of this program with that title (--all: by default one condition is
    // enough, and the song's alert would do) other than the main window (which the search also
    // reports while it owns a dialog).
    QStringList shown(const QString& title) {
        QStringList ids = xdotool({QStringLiteral("search"), QStringLiteral("--all"),
                                   QStringLiteral("--onlyvisible"), QStringLiteral("--pid"),
                                   QString::number(v.pid()), QStringLiteral("--name"),
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

// A jump to 0:40 in a song of 40 seconds of tone and 5 of silence: what the engine plays after
// the jump is the silence alone. The tone is long so a slow machine still jumps well before its
// end.
TEST_F(PlaylistTools, JumpToTimeMovesThePlayingSong) {
    QDir().mkpath(v.file(QStringLiteral("media")));
    const QString song = v.file(QStringLiteral("media/song.wav"));
    ASSERT_TRUE(MediaFiles::run(QStringLiteral("sox"),
                                {"-n", "-r", "44100", "-c", "2", "-b", "16", song, "synth", "40",
                                 "sine", "440", "vol", "0.5", "pad", "0", "5"}));
    PcmPipe pcm(v.file(QStringLiteral("out.raw")));
    v.setEnv(QStringLiteral("VELDOR_AO"), QStringLiteral("pcm"));
    v.setEnv(QStringLiteral("VELDOR_AO_FILE"), v.file(QStringLiteral("out.raw")));
    start({song});
    ASSERT_TRUE(waitFor([&] { return pcm.size() > kBytesPerSecond; }));
    ASSERT_EQ(v.runCommand(QStringLiteral("mnuJumpToTime")), "ok");
    ASSERT_FALSE(window(QStringLiteral("Jump To Time")).isEmpty());
    type(QStringLiteral("0"));
    keys(QStringLiteral("Tab"));
    type(QStringLiteral("40"));
    keys(QStringLiteral("Return"));
    EXPECT_TRUE(gone(QStringLiteral("Jump To Time")));
    // The end of the song: the output stops growing.
    qint64 last = -1;
    waitFor(
        [&] {
            const qint64 now = pcm.size();
            const bool still = now == last && now > 0;
            last = now;
            QThread::msleep(1500);
            return still;
        },
        30000);
    const QByteArray out = pcm.bytes();
    const auto* samples = reinterpret_cast<const qint16*>(out.constData());
    qsizetype toneEnd = 0;
    for (qsizetype i = 0; i < out.size() / 2; ++i)
        if (qAbs(samples[i]) > 200) toneEnd = i + 1;
    const double tone = double(toneEnd * 2) / kBytesPerSecond;
    const double silence = double(out.size() - toneEnd * 2) / kBytesPerSecond;
    EXPECT_LT(tone, 30.0) << "without the jump all 40 seconds of tone play";
    EXPECT_NEAR(silence, 5.0, 0.8);
    EXPECT_TRUE(dialogs().isEmpty()) << dialogs().toStdString();
}

// Rename and delete in the manage window; the playlist shown in the combo and the recent
// playlists follow the new name, so that deleting the current playlist takes the renamed file.
TEST_F(PlaylistTools, ManageRenamesAndDeletesAndTheCurrentPlaylistFollows) {
    QDir().mkpath(v.file(QStringLiteral("media")));
    const QString song = v.file(QStringLiteral("media/a.wav"));
    ASSERT_TRUE(MediaFiles::makeWav(song, 0.3));
    VeldorProcess::write(playlist("Ambient"), row({"1", "A", "T", "", "Play", "", song}));
    VeldorProcess::write(playlist("Rock"), row({"1", "R", "T", "", "Play", "", song}));
    v.setDialogAnswers({QStringLiteral("yes"), QStringLiteral("yes")});
    start({playlist("Rock")});
    ASSERT_TRUE(
        waitFor([&] { return setting("RecentPlaylists", "Filename1") == playlist("Rock"); }));

    ASSERT_EQ(v.runCommand(QStringLiteral("mnuManagePlaylists")), "ok");
    ASSERT_FALSE(window(QStringLiteral("Manage Playlists")).isEmpty());
    keys(QStringLiteral("Down Menu r")); // Rock, then Rename from the list's own menu
    ASSERT_FALSE(window(QStringLiteral("Rename Playlist")).isEmpty());
    keys(QStringLiteral("ctrl+a"));
    type(QStringLiteral("Classic Rock"));
    keys(QStringLiteral("Return"));
    EXPECT_TRUE(gone(QStringLiteral("Rename Playlist")));
    EXPECT_TRUE(waitFor([&] { return QFile::exists(playlist("Classic Rock")); }));
    EXPECT_FALSE(QFile::exists(playlist("Rock")));
    EXPECT_TRUE(waitFor(
        [&] { return setting("RecentPlaylists", "Filename1") == playlist("Classic Rock"); }));

    ASSERT_FALSE(window(QStringLiteral("Manage Playlists")).isEmpty());
    keys(QStringLiteral("Home Delete"));
    EXPECT_TRUE(waitFor([&] { return !QFile::exists(playlist("Ambient")); }));
    EXPECT_TRUE(QFile::exists(v.file(QStringLiteral("xdg/Trash/files/Ambient.spp"))));
    keys(QStringLiteral("Return"));
    EXPECT_TRUE(gone(QStringLiteral("Manage Playlists")));

    ASSERT_EQ(v.runCommand(QStringLiteral("mnuDeleteCurrentPlaylist")), "ok");
    EXPECT_TRUE(waitFor([&] { return !QFile::exists(playlist("Classic Rock")); }));
    EXPECT_TRUE(QFile::exists(v.file(QStringLiteral("xdg/Trash/files/Classic Rock.spp"))));
    // The settings are written just after the file goes.
    EXPECT_TRUE(waitFor([&] { return setting("RecentPlaylists", "Filename1").isEmpty(); }));
    EXPECT_EQ(dialogs().count("Delete Current Playlist Confirmation"), 2)
        << dialogs().toStdString();
    EXPECT_TRUE(dialogs().contains("Classic Rock.spp")) << dialogs().toStdString();
}
