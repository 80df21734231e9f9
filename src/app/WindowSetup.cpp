#include "app/WindowSetup.h"

#include "app/FrmMain.h"
#include "app/MainMenus.h"
#include "app/WindowClose.h"
#include "app/WindowUpdate.h"
#include "core/App.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/PlaylistCombo.h"
#include "core/Settings.h"
#include "core/SettingsCatalogue.h"
#include "core/SliderModel.h"
#include "core/modControls.h"
#include "core/modDirectorys.h"
#include "core/modFiles.h"
#include "core/wmpPlayer.h"
#include "playback/Lyrics.h"
#include "playlists/ListFiles.h"
#include "playlists/PlaylistEditing.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/PlaylistRows.h"
#include "playlists/TagFill.h"
#include "system/modWindows.h"
#include "ui/ListView.h"

#include <QSlider>

namespace {
const QString kSettings = QStringLiteral("Settings");

// Menu states kept under "Settings", in the order of the catalogue.
struct MenuState {
    const char* key;
    const char* menu;
};
const MenuState kMenuStates[] = {
    {"AlwaysOnTop", "mnuAlwaysOnTop"},
    {"DisableGlobalHotkeys", "mnuWindowsDisableGlobalHotkeys"},
    {"HideInTheTaskManager", "mnuHideInTheTaskManager"},
    {"KeysUseAsArtistFindingKeys", "mnuKeysUseAsArtistFindingKeys"},
    {"KeysUseAsShortcuts", "mnuKeysUseAsShortcuts"},
    {"MessengerShowSongsBeingPlayed", "mnuMessengerShowSongsBeingPlayed"},
    {"ShowCurrentSongAlerts", "mnuWindowsShowEachSongAsItsPlayed"},
    {"ShowFilenamesColumn", "mnuShowFilenamesColumn"},
    {"ShowLyricsWhenAvailable", "mnuWindowsShowLyricsWhenAvailable"},
    {"ShowPlaylistHeaders", "mnuShowPlaylistHeaders"},
    {"ShowStatusBar", "mnuShowStatusBar"},
    {"ShowTimeElapsed", "mnuStatusBarShowTimeElapsed"},
    {"ShowTimeRemaining", "mnuStatusBarShowTimeRemaining"},
    {"ShowToolbar", "mnuShowToolbar"},
    {"TagsShowTagsAsFilesAreAdded", "mnuTagsShowTagsAsFilesAreAdded"},
    {"TagsShowTagsAsFilesArePlayed", "mnuTagsShowTagsAsFilesArePlayed"},
    {"UseID3v2Tags", "mnuTagsUseID3v2Tags"},
};

// Exclusive groups: the first key holding 1 wins and the rest are not read.
struct Group {
    const char* section;
    QList<const char*> keys;
};
const Group kGroups[] = {
    {"Playback",
     {"PlayingShuffleByArtist", "PlayingShuffleByAlbum", "PlayingShuffleByYear",
      "PlayingIntroduction", "PlayingRepeat", "PlayingRepeatOnce", "PlayingStopAfterEnding",
      "PlayingPickRandomSongs", "PlayingGoThroughPlaylistNormally"}},
    {"Playback",
     {"PlaylistRepeat", "PlaylistRepeatOnce", "PlaylistStopAfterEnding",
      "PlaylistPickRandomAfterEnding", "PlaylistSwitchToNext"}},
    {"PlayMode", {"WorkForwardThroughList", "WorkBackwardsThroughPlaylist"}},
};

// A menu whose click handler stands is clicked; otherwise only its mark is set.
void turnOn(Commands& c, const QString& menu) {
    if (c.hasHandler(menu) && !c.isChecked(menu))
        c.run(menu);
    else
        c.setChecked(menu, true);
}
} // namespace

void window_RestoreMenuStates(FrmMain& window) {
    Commands& c = window.ctx().commands();
    for (const MenuState& s : kMenuStates) {
        if (!settings_IsOn(kSettings, QString::fromLatin1(s.key))) continue;
        const QString menu = QString::fromLatin1(s.menu);
        if (menu == QLatin1String("mnuAlwaysOnTop")) {
            c.setChecked(menu, true);
            modWindows::window_SetAlwaysOnTop(&window, true);
        } else {
            turnOn(c, menu);
        }
    }
    window_RestoreLock(window.ctx());
    for (const Group& g : kGroups) {
        for (const char* key : g.keys) {
            if (settings_IsOn(QString::fromLatin1(g.section), QString::fromLatin1(key))) {
                // "PlayingRepeat" is the key of mnuPlayingRepeat, and so on.
                c.setChecked(QStringLiteral("mnu") + QString::fromLatin1(key), true);
                break;
            }
        }
    }
}

