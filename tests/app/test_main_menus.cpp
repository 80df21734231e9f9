#include "app/MenuHelp.h"
#include "app/RestoredWindow.h"
#include "core/App.h"
#include "core/IniFile.h"
#include "core/ListModel.h"
#include "ui/FrmAbout.h"

#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

namespace {

QMenu* topMenu(FrmMain& w, int submenu) {
    const QList<QAction*> tops = w.menuBar()->actions();
    return submenu < tops.size() ? tops[submenu]->menu() : nullptr;
}

// Where an entry sits in the menu bar: top menu and position, separators counted.
std::pair<int, int> placeOf(FrmMain& w, const QString& name) {
    const QList<QAction*> tops = w.menuBar()->actions();
    for (int m = 0; m < tops.size(); ++m) {
        const QList<QAction*> entries = tops[m]->menu()->actions();
        for (int p = 0; p < entries.size(); ++p)
            if (entries[p]->objectName() == name) return {m, p};
    }
    return {-1, -1};
}

// Every entry of the bar, sub-menus walked.
QStringList allEntries(QMenuBar* bar) {
    QStringList out;
    QList<QMenu*> menus;
    for (QAction* a : bar->actions())
        menus.append(a->menu());
    for (int i = 0; i < menus.size(); ++i)
        for (QAction* a : menus[i]->actions()) {
            if (a->menu()) menus.append(a->menu());
            out.append(a->objectName());
        }
    return out;
}

QString plain(QString caption) {
    return caption.section(QLatin1Char('\t'), 0, 0).remove(QLatin1Char('&'));
}

} // namespace

TEST(MainMenus, TopMenusInTheirOrder) {
    Restored r;
    r.restore();
    QStringList titles;
    for (QAction* a : r.window->menuBar()->actions())
        titles.append(plain(a->text()));
    EXPECT_EQ(titles, (QStringList{"File", "Playback", "Playlist", "Window", "Help"}));
}

TEST(MainMenus, EachHelpTextDescribesTheEntryAtItsPlace) {
    Restored r;
    r.restore();
    const std::pair<const char*, const char*> expected[] = {
        {"mnuNew", "Create a new playlist."},
        {"mnuAddFiles", "Add files to the current playlist."},
        {"mnuAddDirectory", "Add a directory of audio files to the current playlist."},
        {"mnuOpenPlaylist", "Open an existing playlist."},
        {"mnuSaveAsDefault", "Set the current playlist as the default playlist used."},
        {"mnuPrint", "Print the current playlist to a selected printer."},
        {"mnuPreferences", "Show the preferences available in VELDOR."},
        {"mnuExit", "Exit VELDOR."},
        {"mnuPrevious", "Select the previous song in the playlist."},
        {"mnuRewind", "Rewind the song by the selected seconds specified."},
        {"mnuRandom", "Select a random song from the playlist and play it."},
        {"mnuNextTrackAdvanced", "Using the options selected, select the next song to play."},
        {"mnuMute", "Mute VELDOR."},
        {"mnuLockPlaylist", "Lock the playlist so that no alterations can be made."},
        {"mnuOpenCDPlayer", "Show the CD Player, which will allow you to play audio CD's."},
        {"mnuOpenMediaLibrary",
         "Show the Media Library, which will allow you to better organize your media files."},
        {"mnuHideInTheTaskManager",
         "Make sure VELDOR is not shown in the Task Manager (in the Applications section)."},
        {"mnuSwitchToMiniMode", "Switch from using the main window to using the Mini-Mode window."},
        {"mnuShowFilenamesColumn",
         "Show the filename for every song list in the playlist on the main window."},
        {"mnuReCenterWindow", "Center the main window within the screen."},
        {"mnuConsole", "Show all of the logs about the use of VELDOR."},
        {"mnuVolumes", "Show the media files that have specific volume settings saved for them."},
        {"mnuHomepage", "Go to the main Kelmora website, where you can check for updates, etc."},
        {"mnuCheckForUpdates", "Check for the lastest updates available online."},
        {"mnuAbout", "Show information about this version of VELDOR."},
        {"mnuAboutWindows", "Show information about this version of Microsoft Windows."},
    };
    for (const auto& [name, text] : expected) {
        const auto [submenu, position] = placeOf(*r.window, QString::fromLatin1(name));
        EXPECT_EQ(menu_HelpText(submenu, position), QString::fromLatin1(text)) << name;
    }
    // Separators and sub-menus have no help.
    EXPECT_EQ(menu_HelpText(0, 1), "");
    EXPECT_EQ(menu_HelpText(2, 1), "");
}

TEST(MainMenus, AccessKeysAreUniqueWithinEachMenu) {
    Restored r;
    r.restore();
    QList<QMenu*> menus;
    for (QAction* a : r.window->menuBar()->actions())
        menus.append(a->menu());
    for (int i = 0; i < menus.size(); ++i) {
        QSet<QChar> keys;
        for (QAction* a : menus[i]->actions()) {
            if (a->menu()) menus.append(a->menu());
            const QString caption = a->text().section(QLatin1Char('\t'), 0, 0);
            const qsizetype amp = caption.indexOf(QRegularExpression(QStringLiteral("&[^&]")));
            if (a->isSeparator() || amp < 0) continue;
            const QChar key = caption.at(amp + 1).toLower();
            EXPECT_FALSE(keys.contains(key))
                << qPrintable(menus[i]->objectName()) << ": " << qPrintable(caption);
            keys.insert(key);
        }
    }
}

