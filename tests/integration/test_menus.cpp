#include "integration/VeldorProcess.h"

#include <QElapsedTimer>
#include <QThread>
#include <gtest/gtest.h>

namespace {

QByteArray sppRow(const QString& number, const QString& path) {
    QByteArray out;
    for (const QString& v : {number, QStringLiteral("Artist"), QStringLiteral("Title"), QString(),
                             QStringLiteral("Play"), QString(), path})
        out += '"' + v.toUtf8() + "\"\r\n";
    return out;
}

bool settingBecomes(VeldorProcess& v, const char* value) {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 8000) {
        if (VeldorProcess::settingsValue(v.file(QStringLiteral("settings.ini")),
                                         QStringLiteral("Settings"),
                                         QStringLiteral("LockPlaylist")) == QLatin1String(value))
            return true;
        QThread::msleep(100);
    }
    return false;
}

} // namespace

// The lock disables most of the menus; its own entry, first in Playlist, stays to undo it.
TEST(Menus, ALockedListIsUnlockedFromTheMenuBarByKeys) {
    VeldorProcess v;
    VeldorProcess::write(v.file("Playlists/default.spp"),
                         sppRow("1", "/music/a.mp3") + sppRow("2", "/music/b.mp3"));
    v.start();
    ASSERT_NE(v.waitForWindow(), 0u);
    v.runMenu(QStringLiteral("l"), QStringLiteral("l"));
    ASSERT_TRUE(settingBecomes(v, "1"));
    v.runMenu(QStringLiteral("l"), QStringLiteral("l"));
    EXPECT_TRUE(settingBecomes(v, "0"));
    v.exitThroughMenu();
    EXPECT_TRUE(v.waitForExit());
}