void window_Setup(FrmMain& window) {
    MainContext& ctx = window.ctx();
    Commands& c = ctx.commands();
    ListModel& list = ctx.lstvPlaylist();

    // 1. The empty, stopped starting state.
    ConsoleLog::instance().setWriteFlag(false);
    ctx.TransportState = 1;
    ctx.player().Stop();
    ctx.WindowReady = false;
    ctx.SavedVolume = -1;
    ctx.RandomHistoryCount = 0;
    ctx.WindowClosing = false;
    ctx.call(ctx.window_ResetRandomFilenames);
    c.run(QStringLiteral("mnuClear"));

    // 2. The data folders.
    for (const char* folder : {"Playlists", "Logs", "Moods", "Updates"})
        modDirectorys::directory_Create(App::file(QString::fromLatin1(folder)));

    // 3. Place.
    modWindows::window_RestorePosition(&window, QStringLiteral("MainWindow"), 1500);
    ctx.WindowReady = true;
    window.Form_Resize();

    // 5. The video window's size and first place.
    ctx.call(ctx.video_GetSize);
    lyrics_GetSize();

    // 6. Key hints behind the captions.
    MainMenus::appendKeyHints(c);

    // 9-10. Playlists of the folder, then the rows of the last run.
    window_InstallPlaylists(ctx);
    playlist_LoadDefault(ctx);

    // 11. Column widths.
    window.restoreColumnWidths();
    window.Form_Resize();

    // 12. The playlist in use at the last exit.
    const QString playlistUsed =
        settings_Read(QStringLiteral("Playback"), QStringLiteral("PlaylistUsed"));

    // 13. Appearance.
    window.applyAppearance();

    // 14. Menu states.
    window_RestoreMenuStates(window);

    // 15. The row selected at the last exit.
    if (list.count() > 0) {
        bool ok = false;
        const double last = settings_Number(QStringLiteral("Playback"),
                                            QStringLiteral("LastPlayed"), QStringLiteral("1"), &ok);
        if (ok) {
            listview_SelectItem(list, int(last));
            ctx.PlayingRowIndex = int(qBound(-32768.0, last, 32767.0));
        }
    }

    // 16. Sorting.
    window_RestoreSortModes(ctx);

    // 17-18. The combo shows the stored playlist without opening it.
    ctx.PlaylistComboReady = false;
    PlaylistCombo& combo = ctx.cmbPlaylists();
    const int found = playlistUsed.isEmpty() ? -1 : combo.findStringExact(playlistUsed);
    combo.setListIndex(found > 0 ? found : 0);
    ctx.PlaylistComboReady = true;
    tmrWindowUpdate_Timer(window);
    tmrPosition_Timer(window);

    // 19. Volume and balance.
    const auto level = [](const char* key) {
        return int(qBound(0.0,
                          settings_Number(QStringLiteral("Sound"), QString::fromLatin1(key),
                                          QStringLiteral("50")),
                          100.0));
    };
    ctx.sldVolume().setValue(level("Volume"));
    ctx.sldBalance().setValue(level("Balance"));
    if (ctx.player_Volume) ctx.player_Volume(ctx.sldVolume().value());
    if (ctx.player_Balance) ctx.player_Balance(ctx.sldBalance().value());

    // 21. The command line, or music on start-up.
    if (!window.Command.isEmpty()) {
        window_ProcessCommandLine(window, window.Command);
        listview_Renumber(list);
    } else if (settings_IsOn(kSettings, QStringLiteral("PlayMusicOnStartUp"),
                             QStringLiteral("0")) &&
               list.count() > 0) {
        // A last row beyond the list leaves the first selected, as the list view does.
        if (!listview_HasSelection(list)) listview_SelectItem(list, 1);
        if (ctx.player_Play) ctx.player_Play(1);
    }

    // 22. The log writes from here on when the user wants it.
    ConsoleLog::instance().setWriteFlag(
        settings_IsOn(kSettings, QStringLiteral("WriteConsoleLogs"), QStringLiteral("1")));

    // 23. Show, unless started into the tray.
    if (!ctx.StartedBySwitch || window.Command.left(8).toLower() != QLatin1String("/systray"))
        window.show();

    // 24-25. Timers last, so no tick sees a half-restored window.
    window.tmrPosition()->start();
    window.tmrWindowUpdate()->start();
    ctx.WindowShown = true;
}

