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

// Menus in order; "-" is a separator, ">name|caption" opens a sub-menu, "<" closes it.
const char* const kLayout[] = {
    ">mnuFile|&File",
    "mnuNew",
    "-mnuLineBreak6",
    "mnuAddFiles",
    "mnuAddDirectory",
    "mnuAddPlaylist",
    "mnuAddLocation",
    "-",
    "mnuOpenPlaylist",
    "mnuOpenMood",
    "mnuOpenBookmark",
    "-mnuLineBreak2",
    "mnuSave",
    "mnuSavePlaylistAs",
    "mnuSaveAsDefault",
    "-mnuLineBreak20",
    "mnuPrint",
    "-mnuLineBreak11",
    "mnuRecentMediaFiles",
    "mnuRecentPlaylists",
    "-mnuLineBreak16",
    "mnuPreferences",
    "-mnuLineBreak3",
    "mnuExit",
    "<",
    ">mnuEdit|&Edit",
    "mnuCut",
    "mnuCopy",
    "mnuPaste",
    "mnuClear",
    "-",
    "mnuSelectAll",
    "-",
    ">mnuSelected|&Selected",
    "mnuSelectedMoveUp",
    "mnuSelectedMoveDown",
    "mnuSelectedCrop",
    "-",
    "mnuRemoveSelected",
    "mnuRemovePhysicallyDeleteSelected",
    "<",
    ">mnuEntries|E&ntries",
    "mnuRemoveAlDeadFilenames",
    "mnuRemoveDuplicateFilenames",
    "-",
    "mnuPlaylistRefreshTags",
    "<",
    "-",
    "mnuLockPlaylist",
    "<",
    ">mnuArrange|&Arrange",
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
    "-",
    ">mnuJump|&Jump",
    "mnuJumpToCurrentlyPlaying",
    "mnuJumpToMedia",
    "mnuJumpToTime",
    "mnuJumpToTrackNumber",
    "-",
    "mnuJumpToNextPlaylist",
    "mnuJumpToPreviousPlaylist",
    "mnuJumpToRandomPlaylist",
    "<",
    ">mnuPlaylists|Play&lists",
    "mnuManagePlaylists",
    "mnuGeneratePlaylist",
    "<",
    "<",
    ">mnuPlayback|&Play",
    "mnuPlay",
    "mnuPause",
    "mnuStop",
    "-",
    "mnuPrevious",
    "mnuNextTrack",
    "mnuNextTrackAdvanced",
    "mnuRandom",
    "mnuPlayNext",
    "-",
    "mnuRewind",
    "mnuFastForward",
    "-",
    "mnuMute",
    "-",
    ">mnuMode|Play &Mode",
    "mnuPlayingGoThroughPlaylistNormally",
    "mnuPlayingShuffleByArtist",
    "mnuPlayingShuffleByAlbum",
    "mnuPlayingShuffleByYear",
    "mnuPlayingIntroduction",
    "mnuPlayingRepeat",
    "mnuPlayingRepeatOnce",
    "mnuPlayingStopAfterEnding",
    "mnuPlayingPickRandomSongs",
    "-",
    "mnuPlaylistStopAfterEnding",
    "mnuPlaylistRepeat",
    "mnuPlaylistRepeatOnce",
    "mnuPlaylistPickRandomAfterEnding",
    "mnuPlaylistSwitchToNext",
    "-",
    "mnuWorkForwardThroughList",
    "mnuWorkBackwardsThroughPlaylist",
    "<",
    "<",
    ">mnuDisplay|&View",
    "mnuShowToolbar",
    "mnuShowStatusBar",
    "mnuShowPlaylistHeaders",
    "mnuShowFilenamesColumn",
    "-",
    "mnuFontsizeIncrease",
    "mnuFontsizeDecrease",
    "-",
    "mnuAlwaysOnTop",
    "mnuSwitchToMiniMode",
    "<",
    ">mnuOptions|&Tools",
    "mnuOpenMediaLibrary",
    "mnuOpenCDPlayer",
    "mnuTracking",
    "mnuVolumes",
    "mnuConsole",
    "-",
    "mnuTagsShowTagsAsFilesAreAdded",
    "mnuTagsShowTagsAsFilesArePlayed",
    "mnuTagsUseID3v2Tags",
    "-",
    "mnuWindowsDisableGlobalHotkeys",
    "mnuWindowsShowEachSongAsItsPlayed",
    "mnuWindowsShowLyricsWhenAvailable",
    "<",
    ">mnuHelp|&Help",
    "mnuCheckForUpdates",
    "-",
    "mnuAbout",
    "<",
};

