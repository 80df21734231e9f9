#include "app/MenuHelp.h"

#include "core/MainContext.h"

#include <QHash>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

namespace {

const std::pair<const char*, const char*> kHelp[] = {
    {"mnuNew", "Create a new playlist."},
    {"mnuAddFiles", "Add files to the current playlist."},
    {"mnuAddPlaylist", "Add an existing playlist to the current playlist."},
    {"mnuAddLocation", "Add a saved/selected location to the current playlist."},
    {"mnuAddDirectory", "Add a directory of audio files to the current playlist."},
    {"mnuOpenPlaylist", "Open an existing playlist."},
    {"mnuSave", "Save the currently open playlist (if saved)."},
    {"mnuSavePlaylistAs", "Save the current playlist to a playlist file."},
    {"mnuSaveAsDefault", "Set the current playlist as the default playlist used."},
    {"mnuPrint", "Print the current playlist to a selected printer."},
    {"mnuPreferences", "Show the preferences available in VELDOR."},
    {"mnuExit", "Exit VELDOR."},
    {"mnuPrevious", "Select the previous song in the playlist."},
    {"mnuRewind", "Rewind the song by the selected seconds specified."},
    {"mnuPlay", "Play the song selected in the playlist."},
    {"mnuPause", "Pause the currently playlist song."},
    {"mnuStop", "Stop the song currently playing."},
    {"mnuRandom", "Select a random song from the playlist and play it."},
    {"mnuFastForward", "Fast Forward the playing song by the selected seconds specified."},
    {"mnuNextTrack", "Go onto the next song in the playlist."},
    {"mnuNextTrackAdvanced", "Using the options selected, select the next song to play."},
    {"mnuMute", "Mute VELDOR."},
    {"mnuLockPlaylist", "Lock the playlist so that no alterations can be made."},
    {"mnuOpenCDPlayer", "Show the CD Player, which will allow you to play audio CD's."},
    {"mnuOpenMediaLibrary",
     "Show the Media Library, which will allow you to better organize your media files."},
    {"mnuAlwaysOnTop", "Make this window stay on top of all other open windows/programs."},
    {"mnuHideInTheTaskManager",
     "Make sure VELDOR is not shown in the Task Manager (in the Applications section)."},
    {"mnuSwitchToMiniMode", "Switch from using the main window to using the Mini-Mode window."},
    {"mnuShowToolbar",
     "Show the toolbar (which contains all of the main buttons) on the main window."},
    {"mnuShowStatusBar", "Show the status bar at the bottom of the main window."},
    {"mnuShowPlaylistHeaders",
     "Show the headers for each section in the playlist on the main window."},
    {"mnuShowFilenamesColumn",
     "Show the filename for every song list in the playlist on the main window."},
    {"mnuReCenterWindow", "Center the main window within the screen."},
    {"mnuConsole", "Show all of the logs about the use of VELDOR."},
    {"mnuTracking", "Show information about all of the media files that have been played."},
    {"mnuVolumes", "Show the media files that have specific volume settings saved for them."},
    {"mnuForum", "Go to the main Kelmora Forum page, where you can post comments, read news, etc."},
    {"mnuWebsite", "Go to the main Kelmora website, where you can check for updates, etc."},
    {"mnuCheckForUpdates", "Check for the lastest updates available online."},
    {"mnuAbout", "Show information about this version of VELDOR."},
    {"mnuAboutWindows", "Show information about this version of Microsoft Windows."},
};

// Whether PlaylistBusy is ours to give back.
bool g_borrowed = false;

} // namespace

QString menu_HelpText(const QString& menuName) {
    static const QHash<QString, QString> table = [] {
        QHash<QString, QString> t;
        for (const auto& [name, text] : kHelp)
            t.insert(QString::fromLatin1(name), QString::fromLatin1(text));
        return t;
    }();
    return table.value(menuName);
}

void menu_Hovered(MainContext& ctx, const QString& menuName) {
    const QString text = menu_HelpText(menuName);
    if (text.isEmpty()) return menu_Closed(ctx);
    ctx.setStatusText(text);
    if (!ctx.PlaylistBusy) g_borrowed = true;
    ctx.PlaylistBusy = true;
}

void menu_Closed(MainContext& ctx) {
    if (!g_borrowed) return;
    g_borrowed = false;
    ctx.PlaylistBusy = false;
    ctx.call(ctx.tmrPosition_Timer);
}

void MenuHelp_install(MainContext& ctx, QMenuBar* bar) {
    for (QMenu* menu : bar->findChildren<QMenu*>()) {
        QObject::connect(menu, &QMenu::hovered, &ctx, [&ctx](QAction* a) {
            menu_Hovered(ctx, a ? a->objectName() : QString());
        });
        QObject::connect(menu, &QMenu::aboutToHide, &ctx, [&ctx, bar] {
            // Moving from one menu to the next hides one and shows another: wait for the last.
            // The bar lets go of its active entry only after the menu has hidden, so look then.
            QTimer::singleShot(0, bar, [&ctx, bar] {
                if (!bar->activeAction()) menu_Closed(ctx);
            });
        });
    }
}
