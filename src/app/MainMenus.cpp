#include "app/MainMenus.h"

#include "core/Commands.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>
#include <QToolBar>

namespace MainMenus {
namespace {

struct Entry {
    const char* name;
    const char* caption;
    bool checkable;
};

// The menu bar in order; "-" is a separator, ">name|caption" opens a sub-menu, "<" closes it.
// Positions in the five top menus count separators, and the menu help is keyed by them.
const char* const kLayout[] = {
    ">mnuFile|&File",
    "mnuNew",              // 0
    "-mnuLineBreak6",      // 1
    "mnuAddFiles",         // 2
    "mnuAddPlaylist",      // 3
    "mnuAddLocation",      // 4
    "mnuAddDirectory",     // 5
    "-",                   // 6
    "mnuOpenPlaylist",     // 7
    "mnuOpenMood",         // 8
    "mnuOpenBookmark",     // 9
    "-mnuLineBreak2",      // 10
    "mnuSave",             // 11
    "mnuSavePlaylistAs",   // 12
    "mnuSaveAsDefault",    // 13
    "-mnuLineBreak20",     // 14
    "mnuPrint",            // 15
    "-mnuLineBreak11",     // 16
    "mnuRecentMediaFiles", // 17
    "mnuRecentPlaylists",  // 18
    "-mnuLineBreak16",     // 19
    "mnuPreferences",      // 20
    "-mnuLineBreak3",      // 21
    "mnuExit",             // 22
    "<",
    ">mnuPlayback|&Playback",
    "mnuPrevious",                 // 0
    "-",                           // 1
    "mnuRewind",                   // 2
    "mnuPlay",                     // 3
    "mnuPause",                    // 4
    "mnuStop",                     // 5
    "mnuRandom",                   // 6
    "mnuFastForward",              // 7
    "-",                           // 8
    "mnuNextTrack",                // 9
    "mnuNextTrackAdvanced",        // 10
    "-",                           // 11
    "mnuPlayNext",                 // 12
    ">mnuPlayingModes|Play M&ode", // 13
    "mnuPlayingGoThroughPlaylistNormally",
    "mnuPlayingShuffleByArtist",
    "mnuPlayingShuffleByAlbum",
    "mnuPlayingShuffleByYear",
    "mnuPlayingIntroduction",
    "mnuPlayingRepeat",
    "mnuPlayingRepeatOnce",
    "mnuPlayingStopAfterEnding",
    "mnuPlayingPickRandomSongs",
    "<",
    ">mnuPlaylistModes|Play&list Mode", // 14
    "mnuPlaylistStopAfterEnding",
    "mnuPlaylistRepeat",
    "mnuPlaylistRepeatOnce",
    "mnuPlaylistPickRandomAfterEnding",
    "mnuPlaylistSwitchToNext",
    "-",
    "mnuWorkForwardThroughList",
    "mnuWorkBackwardsThroughPlaylist",
    "<",
    "-",       // 15
    "mnuMute", // 16
    "<",
    ">mnuPlaylistMenu|Play&list",
    "mnuLockPlaylist", // 0: outside every menu the lock disables, so it can always be undone
    "-",               // 1
    ">mnuEdit|&Edit",  // 2
    "mnuCut",
    "mnuCopy",
    "mnuPaste",
    "mnuClear",
    "-",
    "mnuSelectAll",
    "<",
    ">mnuSelected|&Selected", // 3
    "mnuSelectedMoveUp",
    "mnuSelectedMoveDown",
    "mnuSelectedCrop",
    "-",
    "mnuRemoveSelected",
    "mnuRemovePhysicallyDeleteSelected",
    "-",
    "mnuSelectedRenameFilename",
    "mnuProperties",
    "<",
    ">mnuEntries|E&ntries", // 4
    "mnuRemoveAlDeadFilenames",
    "mnuRemoveDuplicateFilenames",
    "-",
    "mnuPlaylistRefreshTags",
    "-",
    "mnuPlaylistEditAllTags",
    "mnuPlaylistRenameAllFilenames",
    "mnuPlaylistMoveMusicToFolder",
    "<",
    ">mnuArrange|&Arrange", // 5
    ">mnuSort|&Sort",
    "mnuSortByArtist",
    "mnuSortByTitle",
    "mnuSortByYear",
    "mnuSortByLength",
    "mnuSortByFilename",
    "-",
    "mnuSortViaAcending",
    "mnuSortViaDecending",
    "mnuDontSort",
    "<",
    "mnuShuffleThePlaylist",
    "<",
    ">mnuJump|&Jump", // 6
    "mnuJumpToCurrentlyPlaying",
    "mnuJumpToMedia",
    "mnuJumpToTime",
    "mnuJumpToTrackNumber",
    "-",
    "mnuJumpToFirstTrack",
    "mnuJumpToMiddleTrack",
    "mnuJumpToLastTrack",
    "-",
    "mnuJumpForward5Tracks",
    "mnuJumpForward10Tracks",
    "mnuJumpBack5Tracks",
    "mnuJumpBack10Tracks",
    "-",
    "mnuJumpToNextPlaylist",
    "mnuJumpToPreviousPlaylist",
    "mnuJumpToRandomPlaylist",
    "<",
    ">mnuPlaylists|Pla&ylists", // 7
    "mnuManagePlaylists",
    "mnuRenameCurrentPlaylist",
    "mnuDeleteCurrentPlaylist",
    "mnuDeleteAllPlaylists",
    "-",
    "mnuGeneratePlaylist",
    "mnuUseRandomSongsForPlaylist",
    "<",
    "mnuOpenCDPlayer",      // 8
    "mnuOpenMediaLibrary",  // 9
    "-",                    // 10
    ">mnuOptions|&Options", // 11
    "mnuTagsShowTagsAsFilesAreAdded",
    "mnuTagsShowTagsAsFilesArePlayed",
    "mnuTagsUseID3v2Tags",
    "-",
    "mnuKeysUseAsShortcuts",
    "mnuKeysUseAsArtistFindingKeys",
    "-",
    "mnuWindowsDisableGlobalHotkeys",
    "mnuWindowsEditWindowsGLobalHotkeys",
    "<",
    ">mnuDisplay|&Display", // 12
    "mnuFontsizeIncrease",
    "mnuFontsizeDecrease",
    "<",
    "<",
    ">mnuWindowMenu|&Window",
    "mnuAlwaysOnTop",                    // 0
    "mnuHideInTheTaskManager",           // 1
    "-",                                 // 2
    "mnuWindowsShowEachSongAsItsPlayed", // 3
    "mnuWindowsShowLyricsWhenAvailable", // 4
    "mnuMessengerShowSongsBeingPlayed",  // 5
    "-",                                 // 6
    "mnuSwitchToMiniMode",               // 7
    "-",                                 // 8
    "mnuShowToolbar",                    // 9
    "mnuShowStatusBar",                  // 10
    "mnuShowPlaylistHeaders",            // 11
    "mnuShowFilenamesColumn",            // 12
    "-",                                 // 13
    "mnuReCenterWindow",                 // 14
    "-",                                 // 15
    "mnuStatusBarShowTimeElapsed",       // 16
    "mnuStatusBarShowTimeRemaining",     // 17
    "<",
    ">mnuHelp|&Help",
    "mnuConsole",         // 0
    "mnuTracking",        // 1
    "mnuVolumes",         // 2
    "-",                  // 3
    "mnuForum",           // 4
    "mnuHomepage",        // 5
    "-",                  // 6
    "mnuCheckForUpdates", // 7
    "-",                  // 8
    "mnuAbout",           // 9
    "mnuAboutWindows",    // 10
    "<",
};

const Entry kEntries[] = {
    {"mnuNew", "&New Playlist", false},
    {"mnuAddFiles", "Add &Files...", false},
    {"mnuAddPlaylist", "Add Pla&ylist...", false},
    {"mnuAddLocation", "Add &Location...", false},
    {"mnuAddDirectory", "Add &Directory...", false},
    {"mnuOpenPlaylist", "&Open Playlist...", false},
    {"mnuOpenMood", "Open &Mood", false},
    {"mnuOpenBookmark", "Open &Bookmark", false},
    {"mnuSave", "&Save Playlist", false},
    {"mnuSavePlaylistAs", "Save Playlist &As...", false},
    {"mnuSaveAsDefault", "Save As Defa&ult", false},
    {"mnuPrint", "&Print Playlist...", false},
    {"mnuRecentMediaFiles", "Recent M&edia Files", false},
    {"mnuRecentPlaylists", "Recent Playlis&ts", false},
    {"mnuPreferences", "P&references...", false},
    {"mnuExit", "E&xit", false},
    {"mnuPrevious", "Pre&vious", false},
    {"mnuRewind", "&Rewind", false},
    {"mnuPlay", "&Play", false},
    {"mnuPause", "P&ause", false},
    {"mnuStop", "&Stop", false},
    {"mnuRandom", "Rando&m", false},
    {"mnuFastForward", "&Fast Forward", false},
    {"mnuNextTrack", "&Next", false},
    {"mnuNextTrackAdvanced", "Next (A&dvanced)", false},
    {"mnuPlayNext", "Play Ne&xt...", false},
    {"mnuMute", "Mut&e", true},
    {"mnuPlayingGoThroughPlaylistNormally", "Go Through Playlist &Normally", true},
    {"mnuPlayingShuffleByArtist", "Shuffle By &Artist", true},
    {"mnuPlayingShuffleByAlbum", "Shuffle By A&lbum", true},
    {"mnuPlayingShuffleByYear", "Shuffle By &Year", true},
    {"mnuPlayingIntroduction", "&Introduction", true},
    {"mnuPlayingRepeat", "&Repeat", true},
    {"mnuPlayingRepeatOnce", "Repeat &Once", true},
    {"mnuPlayingStopAfterEnding", "&Stop After Ending", true},
    {"mnuPlayingPickRandomSongs", "&Pick Random Songs", true},
    {"mnuPlaylistStopAfterEnding", "Playlist:  &Stop After Ending", true},
    {"mnuPlaylistRepeat", "Playlist:  &Repeat", true},
    {"mnuPlaylistRepeatOnce", "Playlist:  Repeat &Once", true},
    {"mnuPlaylistPickRandomAfterEnding", "Playlist:  &Pick Random After Ending", true},
    {"mnuPlaylistSwitchToNext", "Playlist:  S&witch To Next", true},
    {"mnuWorkForwardThroughList", "Work &Forward Through List", true},
    {"mnuWorkBackwardsThroughPlaylist", "Work &Backwards Through List", true},
    {"mnuLockPlaylist", "&Lock Playlist", true},
    {"mnuCut", "Cu&t", false},
    {"mnuCopy", "&Copy", false},
    {"mnuPaste", "&Paste", false},
    {"mnuClear", "C&lear Clipboard", false},
    {"mnuSelectAll", "Select &All", false},
    {"mnuSelectedMoveUp", "Move &Up", false},
    {"mnuSelectedMoveDown", "Move &Down", false},
    {"mnuSelectedCrop", "&Crop", false},
    {"mnuRemoveSelected", "&Remove", false},
    {"mnuRemovePhysicallyDeleteSelected", "P&hysically Delete...", false},
    {"mnuSelectedRenameFilename", "Re&name Filename...", false},
    {"mnuProperties", "&Properties...", false},
    {"mnuRemoveAlDeadFilenames", "Remove &Dead Filenames", false},
    {"mnuRemoveDuplicateFilenames", "Remove D&uplicate Filenames", false},
    {"mnuPlaylistRefreshTags", "Refresh &Tags", false},
    {"mnuPlaylistEditAllTags", "&Edit All ID3 Tags...", false},
    {"mnuPlaylistRenameAllFilenames", "&Rename All Filenames...", false},
    {"mnuPlaylistMoveMusicToFolder", "&Move Music To Folder...", false},
    {"mnuSortByArtist", "Sort By:  &Artist", true},
    {"mnuSortByTitle", "Sort By:  &Title", true},
    {"mnuSortByYear", "Sort By:  &Year", true},
    {"mnuSortByLength", "Sort By:  &Length", true},
    {"mnuSortByFilename", "Sort By:  &Filename", true},
    {"mnuSortViaAcending", "Sort Via:  A&scending", true},
    {"mnuSortViaDecending", "Sort Via:  &Descending", true},
    {"mnuDontSort", "Sort Via:  Do&n't Sort", true},
    {"mnuShuffleThePlaylist", "S&huffle the Playlist", false},
    {"mnuJumpToCurrentlyPlaying", "To &Currently Playing", false},
    {"mnuJumpToMedia", "To &Media...", false},
    {"mnuJumpToTime", "To &Time...", false},
    {"mnuJumpToTrackNumber", "To Track &Number...", false},
    {"mnuJumpToFirstTrack", "To &First Track", false},
    {"mnuJumpToMiddleTrack", "To Mi&ddle Track", false},
    {"mnuJumpToLastTrack", "To &Last Track", false},
    {"mnuJumpForward5Tracks", "Forward &5 Tracks", false},
    {"mnuJumpForward10Tracks", "Forward &10 Tracks", false},
    {"mnuJumpBack5Tracks", "&Back 5 Tracks", false},
    {"mnuJumpBack10Tracks", "B&ack 10 Tracks", false},
    {"mnuJumpToNextPlaylist", "To N&ext Playlist", false},
    {"mnuJumpToPreviousPlaylist", "To &Previous Playlist", false},
    {"mnuJumpToRandomPlaylist", "To &Random Playlist", false},
    {"mnuManagePlaylists", "&Manage Playlists...", false},
    {"mnuRenameCurrentPlaylist", "Current:  &Rename...", false},
    {"mnuDeleteCurrentPlaylist", "Current:  &Delete...", false},
    {"mnuDeleteAllPlaylists", "Delete &All Playlists...", false},
    {"mnuGeneratePlaylist", "&Generate Playlist...", false},
    {"mnuUseRandomSongsForPlaylist", "Random &Songs Playlist...", false},
    {"mnuOpenCDPlayer", "&CD Player", true},
    {"mnuOpenMediaLibrary", "&Media Library", true},
    {"mnuTagsShowTagsAsFilesAreAdded", "Tags:  Show Tags As Files Are &Added", true},
    {"mnuTagsShowTagsAsFilesArePlayed", "Tags:  Show Tags As Files Are &Played", true},
    {"mnuTagsUseID3v2Tags", "Tags:  Use ID3v&2 Tags", true},
    {"mnuKeysUseAsShortcuts", "Keys:  Use As &Shortcut Keys...", true},
    {"mnuKeysUseAsArtistFindingKeys", "Keys:  Use As Artist &Finding Keys...", true},
    {"mnuWindowsDisableGlobalHotkeys", "Windows:  &Disable Global Hotkeys...", true},
    {"mnuWindowsEditWindowsGLobalHotkeys", "Windows:  &Edit Windows Global Hotkeys...", false},
    {"mnuFontsizeIncrease", "&Increase Font Size", false},
    {"mnuFontsizeDecrease", "&Decrease Font Size", false},
    {"mnuAlwaysOnTop", "&Always On Top", true},
    {"mnuHideInTheTaskManager", "&Hide In The Task Manager", true},
    {"mnuWindowsShowEachSongAsItsPlayed", "Show &Each Song As Its Played", true},
    {"mnuWindowsShowLyricsWhenAvailable", "Show L&yrics When Available", true},
    {"mnuMessengerShowSongsBeingPlayed", "Show Songs Being Played To The &Messenger", true},
    {"mnuSwitchToMiniMode", "Switch To Mi&ni-Mode", true},
    {"mnuShowToolbar", "Show &Toolbar", true},
    {"mnuShowStatusBar", "Show &Status Bar", true},
    {"mnuShowPlaylistHeaders", "Show Playlist Hea&ders", true},
    {"mnuShowFilenamesColumn", "Show &Filenames Column", true},
    {"mnuReCenterWindow", "Re-&Center Window", false},
    {"mnuStatusBarShowTimeElapsed", "Status Bar:  Show Time E&lapsed", true},
    {"mnuStatusBarShowTimeRemaining", "Status Bar:  Show Time &Remaining", true},
    {"mnuConsole", "&Console", false},
    {"mnuTracking", "&Tracking", false},
    {"mnuVolumes", "Adjust &Volumes", false},
    {"mnuForum", "Kelmora &Forum", false},
    {"mnuHomepage", "Kelmora &Website", false},
    {"mnuCheckForUpdates", "Check For &Updates...", false},
    {"mnuAbout", "&About VELDOR...", false},
    {"mnuAboutWindows", "About The &System...", false},
};

struct Button {
    const char* key;
    const char* command;
    QStyle::StandardPixmap icon;
};
const Button kButtons[] = {
    {"Previous", "mnuPrevious", QStyle::SP_MediaSkipBackward},
    {"Rewind", "mnuRewind", QStyle::SP_MediaSeekBackward},
    {"Play", "mnuPlay", QStyle::SP_MediaPlay},
    {"Pause", "mnuPause", QStyle::SP_MediaPause},
    {"Stop", "mnuStop", QStyle::SP_MediaStop},
    {"Random", "mnuRandom", QStyle::SP_BrowserReload},
    {"FastForward", "mnuFastForward", QStyle::SP_MediaSeekForward},
    {"Next", "mnuNextTrack", QStyle::SP_MediaSkipForward},
    {"NextAdvanced", "mnuNextTrackAdvanced", QStyle::SP_MediaSeekForward},
    {nullptr, nullptr, QStyle::SP_CustomBase},
    {"PreviousPlaylist", "mnuJumpToPreviousPlaylist", QStyle::SP_ArrowUp},
    {"NextPlaylist", "mnuJumpToNextPlaylist", QStyle::SP_ArrowDown},
    {nullptr, nullptr, QStyle::SP_CustomBase},
    {"AddFiles", "mnuAddFiles", QStyle::SP_DialogOpenButton},
    {nullptr, nullptr, QStyle::SP_CustomBase},
    {"Mute", "mnuMute", QStyle::SP_MediaVolume},
};

} // namespace

void createCommands(Commands& commands) {
    for (const Entry& e : kEntries)
        commands.add(QString::fromLatin1(e.name), QString::fromUtf8(e.caption), e.checkable);
}

void buildMenuBar(Commands& commands, QMenuBar* bar) {
    QList<QMenu*> stack;
    for (const char* item : kLayout) {
        const QString s = QString::fromLatin1(item);
        if (s.startsWith(QLatin1Char('>'))) {
            const QStringList parts = s.mid(1).split(QLatin1Char('|'));
            QMenu* menu =
                stack.isEmpty() ? bar->addMenu(parts[1]) : stack.last()->addMenu(parts[1]);
            menu->setObjectName(parts[0]);
            menu->setAccessibleName(QString(parts[1]).remove(QLatin1Char('&')));
            // A sub-menu is a command too: it can be disabled by name.
            QAction* a = menu->menuAction();
            a->setObjectName(parts[0]);
            if (!commands.has(parts[0])) {
                QAction* named = commands.action(parts[0]);
                named->setText(parts[1]);
                QObject::connect(named, &QAction::enabledChanged, a, &QAction::setEnabled);
                QObject::connect(named, &QAction::visibleChanged, a,
                                 [a, named] { a->setVisible(named->isVisible()); });
            }
            stack.append(menu);
        } else if (s == QLatin1String("<")) {
            stack.removeLast();
        } else if (s.startsWith(QLatin1Char('-'))) {
            QAction* sep = stack.last()->addSeparator();
            if (s.size() > 1) {
                // Named separators can be hidden by name (the empty list's pop-up hides some).
                QAction* named = commands.action(s.mid(1));
                named->setSeparator(true);
                QObject::connect(named, &QAction::visibleChanged, sep,
                                 [sep, named] { sep->setVisible(named->isVisible()); });
            }
        } else {
            stack.last()->addAction(commands.action(s));
        }
    }
}

void buildToolbar(Commands& commands, QToolBar* toolbar) {
    QStyle* style = QApplication::style();
    for (const Button& b : kButtons) {
        if (!b.key) {
            toolbar->addSeparator();
            continue;
        }
        // A toolbar button has its own enabled state, so it is its own command: "tb" + key.
        const QString name = QStringLiteral("tb") + QString::fromLatin1(b.key);
        QAction* button = commands.action(name);
        QAction* target = commands.action(QString::fromLatin1(b.command));
        button->setText(
            QString(target->text()).remove(QLatin1Char('&')).section(QLatin1Char('\t'), 0, 0));
        button->setIcon(style->standardIcon(b.icon));
        button->setToolTip(button->text());
        commands.setHandler(name, [&commands, target] {
            if (target->isEnabled()) commands.run(target->objectName());
        });
        toolbar->addAction(button);
    }
}

QStringList containerNames() {
    QStringList names;
    for (const char* item : kLayout)
        if (item[0] == '>')
            names.append(QString::fromLatin1(item + 1).section(QLatin1Char('|'), 0, 0));
    return names;
}

QHash<QString, QString> toolbarTargets() {
    QHash<QString, QString> targets;
    for (const Button& b : kButtons)
        if (b.key)
            targets.insert(QStringLiteral("tb") + QString::fromLatin1(b.key),
                           QString::fromLatin1(b.command));
    return targets;
}

void appendKeyHints(Commands& commands) {
    const std::pair<const char*, const char*> hints[] = {
        {"mnuPrevious", "V"},
        {"mnuRewind", "R"},
        {"mnuPlay", "P"},
        {"mnuPause", "U"},
        {"mnuStop", "S"},
        {"mnuFastForward", "F"},
        {"mnuNextTrack", "N"},
        {"mnuNextTrackAdvanced", "A"},
        {"mnuJumpToCurrentlyPlaying", "Y"},
        {"mnuSelectedMoveUp", "Alt+Up"},
        {"mnuSelectedMoveDown", "Alt+Down"},
        {"mnuFontsizeIncrease", "Alt+Right"},
        {"mnuFontsizeDecrease", "Alt+Left"},
        {"mnuRandom", "M"},
        {"mnuPlayNext", "X"},
        {"mnuJumpToMedia", "J"},
        {"mnuJumpToTime", "T"},
        {"mnuMute", "E"},
        {"mnuJumpToNextPlaylist", "Alt+N"},
        {"mnuJumpToPreviousPlaylist", "Alt+V"},
        {"mnuJumpToRandomPlaylist", "Alt+M"},
        {"mnuExit", "Alt+F4"},
    };
    for (const auto& [name, key] : hints) {
        const QString caption =
            commands.caption(QString::fromLatin1(name)).section(QLatin1Char('\t'), 0, 0);
        commands.setCaption(QString::fromLatin1(name),
                            caption + QLatin1Char('\t') + QString::fromLatin1(key));
    }
}

} // namespace MainMenus
