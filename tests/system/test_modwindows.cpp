#include "core/Settings.h"
#include "support/TempHome.h"
#include "system/modWindows.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>
#include <gtest/gtest.h>

using namespace modWindows;

TEST(ModWindows, ClampMovesAndCutsIntoTheArea) {
    const QRect area(0, 0, 640, 512);
    EXPECT_EQ(clampToArea(QRect(100, -40, 300, 200), area), QRect(100, 0, 300, 200));
    EXPECT_EQ(clampToArea(QRect(500, 400, 300, 200), area), QRect(340, 312, 300, 200));
    EXPECT_EQ(clampToArea(QRect(-50, 10, 1000, 900), area), QRect(0, 0, 640, 512));
    EXPECT_EQ(clampToArea(QRect(10, 10, 30, 30), area), QRect(10, 10, 30, 30));
}

TEST(ModWindows, ARestoredWindowLiesWhollyOnAScreen) {
    TempHome home;
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    // Stored on a bigger desktop, above and left of this one, and larger than it.
    for (const char* place : {"Window_Top=-3000\r\nWindow_left=-90000\r\n",
                              "Window_Top=99000\r\nWindow_left=99000\r\n"}) {
        TempHome::writeFile(home.settingsFile(),
                            QByteArray("[Position_Test]\r\n") + place +
                                "Window_Height=60000\r\nWindow_Width=90000\r\n");
        QWidget window;
        window_RestorePosition(&window, QStringLiteral("Test"), 1500);
        EXPECT_TRUE(screen.contains(window.frameGeometry())) << place;
    }
    // Twips are logical: 1440 make an inch of 96 logical pixels at any scale.
    EXPECT_EQ(twipsToPixels(1440), qRound(QGuiApplication::primaryScreen()->logicalDotsPerInch()));
}

// A window with a layout (every real one) is watched too, so a move off the screen before its
// frame is known is put back.
TEST(ModWindows, AWindowWithALayoutIsKeptOnTheScreenAfterItsRestore) {
    TempHome home;
    QWidget window;
    new QVBoxLayout(&window);
    window_RestorePosition(&window, QStringLiteral("Test"), 1500);
    window.show();
    window.move(99000, 99000);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_TRUE(screen.contains(window.frameGeometry()));
    window_ShowInTaskbar(&window, false); // must not take the layout for its own filter
    EXPECT_NE(window.layout(), nullptr);
}

TEST(ModWindows, CenterPutsTheWindowInTheMiddle) {
    QWidget window;
    window.setGeometry(0, 0, 200, 100);
    window_Center(&window);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_LE(qAbs(window.frameGeometry().center().x() - screen.center().x()), 1);
    EXPECT_LE(qAbs(window.frameGeometry().center().y() - screen.center().y()), 1);
}
