#include "app/FrmMain.h"
#include "app/MainEvents.h"
#include "app/WindowClose.h"
#include "app/WindowSetup.h"
#include "core/Commands.h"
#include "core/DialogScript.h"
#include "core/IniFile.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "playback/Player.h"
#include "core/ListModel.h"
#include "core/PlaylistCombo.h"
#include "playlists/PlaylistEditing.h"
#include "playlists/PlaylistFiles.h"
#include "support/TempHome.h"

#include <QFile>
#include <QSlider>
#include <gtest/gtest.h>

namespace {

QByteArray row(const QString& n, const QString& path) {
    QByteArray out;
    for (const QString& v : {n, QStringLiteral("Artist"), QStringLiteral("Title"), QString(),
                             QStringLiteral("Play"), QString(), path})
        out += '"' + v.toUtf8() + "\"\r\n";
    return out;
}

// A main window, never shown on screen, restored from a prepared data folder.
struct Restored {
    TempHome home;
    ScriptedResponder dialogs;
    std::unique_ptr<MainContext> ctx;
    std::unique_ptr<FrmMain> window;

    Restored() { Dialogs::setResponder(&dialogs); }
    ~Restored() {
        window.reset();
        Dialogs::setResponder(nullptr);
    }
    void write(const QString& relative, const QByteArray& bytes) {
        TempHome::writeFile(home.file(relative), bytes);
    }
    void restore(const QString& command = {}) {
        ctx = std::make_unique<MainContext>();
        window = std::make_unique<FrmMain>(*ctx);
        Player_install(*ctx);
        PlaylistEditing_install(*ctx);
        PlaylistFiles_install(*ctx);
        MainEvents_install(*window);
        window->Command = command;
        window_Setup(*window);
    }
    Commands& c() { return ctx->commands(); }
};

} // namespace

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
        EXPECT_EQ(list.text(2, 1), "c, d"); // no tags: the file title stands as artist
        EXPECT_EQ(list.selectedItem(), 1);  // the first of the new rows
        EXPECT_FALSE(r.ctx->StartedBySwitch);
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
