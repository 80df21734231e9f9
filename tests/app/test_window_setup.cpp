#include "app/FrmMain.h"
#include "app/MainEvents.h"
#include "app/WindowClose.h"
#include "app/WindowSetup.h"
#include "core/Commands.h"
#include "core/DialogScript.h"
#include "core/IniFile.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/PlaylistCombo.h"
#include "core/Settings.h"
#include "playback/Player.h"
#include "playlists/PlaylistEditing.h"
#include "playlists/PlaylistFiles.h"
#include "support/TempHome.h"

#include "ui/ListView.h"

#include <QApplication>
#include <QFile>
#include <QSlider>
#include <QTest>
#include <gtest/gtest.h>

#include "app/RestoredWindow.h"

TEST(WindowSetup, RestoresRowsSelectionAndModes) {
    Restored r;
    r.write("Playlists/default.spp", row("1", "/a.mp3") + row("2", "/b.mp3") + row("3", "/c.mp3"));
    r.write("Playlists/Rock.spp", row("1", "/r.mp3"));
    r.write("settings.ini", "[Playback]\r\nLastPlayed=2\r\nPlaylistUsed=Rock\r\nPlayingRepeat=1\r\n"
                            "PlayingIntroduction=1\r\n[Sound]\r\nVolume=80\r\nBalance= 20 \r\n"
                            "[Settings]\r\nShowToolbar=0\r\n");
    r.restore();
    ListModel& list = r.ctx->lstvPlaylist();
    ASSERT_EQ(list.count(), 3);
    EXPECT_EQ(list.text(0, 0), "01"); // renumbered, padded
    EXPECT_EQ(list.selectedItem(), 1);
    EXPECT_EQ(r.ctx->PlayingRowIndex, 2);
    // The combo shows the stored playlist without opening it.
    EXPECT_EQ(r.ctx->cmbPlaylists().text(), "Rock");
    EXPECT_EQ(list.text(0, 6), "/a.mp3");
    // First of the play modes that holds 1 wins.
    EXPECT_TRUE(r.c().isChecked("mnuPlayingIntroduction"));
    EXPECT_FALSE(r.c().isChecked("mnuPlayingRepeat"));
    EXPECT_TRUE(r.c().isChecked("mnuPlaylistStopAfterEnding"));
    EXPECT_TRUE(r.c().isChecked("mnuWorkForwardThroughList"));
    EXPECT_FALSE(r.c().isChecked("mnuShowToolbar"));
    EXPECT_TRUE(r.c().isChecked("mnuShowStatusBar"));
    EXPECT_EQ(r.window->sldVolume()->value(), 80);
    EXPECT_EQ(r.window->sldBalance()->value(), 20);
    EXPECT_TRUE(r.ctx->WindowShown);
}

TEST(WindowSetup, LastPlayedBeyondTheListSelectsNothingButIsKept) {
    Restored r;
    r.write("Playlists/default.spp", row("1", "/a.mp3"));
    r.write("settings.ini", "[Playback]\r\nLastPlayed=9\r\nPlaylistUsed=Gone\r\n");
    r.restore();
    EXPECT_FALSE(r.ctx->lstvPlaylist().hasSelection());
    EXPECT_EQ(r.ctx->PlayingRowIndex, 9);
    EXPECT_EQ(r.ctx->cmbPlaylists().listIndex(), 0);
}

TEST(WindowSetup, CommandLineForms) {
    {
        Restored r;
        r.write("Playlists/default.spp", row("1", "/old.mp3"));
        r.restore("\"/m/a b.mp3\" \"/m/c, d.wav\"");
        ListModel& list = r.ctx->lstvPlaylist();
        ASSERT_EQ(list.count(), 3);
        EXPECT_EQ(list.text(1, 6), "/m/a b.mp3");
        EXPECT_EQ(list.text(2, 6), "/m/c, d.wav");
        // No tags: the file title stands as artist, once the slices after the window ran.
        EXPECT_TRUE(QTest::qWaitFor([&] { return list.text(2, 1) == "c, d"; }, 5000));
        EXPECT_EQ(list.selectedItem(), 1); // the first of the new rows
        EXPECT_FALSE(r.ctx->StartedBySwitch);
        EXPECT_EQ(list.text(2, 0), "03");
    }
    for (const bool padded : {true, false}) {
        // The new rows take the list past 99: every number, old and new, gets three digits.
        Restored r;
        QByteArray rows;
        for (int i = 1; i <= 99; ++i)
            rows += row(QString::number(i), QStringLiteral("/old%1.mp3").arg(i));
        r.write("Playlists/default.spp", rows);
        if (!padded) r.write("settings.ini", "[Settings]\r\nUseNumberPaddingInPlaylists=0\r\n");
        r.restore("\"/m/a.mp3\" \"/m/b.mp3\"");
        ListModel& list = r.ctx->lstvPlaylist();
        ASSERT_EQ(list.count(), 101);
        EXPECT_EQ(list.text(0, 0), padded ? "001" : "1");
        EXPECT_EQ(list.text(99, 0), "100");
        EXPECT_EQ(list.text(100, 0), "101");
        EXPECT_EQ(list.text(100, 6), "/m/b.mp3");
    }
    {
        Restored r;
        r.write("settings.ini", "[Settings]\r\nClearPlaylistWhenFilesAreAddedOnStartUp=1\r\n");
        r.write("Playlists/default.spp", row("1", "/old.mp3"));
        r.restore("\"/m/only.mp3\"");
        ASSERT_EQ(r.ctx->lstvPlaylist().count(), 1);
        EXPECT_EQ(r.ctx->lstvPlaylist().text(0, 6), "/m/only.mp3");
    }
    {
        Restored r;
        r.write("Playlists/default.spp", row("1", "/old.mp3"));
        r.write("Playlists/Mine.spp", row("7", "/x.mp3") + row("8", "/y.mp3"));
        r.restore("\"" + r.home.file("Playlists/Mine.spp") + "\"");
        ASSERT_EQ(r.ctx->lstvPlaylist().count(), 2);
        EXPECT_EQ(r.ctx->lstvPlaylist().text(0, 0), "01");
        EXPECT_EQ(r.ctx->cmbPlaylists().text(), "Mine");
    }
    {
        // An unquoted path and unknown or combined switches change nothing.
        for (const char* command : {"m/a.mp3", "/bogus", "/play /new"}) {
            Restored r;
            r.write("Playlists/default.spp", row("1", "/old.mp3"));
            r.restore(QString::fromLatin1(command));
            EXPECT_EQ(r.ctx->lstvPlaylist().count(), 1) << command;
            EXPECT_EQ(r.ctx->StartedBySwitch, command[0] == '/') << command;
        }
    }
    {
        Restored r;
        r.write("Playlists/default.spp", row("1", "/old.mp3"));
        r.restore("/systray");
        EXPECT_TRUE(r.ctx->StartedBySwitch);
        EXPECT_FALSE(r.window->isVisible()); // started into the tray: no window
    }
}