void window_ProcessCommandLine(FrmMain& window, QString commandLine) {
    MainContext& ctx = window.ctx();
    Commands& c = ctx.commands();
    ListModel& list = ctx.lstvPlaylist();
    const bool resort = !c.isChecked(QStringLiteral("mnuDontSort"));
    if (resort) list.setSorted(false);
    const auto play = [&ctx] {
        if (ctx.player_Play) ctx.player_Play(1);
    };
    const bool clearFirst = settings_IsOn(
        kSettings, QStringLiteral("ClearPlaylistWhenFilesAreAddedOnStartUp"), QStringLiteral("0"));

    if (commandLine.isEmpty()) {
        // nothing to do
    } else if (commandLine.contains(QLatin1String("\" \""))) {
        // Several quoted paths.
        commandLine = commandLine.mid(1, commandLine.size() - 2);
        const QStringList paths = commandLine.split(QStringLiteral("\" \""));
        if (clearFirst) listview_Clear(list);
        const int oldCount = list.count();
        // The rows of playlist_AddSong, added in one step, with the numbers the renumbering
        // after this gives them, so that it finds nothing to change.
        std::vector<QStringList> rows;
        rows.reserve(size_t(paths.size()));
        const int width = listview_NumberWidth(oldCount + int(paths.size()));
        const QString status = QStringLiteral("Play");
        for (const QString& path : paths)
            rows.push_back({listview_NumberText(oldCount + int(rows.size()) + 1, width), QString(),
                            QString(), QString(), status, QString(), path});
        list.appendRows(std::move(rows));
        // The song about to play gets its tags now, the others once the window shows; the
        // sorting waits for them.
        playlist_UpdateItem(ctx, oldCount + 1,
                            !c.isChecked(QStringLiteral("mnuTagsShowTagsAsFilesAreAdded")));
        listview_SelectItem(list, oldCount + 1);
        play();
        ctx.StartedBySwitch = false;
        playlist_ShowMP3DataInSlices(ctx, 1, [&list, resort] {
            if (resort) list.setSorted(true);
        });
        return;
    } else if (commandLine.startsWith(QLatin1Char('"'))) {
        // One quoted path: a playlist to open, or a file to add.
        commandLine = commandLine.mid(1, commandLine.size() - 2);
        if (modFiles::file_GetExtension(commandLine).toLower() == QLatin1String("spp")) {
            listview_Clear(list);
            listview_LoadFromFile(list, commandLine);
            if (ctx.recentPlaylists_Add) ctx.recentPlaylists_Add(commandLine);
            listview_Renumber(list);
            playlist_Select(ctx, commandLine);
            listview_SelectItem(list, 1);
            ctx.StartedBySwitch = false;
            play();
        } else {
            if (clearFirst) listview_Clear(list);
            playlist_AddSong(ctx, QString(), QString(), QString(), commandLine);
            listview_SelectItem(list, list.count());
            if (c.isChecked(QStringLiteral("mnuTagsShowTagsAsFilesAreAdded")))
                playlist_UpdateItem(ctx, list.count(), false);
            ctx.StartedBySwitch = false;
            play();
        }
    } else if (commandLine.startsWith(QLatin1Char('/'))) {
        // One switch; a combination other than the autostart pair matches nothing.
        const QString sw = commandLine.toLower();
        const bool tray =
            settings_IsOn(kSettings, QStringLiteral("UseSystemTraySupport"), QStringLiteral("1"));
        if (sw == QLatin1String("/play")) {
            listview_SelectItem(list, 1);
            play();
        } else if (sw == QLatin1String("/systray") || sw == QLatin1String("/systray /winload")) {
            if (tray) window_MinimizeToTray(window);
            if (sw.endsWith(QLatin1String("/winload")) &&
                settings_IsOn(kSettings, QStringLiteral("ShowOptionsWindow"), QStringLiteral("1")))
                c.run(QStringLiteral("mnuOptionsWindow"));
        } else if (sw == QLatin1String("/minimize")) {
            window.setWindowState(window.windowState() | Qt::WindowMinimized);
        } else if (sw == QLatin1String("/cd")) {
            c.run(QStringLiteral("mnuOpenCDPlayer"));
        } else if (sw == QLatin1String("/ml")) {
            c.run(QStringLiteral("mnuOpenMediaLibrary"));
        } else if (sw == QLatin1String("/new")) {
            c.run(QStringLiteral("mnuNew"));
        }
        ctx.StartedBySwitch = true;
    }
    // A path without quotes is ignored.
    if (resort) list.setSorted(true);
}
