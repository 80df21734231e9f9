#include "integration/VeldorProcess.h"
#include "support/MediaFiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QThread>
#include <functional>
#include <gtest/gtest.h>

namespace {

QString run(const QString& program, const QStringList& args, int timeoutMs = 10000) {
    QProcess p;
    p.start(program, args);
    p.waitForFinished(timeoutMs);
    return QString::fromUtf8(p.readAllStandardOutput()).trimmed();
}

QString playerctl(const QStringList& args) {
    return run(QStringLiteral("playerctl"), QStringList{QStringLiteral("-p"), "veldor"} + args);
}

void key(const QString& keys) {
    run(QStringLiteral("xdotool"), {QStringLiteral("key"), keys});
}

// A program run beside VELDOR for as long as the test needs it.
class Helper {
public:
    void start(const QString& program, const QStringList& args) {
        m_p.setProgram(program);
        m_p.setArguments(args);
        m_p.setStandardOutputFile(QProcess::nullDevice());
        m_p.setStandardErrorFile(QProcess::nullDevice());
        m_p.start();
        m_p.waitForStarted();
    }
    void stop() {
        if (m_p.state() == QProcess::NotRunning) return;
        m_p.kill();
        m_p.waitForFinished(3000);
    }
    qint64 pid() const { return m_p.processId(); }
    ~Helper() { stop(); }

private:
    QProcess m_p;
};

// The tray host: a 100-pixel panel at the top right of the 1280-pixel screen.
void startTrayer(Helper& h) {
    h.start(QStringLiteral("trayer"),
            {"--edge", "top", "--align", "right", "--widthtype", "pixel", "--width", "100",
             "--heighttype", "pixel", "--height", "24"});
}

// The tray icon's window, named after its tip, docked in trayer's panel.
bool iconInPanel(const QString& tip) {
    const QStringList ids =
        run(QStringLiteral("xdotool"), {"search", "--name", QStringLiteral("^%1$").arg(tip)})
            .split('\n', Qt::SkipEmptyParts);
    for (const QString& id : ids) {
        const QString tree = run(QStringLiteral("xwininfo"), {"-tree", "-id", id});
        // Left on the root window when its host died; docked, it sits inside the panel.
        const QString parent =
            tree.section(QStringLiteral("Parent window id:"), 1).section('\n', 0, 0);
        const QString info = run(QStringLiteral("xwininfo"), {"-id", id});
        const int x = info.section(QStringLiteral("Absolute upper-left X:"), 1)
                          .section('\n', 0, 0)
                          .trimmed()
                          .toInt();
        if (!parent.contains(QStringLiteral("root window")) && x >= 1180) return true;
    }
    return false;
}

// Looked at by id: the tray icon's window carries the program's class too.
bool mapped(unsigned long window) {
    return run(QStringLiteral("xwininfo"), {"-id", QString::number(window)})
        .contains(QStringLiteral("Map State: IsViewable"));
}

QByteArray sppRows(const QStringList& files) {
    QByteArray bytes;
    for (const QString& f : files)
        for (const QString& cell : {QString(), QFileInfo(f).baseName(), QString(), QString(),
                                    QStringLiteral("Play"), QString(), f})
            bytes += '"' + cell.toUtf8() + "\"\r\n";
    return bytes;
}

class Desktop : public ::testing::Test {
protected:
    void SetUp() override { QDir().mkpath(v.file(QStringLiteral("media"))); }
    QString media(const QString& name) { return v.file(QStringLiteral("media/") + name); }
    void settings(const QByteArray& text) {
        VeldorProcess::write(v.file(QStringLiteral("settings.ini")), text);
    }
    void playlist(const QStringList& files) {
        VeldorProcess::write(v.file(QStringLiteral("Playlists/default.spp")), sppRows(files));
    }
    VeldorProcess v;
};

// The media keys reach the player while another program has the keyboard; a media key with
// Ctrl held is another binding and does nothing.
TEST_F(Desktop, GlobalMediaKeysPlayWhileAnotherClientHasTheFocus) {
    const QString song = media(QStringLiteral("a.wav"));
    ASSERT_TRUE(MediaFiles::makeWav(song, 2.0));
    const QString pcm = v.file(QStringLiteral("out.raw"));
    v.setEnv(QStringLiteral("VELDOR_AO"), QStringLiteral("pcm"));
    v.setEnv(QStringLiteral("VELDOR_AO_FILE"), pcm);
    settings("[Settings]\r\nUseSystemTraySupport=0\r\n");
    playlist({song});
    v.start();
    ASSERT_NE(v.waitForWindow(), 0u);

    Helper other;
    other.start(QStringLiteral("xev"), {"-name", "other client"});
    QString otherId;
    ASSERT_TRUE(waitFor([&] {
        otherId = run("xdotool", {"search", "--name", "^other client$"}).section('\n', 0, 0);
        return !otherId.isEmpty();
    }));
    run("xdotool", {"windowfocus", "--sync", otherId});
    EXPECT_EQ(run("xdotool", {"getwindowfocus"}), otherId);

    key(QStringLiteral("ctrl+XF86AudioPlay"));
    QThread::msleep(1500);
    EXPECT_EQ(QFileInfo(pcm).size(), 0) << "Ctrl+ makes another name";
    key(QStringLiteral("XF86AudioPlay"));
    EXPECT_TRUE(waitFor([&] { return QFileInfo(pcm).size() >= 2 * 44100 * 4 * 9 / 10; }))
        << "the song went to the output; size " << QFileInfo(pcm).size();
}

// Stored bindings with modifiers work with NumLock on, and Stop stops; a timed output keeps the
// song going long enough to see it.
TEST_F(Desktop, BoundKeysWithNumLockOnPlayAndStop) {
    const QString song = media(QStringLiteral("long.wav"));
    ASSERT_TRUE(MediaFiles::makeWav(song, 30.0));
    settings("[Settings]\r\nUseSystemTraySupport=0\r\n[GlobalKeys]\r\nPlayPauseExt=Ctrl+Alt\r\n"
             "PlayPauseKey=p\r\nStopExt=\r\nStopKey=Media:  Stop\r\nNextKey=" +
             QByteArray(10240, 'x') + "\r\nMuteExt=(None)\r\n");
    playlist({song});
    v.start();
    ASSERT_NE(v.waitForWindow(), 0u);
    key(QStringLiteral("Num_Lock"));
    key(QStringLiteral("ctrl+alt+p"));
    EXPECT_TRUE(waitFor([] { return playerctl({"status"}) == "Playing"; }))
        << playerctl({"status"}).toStdString();
    key(QStringLiteral("XF86AudioStop"));
    EXPECT_TRUE(waitFor([] { return playerctl({"status"}) == "Stopped"; }));
    key(QStringLiteral("Num_Lock"));
    EXPECT_TRUE(v.running());
}

// The session bus shows the song and moves on to the next.
TEST_F(Desktop, PlayerctlSeesTheSongAndGoesToTheNext) {
    const QString a = media(QStringLiteral("first.wav")), b = media(QStringLiteral("second.wav"));
    ASSERT_TRUE(MediaFiles::makeWav(a, 20.0));
    ASSERT_TRUE(MediaFiles::makeWav(b, 20.0));
    settings("[Settings]\r\nUseSystemTraySupport=0\r\n");
    playlist({a, b});
    v.start();
    ASSERT_NE(v.waitForWindow(), 0u);
    ASSERT_TRUE(waitFor([] { return playerctl({"status"}) == "Stopped"; }));
    playerctl({"play"});
    EXPECT_TRUE(waitFor([] { return playerctl({"status"}) == "Playing"; }));
    EXPECT_TRUE(waitFor([&] {
        return playerctl({"metadata", "xesam:url"}).endsWith("first.wav");
    })) << playerctl({"metadata"}).toStdString();
    EXPECT_EQ(playerctl({"metadata", "xesam:title"}), "first");
    playerctl({"position", "100000"}); // past the end: ignored or next, never a crash
    playerctl({"next"});
    EXPECT_TRUE(waitFor([&] {
        return playerctl({"metadata", "xesam:url"}).endsWith("second.wav");
    })) << playerctl({"metadata"}).toStdString();
    playerctl({"stop"});
    EXPECT_TRUE(waitFor([] { return playerctl({"status"}) == "Stopped"; }));
    playerctl({"position", "5"}); // a seek while nothing plays
    EXPECT_TRUE(v.running());
}

// The tray host dies and comes back: the icon is back with its tip, also after a storm of
// restarts.
TEST_F(Desktop, TheIconComesBackWithItsTipWhenTheTrayHostReturns) {
    settings("[Settings]\r\nUseSystemTraySupport=1\r\n");
    Helper tray;
    startTrayer(tray);
    QThread::msleep(500);
    v.start();
    ASSERT_NE(v.waitForWindow(), 0u);
    const QString tip = QStringLiteral("VELDOR:  Stopped");
    ASSERT_TRUE(waitFor([&] { return iconInPanel(tip); }));

    tray.stop();
    EXPECT_TRUE(waitFor([&] { return !iconInPanel(tip); }, 3000));
    startTrayer(tray);
    QElapsedTimer back;
    back.start();
    EXPECT_TRUE(waitFor([&] { return iconInPanel(tip); }, 5000));
    // Half a second is the aim; a loaded test machine gets some slack.
    EXPECT_LT(back.elapsed(), 2500);

    for (int i = 0; i < 20; ++i) {
        tray.stop();
        startTrayer(tray);
        QThread::msleep(100);
    }
    EXPECT_TRUE(waitFor([&] { return iconInPanel(tip); }, 5000));
    EXPECT_TRUE(v.running());
}

// With the icon on, closing the window hides it; a click on the icon and the tray's Open bring
// it back. Without a tray host the close box exits.
TEST_F(Desktop, CloseHidesIntoTheTrayAndOpenBringsItBack) {
    settings("[Settings]\r\nUseSystemTraySupport=1\r\n");
    v.start();
    const unsigned long main = v.waitForWindow();
    ASSERT_NE(main, 0u);
    // The tray host comes after the program: the icon docks when it appears.
    Helper tray;
    startTrayer(tray);
    ASSERT_TRUE(waitFor([&] { return iconInPanel(QStringLiteral("VELDOR:  Stopped")); }));

    v.requestClose();
    EXPECT_TRUE(waitFor([&] { return !mapped(main); }));
    QThread::msleep(500);
    EXPECT_TRUE(v.running());
    EXPECT_EQ(v.runCommand(QStringLiteral("mnuOpen")), "ok");
    EXPECT_TRUE(waitFor([&] { return mapped(main); }));

    v.requestClose();
    EXPECT_TRUE(waitFor([&] { return !mapped(main); }));
    const QString icon =
        run("xdotool", {"search", "--name", "^VELDOR:  Stopped$"}).section('\n', 0, 0);
    run("xdotool", {"mousemove", "--window", icon, "8", "8", "click", "1"});
    EXPECT_TRUE(waitFor([&] { return mapped(main); })) << "a click on the icon opens it";

    tray.stop();
    QThread::msleep(500);
    v.requestClose();
    EXPECT_TRUE(v.waitForExit(20000)) << "no tray host: the close box exits";
    EXPECT_EQ(v.exitCode(), 0);
}

} // namespace
