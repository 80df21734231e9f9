#include "integration/VeldorProcess.h"
#include "support/MediaFiles.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>
#include <csignal>
#include <gtest/gtest.h>

namespace {

// On a terminal without any display the information switches still answer.
TEST(EngineStart, HelpAndVersionNeedNoDisplay) {
    for (const char* option : {"--version", "--help"}) {
        QProcess p;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            env.remove(QString::fromLatin1(name));
        p.setProcessEnvironment(env);
        p.start(QStringLiteral(VELDOR_EXE), {QString::fromLatin1(option)});
        ASSERT_TRUE(p.waitForFinished(10000)) << option;
        EXPECT_EQ(p.exitStatus(), QProcess::NormalExit) << option;
        EXPECT_EQ(p.exitCode(), 0) << option << p.readAllStandardError().toStdString();
        const QByteArray out = p.readAllStandardOutput();
        EXPECT_TRUE(out.startsWith(option == QLatin1String("--help") ? "Usage: veldor" : "VELDOR "))
            << out.toStdString();
    }
}

// The engine's library tree is no part of what loads before the window.
TEST(EngineStart, TheProgramDoesNotLinkTheEngine) {
    QProcess p;
    p.start(QStringLiteral("readelf"), {QStringLiteral("-d"), QStringLiteral(VELDOR_EXE)});
    ASSERT_TRUE(p.waitForFinished(10000));
    const QByteArray needed = p.readAllStandardOutput();
    ASSERT_TRUE(needed.contains("NEEDED"));
    EXPECT_FALSE(needed.contains("libmpv")) << needed.toStdString();
}

// A message box of the start-up is open when the session ends: the program saves what an exit
// saves and ends.
TEST(EngineStart, TerminatedWhileAMessageBoxIsOpenItSavesAndEnds) {
    VeldorProcess v;
    VeldorProcess::write(v.file("Playlists/default.spp"), "\"1\"\r\n\"only half a row\r\n");
    v.start();
    ASSERT_TRUE(waitFor([&] {
        return VeldorProcess::read(v.dialogLog()).contains("Error Loading List");
    })) << "no message box";
    QThread::msleep(500); // the box is up
    ASSERT_TRUE(v.running());
    v.terminate();
    ASSERT_TRUE(v.waitForExit(15000));
    EXPECT_EQ(v.exitCode(), 0);
    const QString ini = v.file(QStringLiteral("settings.ini"));
    EXPECT_EQ(VeldorProcess::settingsValue(ini, "Sound", "Volume"), "50");
    EXPECT_NE(VeldorProcess::settingsValue(ini, "Position_MainWindow", "Window_Width"), "<absent>");
}

// Killed without a chance to save, the list of the session is still on disk.
TEST(EngineStart, AKilledProgramLeavesItsList) {
    VeldorProcess v;
    const QString a = v.file(QStringLiteral("a.wav")), b = v.file(QStringLiteral("b.wav"));
    ASSERT_TRUE(MediaFiles::makeWav(a, 0.2) && MediaFiles::makeWav(b, 0.2));
    v.start({a, b});
    ASSERT_NE(v.waitForWindow(), 0u);
    const QString spp = v.file(QStringLiteral("Playlists/default.spp"));
    EXPECT_TRUE(waitFor([&] { return VeldorProcess::read(spp).count("\r\n") == 14; }, 8000));
    ::kill(pid_t(v.pid()), SIGKILL);
    ASSERT_TRUE(v.waitForExit());
    const QByteArray rows = VeldorProcess::read(spp);
    EXPECT_TRUE(rows.contains("a.wav\"") && rows.contains("b.wav\"")) << rows.toStdString();
}

} // namespace