TEST(WindowClose, SavesWhatIsKeptOnlyAtExit) {
    Restored r;
    r.write("Playlists/default.spp", row("1", "/a.mp3") + row("2", "/b.mp3"));
    r.restore();
    r.ctx->lstvPlaylist().setSelected(1, true);
    r.ctx->lstvPlaylist().setCurrentRow(1);
    r.window->sldVolume()->setValue(33);
    window_SaveSettingsOnClose(*r.window);
    IniFile ini(r.home.settingsFile());
    EXPECT_EQ(ini.read("Playback", "LastPlayed", ""), "2");
    EXPECT_EQ(ini.read("Playback", "PlaylistUsed", "x"), "");
    EXPECT_EQ(ini.read("Sound", "Volume", ""), "33");
    EXPECT_EQ(ini.read("Appearance", "Fontsize", ""), "8");
    EXPECT_EQ(ini.read("ColumnHeaders_MainWindow", "Number", ""), "800");
    EXPECT_TRUE(QFile::exists(r.home.file("Playlists/default.spp")));

    // An emptied list leaves no default playlist behind.
    r.c().run("mnuNew");
    window_SaveSettingsOnClose(*r.window);
    EXPECT_FALSE(QFile::exists(r.home.file("Playlists/default.spp")));
}

TEST(WindowClose, ClosingWithoutATrayExitsInOrder) {
    Restored r;
    r.restore();
    EXPECT_TRUE(Form_QueryUnload(*r.window, 0)); // the close itself is cancelled...
    EXPECT_TRUE(r.ctx->WindowClosing);           // ...and the exit runs instead
    EXPECT_FALSE(r.window->isVisible());
    EXPECT_EQ(IniFile(r.home.settingsFile()).read("Sound", "Volume", ""), "50");
}

// At twice the scale a 1280 pixel screen is 640 logical pixels wide, and the restored window
// 440: the toolbar's bands wrap rather than hide the sliders in an overflow menu.
TEST(WindowSetup, TheSlidersStayOnANarrowWindow) {
    Restored r;
    r.restore();
    r.c().setChecked("mnuShowToolbar", false);
    r.c().run("mnuShowToolbar");
    ASSERT_TRUE(r.c().isChecked("mnuShowToolbar"));
    r.window->resize(440, 400);
    r.window->show();
    QApplication::processEvents();
    for (QWidget* w : {static_cast<QWidget*>(r.window->sldPosition()),
                       static_cast<QWidget*>(r.window->sldVolume()),
                       static_cast<QWidget*>(r.window->sldBalance()),
                       static_cast<QWidget*>(r.window->cmbPlaylists())}) {
        EXPECT_TRUE(w->isVisible()) << qPrintable(w->objectName());
        const QRect inWindow(w->mapTo(r.window.get(), QPoint(0, 0)), w->size());
        EXPECT_TRUE(r.window->rect().contains(inWindow)) << qPrintable(w->objectName());
    }
    EXPECT_GT(r.window->sliderBand()->y(), r.window->tbToolbar()->y());
    // Wide again, the bands share one row.
    r.window->resize(1600, 400);
    QApplication::processEvents();
    EXPECT_EQ(r.window->sliderBand()->y(), r.window->tbToolbar()->y());
    EXPECT_EQ(r.window->comboBand()->y(), r.window->tbToolbar()->y());
    r.window->hide();
}

// A light list background chosen in the settings, under a dark theme whose text is near white.
TEST(WindowSetup, ALightListBackgroundGetsBlackText) {
    const QPalette old = QApplication::palette();
    QPalette dark = old;
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, QColor(235, 235, 235));
    QApplication::setPalette(dark);
    for (const char* font : {"", "255"}) {
        Restored r;
        r.write("settings.ini",
                QByteArray("[Appearance]\r\nBackgroundColour=16777215\r\nFontColour=") + font +
                    "\r\n");
        r.restore();
        const QPalette shown = r.window->lstvPlaylist()->palette();
        EXPECT_EQ(shown.color(QPalette::Base), QColor(Qt::white));
        // The user's own text colour stands; the theme's gives way to black.
        EXPECT_EQ(shown.color(QPalette::Text), *font ? QColor(Qt::red) : QColor(Qt::black));
    }
    QApplication::setPalette(old);
}