TEST(MainMenus, ALockedListCanBeUnlockedFromTheMenuBar) {
    Restored r;
    r.write("Playlists/default.spp", row("1", "/a.mp3") + row("2", "/b.mp3"));
    r.restore();
    r.c().run("mnuLockPlaylist");
    ASSERT_TRUE(r.c().isChecked("mnuLockPlaylist"));
    QMenu* playlist = topMenu(*r.window, 2);
    ASSERT_NE(playlist, nullptr);
    EXPECT_TRUE(playlist->menuAction()->isEnabled());
    QAction* lock = playlist->actions().value(0);
    ASSERT_NE(lock, nullptr);
    EXPECT_EQ(lock->objectName(), "mnuLockPlaylist");
    EXPECT_TRUE(lock->isEnabled());
    // What the lock takes away is gone from the same menu.
    EXPECT_FALSE(r.c().isEnabled("mnuEdit"));
    EXPECT_FALSE(r.c().isEnabled("mnuOpenMediaLibrary"));
    lock->trigger();
    EXPECT_FALSE(r.c().isChecked("mnuLockPlaylist"));
    EXPECT_TRUE(r.c().isEnabled("mnuEdit"));
}

TEST(MainMenus, EveryCommandOfTheMainWindowHasItsEntry) {
    Restored r;
    r.restore();
    const QStringList entries = allEntries(r.window->menuBar());
    for (const char* name :
         {"mnuOpenMood", "mnuRecentMediaFiles", "mnuPlayingRepeatOnce",
          "mnuWorkBackwardsThroughPlaylist", "mnuSortViaDecending", "mnuJumpBack10Tracks",
          "mnuDeleteAllPlaylists", "mnuUseRandomSongsForPlaylist", "mnuPlaylistMoveMusicToFolder",
          "mnuSelectedRenameFilename", "mnuKeysUseAsArtistFindingKeys",
          "mnuMessengerShowSongsBeingPlayed", "mnuStatusBarShowTimeRemaining",
          "mnuFontsizeDecrease", "mnuForum"})
        EXPECT_TRUE(entries.contains(QString::fromLatin1(name))) << name;
    // One entry, one place.
    QStringList named = entries.filter(QRegularExpression(QStringLiteral("^mnu")));
    named.removeAll(QStringLiteral("mnuLineBreak6"));
    EXPECT_EQ(named.size(), QSet<QString>(named.begin(), named.end()).size());
}

TEST(MainMenus, EntriesWithoutAHandlerStayGreyed) {
    Restored r;
    r.write("Playlists/default.spp", row("1", "/a.mp3"));
    r.restore();
    for (const char* name : {"mnuManagePlaylists", "mnuPlaylistEditAllTags", "mnuJumpToFirstTrack",
                             "mnuForum", "mnuWindowsEditWindowsGLobalHotkeys"}) {
        EXPECT_FALSE(r.c().isEnabled(QString::fromLatin1(name))) << name;
    }
    // The two time displays of the status bar are one choice.
    r.c().run("mnuStatusBarShowTimeRemaining");
    EXPECT_TRUE(r.c().isChecked("mnuStatusBarShowTimeRemaining"));
    EXPECT_FALSE(r.c().isChecked("mnuStatusBarShowTimeElapsed"));
    EXPECT_EQ(IniFile(r.home.settingsFile()).read("Settings", "ShowTimeRemaining", ""), "1");
    EXPECT_EQ(IniFile(r.home.settingsFile()).read("Settings", "ShowTimeElapsed", ""), "0");
}

TEST(MenuHelp, HoverBorrowsTheStatusPanelUntilTheMenusClose) {
    Restored r;
    r.restore();
    menu_Hovered(*r.ctx, 2, 0);
    EXPECT_EQ(r.ctx->statusText(), "Lock the playlist so that no alterations can be made.");
    EXPECT_TRUE(r.ctx->PlaylistBusy);
    menu_Hovered(*r.ctx, 1, 1); // a separator: no help, the panel is given back
    EXPECT_FALSE(r.ctx->PlaylistBusy);
    // A long operation's own PlaylistBusy is not taken away by the menus.
    r.ctx->PlaylistBusy = true;
    menu_Hovered(*r.ctx, 0, 0);
    menu_Closed(*r.ctx);
    EXPECT_TRUE(r.ctx->PlaylistBusy);
}

TEST(MainMenus, AboutShowsTheNameAndVersion) {
    Restored r;
    r.restore();
    ASSERT_TRUE(r.c().isEnabled("mnuAbout"));
    r.c().run("mnuAbout");
    auto* about = r.window->findChild<FrmAbout*>(QStringLiteral("FrmAbout"));
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(about->isVisible());
    EXPECT_EQ(about->lblTitle()->text(), "VELDOR");
    EXPECT_TRUE(about->lblVersion()->text().contains(App::versionText()));
    // A second request brings back the same window.
    r.c().run("mnuAbout");
    EXPECT_EQ(r.window->findChildren<FrmAbout*>().size(), 1);
    about->close();
}
