#include "integration/VeldorProcess.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>
#include <gtest/gtest.h>

namespace {

QString xdotool(const QStringList& args) {
    QProcess p;
    p.start(QStringLiteral("xdotool"), args);
    p.waitForFinished(15000);
    return QString::fromUtf8(p.readAllStandardOutput()).trimmed();
}

template <typename Check> bool within(int ms, Check check) {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < ms) {
        if (check()) return true;
        QThread::msleep(100);
    }
    return check();
}

} // namespace

// A preference changed by keys in the dialog is written at OK and still in force after a
// restart: the console log kept in the data folder comes back with the new run's lines.
TEST(PreferencesDialog, AChangeAppliedSurvivesARestart) {
    VeldorProcess v;
    const QString settings = v.file(QStringLiteral("settings.ini"));
    const QString log = v.file(QStringLiteral("console.log"));
    v.start();
    ASSERT_NE(v.waitForWindow(), 0u);
    EXPECT_FALSE(QFile::exists(log));
    ASSERT_EQ(v.runCommand(QStringLiteral("mnuPreferences")), QStringLiteral("ok"));
    const QString dialog =
        xdotool({QStringLiteral("search"), QStringLiteral("--sync"),
                 QStringLiteral("--onlyvisible"), QStringLiteral("--pid"), QString::number(v.pid()),
                 QStringLiteral("--name"), QStringLiteral("^Preferences$")})
            .section(QLatin1Char('\n'), 0, 0);
    ASSERT_FALSE(dialog.isEmpty());
    xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"), dialog});
    // Advanced Settings, the check that keeps the console log, then OK (which applies).
    for (const char* key : {"alt+v", "alt+k", "alt+o"}) {
        xdotool({QStringLiteral("key"), QLatin1String(key)});
        QThread::msleep(300);
    }
    EXPECT_TRUE(within(8000, [&] {
        return VeldorProcess::settingsValue(settings, QStringLiteral("Settings"),
                                            QStringLiteral("RememberTheConsoleLogs")) ==
               QLatin1String("1");
    }));
    v.exitThroughMenu();
    ASSERT_TRUE(v.waitForExit());

    QFile::remove(log);
    v.start();
    ASSERT_NE(v.waitForWindow(), 0u);
    EXPECT_TRUE(within(8000, [&] {
        return VeldorProcess::read(log).contains("VELDOR started at");
    })) << VeldorProcess::read(log).constData();
    v.exitThroughMenu();
    EXPECT_TRUE(v.waitForExit());
}