const Entry kEntries[] = {
    {"mnuNew", "&New Playlist", false},
    {"mnuAddFiles", "Add &Files...", false},
    {"mnuAddDirectory", "Add &Directory...", false},
    {"mnuAddPlaylist", "Add Pla&ylist...", false},
    {"mnuAddLocation", "Add &Location...", false},
    {"mnuOpenPlaylist", "&Open Playlist...", false},
    {"mnuOpenMood", "Open &Mood", false},
    {"mnuOpenBookmark", "Open &Bookmark", false},
    {"mnuSave", "&Save Playlist", false},
    {"mnuSavePlaylistAs", "Save Playlist &As...", false},
    {"mnuSaveAsDefault", "Save As &Default", false},
    {"mnuPrint", "&Print Playlist...", false},
    {"mnuRecentMediaFiles", "Recent M&edia Files", false},
    {"mnuRecentPlaylists", "Recent Pla&ylists", false},
    {"mnuPreferences", "P&references...", false},
    {"mnuExit", "E&xit", false},
    {"mnuCut", "Cu&t", false},
    {"mnuCopy", "&Copy", false},
    {"mnuPaste", "&Paste", false},
    {"mnuClear", "C&lear Clipboard", false},
    {"mnuSelectAll", "Select &All", false},
    {"mnuSelectedMoveUp", "Move &Up", false},
    {"mnuSelectedMoveDown", "Move &Down", false},
    {"mnuSelectedCrop", "&Crop", false},
    {"mnuRemoveSelected", "&Remove", false},
    {"mnuRemovePhysicallyDeleteSelected", "&Physically Delete...", false},
    {"mnuRemoveAlDeadFilenames", "Remove &Dead Filenames", false},
    {"mnuRemoveDuplicateFilenames", "Remove D&uplicate Filenames", false},
    {"mnuPlaylistRefreshTags", "Refresh &Tags", false},
    {"mnuLockPlaylist", "&Lock Playlist", true},
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
    {"mnuJumpToNextPlaylist", "To N&ext Playlist", false},
    {"mnuJumpToPreviousPlaylist", "To &Previous Playlist", false},
    {"mnuJumpToRandomPlaylist", "To &Random Playlist", false},
    {"mnuManagePlaylists", "&Manage Playlists...", false},
    {"mnuGeneratePlaylist", "&Generate Playlist...", false},
    {"mnuPlay", "&Play", false},
    {"mnuPause", "P&ause", false},
    {"mnuStop", "&Stop", false},
    {"mnuPrevious", "Pre&vious", false},
    {"mnuNextTrack", "&Next", false},
    {"mnuNextTrackAdvanced", "Next (A&dvanced)", false},
    {"mnuRandom", "Rando&m", false},
    {"mnuPlayNext", "Play Ne&xt...", false},
    {"mnuRewind", "&Rewind", false},
    {"mnuFastForward", "&Fast Forward", false},
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
    {"mnuPlaylistStopAfterEnding", "Playlist:  Stop After Ending", true},
    {"mnuPlaylistRepeat", "Playlist:  Repeat", true},
    {"mnuPlaylistRepeatOnce", "Playlist:  Repeat Once", true},
    {"mnuPlaylistPickRandomAfterEnding", "Playlist:  Pick Random After Ending", true},
    {"mnuPlaylistSwitchToNext", "Playlist:  Switch To Next", true},
    {"mnuWorkForwardThroughList", "Work &Forward Through List", true},
    {"mnuWorkBackwardsThroughPlaylist", "Work &Backwards Through List", true},
    {"mnuShowToolbar", "&Toolbar", true},
    {"mnuShowStatusBar", "&Status Bar", true},
    {"mnuShowPlaylistHeaders", "Playlist &Headers", true},
    {"mnuShowFilenamesColumn", "&Filenames Column", true},
    {"mnuFontsizeIncrease", "&Increase Font Size", false},
    {"mnuFontsizeDecrease", "&Decrease Font Size", false},
    {"mnuAlwaysOnTop", "&Always On Top", true},
    {"mnuSwitchToMiniMode", "Switch To &Mini-Mode", true},
    {"mnuOpenMediaLibrary", "&Media Library", true},
    {"mnuOpenCDPlayer", "&CD Player", true},
    {"mnuTracking", "&Tracking", false},
    {"mnuVolumes", "Adjust &Volumes", false},
    {"mnuConsole", "C&onsole", false},
    {"mnuTagsShowTagsAsFilesAreAdded", "Show Tags As Files Are &Added", true},
    {"mnuTagsShowTagsAsFilesArePlayed", "Show Tags As Files Are &Played", true},
    {"mnuTagsUseID3v2Tags", "Use ID3v&2 Tags", true},
    {"mnuWindowsDisableGlobalHotkeys", "&Disable Global Hotkeys", true},
    {"mnuWindowsShowEachSongAsItsPlayed", "Show &Each Song As Its Played", true},
    {"mnuWindowsShowLyricsWhenAvailable", "Show L&yrics When Available", true},
    {"mnuCheckForUpdates", "Check For &Updates...", false},
    {"mnuAbout", "&About VELDOR...", false},
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
