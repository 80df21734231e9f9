// Numbers read from settings.ini: every conversion to an integer is checked against its range
// first, so a value like "2.06e12" takes the default instead of undefined behaviour.
#include "core/Colors.h"
#include "core/Settings.h"
#include "playlists/RecentList.h"
#include "support/TempHome.h"
#include "system/modWindows.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <gtest/gtest.h>

TEST(SettingNumbers, WholeNumbersOutsideTheirRangeTakeTheFallback) {
    const struct {
        const char* text;
        int want;
    } cases[] = {
        {"42", 42},
        {" 7 ", 7},
        {"", 0},
        {"2.5", 2},
        {"3.5", 4},
        {"&H10", 16},
        {"-9.9e10", -1},
        {"2.06e12", -1},
        {"1e400", -1},
        {"nan", -1},
        {"inf", -1},
        {"-inf", -1},
        {"abc", -1},
        {"100", 100},
        {"101", -1},
        {"-101", -1},
        {"&HFFFFFFFFFFFF", -1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(settings_TextToInt(QString::fromLatin1(c.text), -100, 100, -1), c.want) << c.text;
}

TEST(SettingNumbers, ColoursAndRecentLimitsReadNonsenseAsTheirDefault) {
    EXPECT_EQ(Colors::parse("192", 7), 192);
    EXPECT_EQ(Colors::parse("&H80000005", 7), 0x80000005LL);
    EXPECT_EQ(Colors::parse("-2147483643", 7), 0x80000005LL);
    for (const char* bad : {"-9.9e10", "2.06e12", "1e300", "4294967296", "nan", "x"})
        EXPECT_EQ(Colors::parse(QString::fromLatin1(bad), 7), 7) << bad;

    TempHome home;
    RecentList recent("RecentMediaFiles", "mnuRecent", "NumberofRecentMediaFiles");
    const struct {
        const char* text;
        int limit;
    } limits[] = {{"12", 12}, {"2.06e12", 30}, {"-9.9e10", 30}, {"5000", 999}, {"-3", 0}};
    for (const auto& l : limits) {
        settings_Write("Settings", "NumberofRecentMediaFiles", QString::fromLatin1(l.text));
        recent.loadLimit();
        EXPECT_EQ(recent.limit(), l.limit) << l.text;
    }
}

TEST(SettingNumbers, AWindowPlaceNoScreenHasComesBackOnTheScreen) {
    TempHome home;
    QWidget w;
    for (const char* bad : {"-9.9e10", "2.06e12", "1e400"}) {
        for (const char* key : {"Window_Top", "Window_left", "Window_Height", "Window_Width"}) {
            settings_Write("Position_Test", key, QString::fromLatin1(bad));
            modWindows::window_RestorePosition(&w, "Test", 0);
            const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
            EXPECT_TRUE(screen.contains(w.geometry())) << key << " " << bad;
            settings_Write("Position_Test", key, QString());
        }
    }
}
