#include "integration/VeldorProcess.h"

#include <QElapsedTimer>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QThread>
#include <gtest/gtest.h>

namespace {

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
    QThread::msleep(1500); // the start-up's last steps, the media engine among them
    ASSERT_EQ(v.runCommand(QStringLiteral("mnuPreferences")), QStringLiteral("ok"));
    const QString dialog = xdotool({QStringLiteral("search"), QStringLiteral("--sync"),
                                    QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                                    QStringLiteral("^Preferences$")})
                               .section(QLatin1Char('\n'), 0, 0);
    ASSERT_FALSE(dialog.isEmpty());
    // There is no window manager: a click on the dialog's title line makes it the active window,
    // which its keys need, and the X focus follows.
    QMap<QString, int> geometry;
    for (const QString& line :
         xdotool({QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), dialog})
             .split(QLatin1Char('\n')))
        geometry[line.section(QLatin1Char('='), 0, 0)] = line.section(QLatin1Char('='), 1).toInt();
    xdotool({QStringLiteral("mousemove"),
             QString::number(geometry.value(QStringLiteral("X")) +
                             geometry.value(QStringLiteral("WIDTH")) / 2),
             QString::number(geometry.value(QStringLiteral("Y")) + 12), QStringLiteral("click"),
             QStringLiteral("1")});
    EXPECT_TRUE(
        within(8000, [&] { return xdotool({QStringLiteral("getwindowfocus")}) == dialog; }));
    QThread::msleep(300);
    // Advanced Settings, the check that keeps the console log, then OK (which applies).
    for (const char* key : {"alt+v", "alt+k", "alt+o"}) {
        xdotool({QStringLiteral("key"), QLatin1String(key)});
        QThread::msleep(400);
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
