#include "app/MenuHelp.h"

#include "core/MainContext.h"

#include <QMenu>
#include <QMenuBar>
#include <QTimer>

namespace {

struct Help {
    int submenu;
    int position;
    const char* text;
};
// Keyed by place, as the menu bar is laid out: File, Playback, the playlist menu, Window, Help.
const Help kHelp[] = {
    {0, 0, "Create a new playlist."},
    {0, 2, "Add files to the current playlist."},
    {0, 3, "Add an existing playlist to the current playlist."},
    {0, 4, "Add a saved/selected location to the current playlist."},
    {0, 5, "Add a directory of audio files to the current playlist."},
    {0, 7, "Open an existing playlist."},
    {0, 11, "Save the currently open playlist (if saved)."},
    {0, 12, "Save the current playlist to a playlist file."},
    {0, 13, "Set the current playlist as the default playlist used."},
    {0, 15, "Print the current playlist to a selected printer."},
    {0, 20, "Show the preferences available in VELDOR."},
    {0, 22, "Exit VELDOR."},
    {1, 0, "Select the previous song in the playlist."},
    {1, 2, "Rewind the song by the selected seconds specified."},
    {1, 3, "Play the song selected in the playlist."},
    {1, 4, "Pause the currently playlist song."},
    {1, 5, "Stop the song currently playing."},
    {1, 6, "Select a random song from the playlist and play it."},
    {1, 7, "Fast Forward the playing song by the selected seconds specified."},
    {1, 9, "Go onto the next song in the playlist."},
    {1, 10, "Using the options selected, select the next song to play."},
    {1, 16, "Mute VELDOR."},
    {2, 0, "Lock the playlist so that no alterations can be made."},
    {2, 8, "Show the CD Player, which will allow you to play audio CD's."},
    {2, 9, "Show the Media Library, which will allow you to better organize your media files."},
    {3, 0, "Make this window stay on top of all other open windows/programs."},
    {3, 1, "Make sure VELDOR is not shown in the Task Manager (in the Applications section)."},
    {3, 7, "Switch from using the main window to using the Mini-Mode window."},
    {3, 9, "Show the toolbar (which contains all of the main buttons) on the main window."},
    {3, 10, "Show the status bar at the bottom of the main window."},
    {3, 11, "Show the headers for each section in the playlist on the main window."},
    {3, 12, "Show the filename for every song list in the playlist on the main window."},
    {3, 14, "Center the main window within the screen."},
    {4, 0, "Show all of the logs about the use of VELDOR."},
    {4, 1, "Show information about all of the media files that have been played."},
    {4, 2, "Show the media files that have specific volume settings saved for them."},
    {4, 4, "Go to the main Kelmora Forum page, where you can post comments, read news, etc."},
    {4, 5, "Go to the main Kelmora website, where you can check for updates, etc."},
    {4, 7, "Check for the lastest updates available online."},
    {4, 9, "Show information about this version of VELDOR."},
    {4, 10, "Show information about this version of Microsoft Windows."},
};

// Whether PlaylistBusy is ours to give back.
bool g_borrowed = false;

} // namespace

QString menu_HelpText(int submenu, int position) {
    for (const Help& h : kHelp)
        if (h.submenu == submenu && h.position == position) return QString::fromLatin1(h.text);
    return QString();
}

void menu_Hovered(MainContext& ctx, int submenu, int position) {
    const QString text = menu_HelpText(submenu, position);
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

namespace {

// Every menu below `menu`, itself included; sub-menus attached later are found when shown.
void watch(MainContext& ctx, QMenuBar* bar, QMenu* menu, int submenu, bool top) {
    if (!menu || menu->property("veldorHelpWatched").toBool()) return;
    menu->setProperty("veldorHelpWatched", true);
    QObject::connect(menu, &QMenu::hovered, &ctx, [&ctx, menu, submenu, top](QAction* a) {
        // The place counts every entry shown, separators too.
        int position = -1;
        if (top && a) {
            int shown = 0;
            for (QAction* entry : menu->actions()) {
                if (!entry->isVisible()) continue;
                if (entry == a) position = shown;
                ++shown;
            }
        }
        menu_Hovered(ctx, top ? submenu : -1, position);
    });
    QObject::connect(menu, &QMenu::aboutToShow, &ctx, [&ctx, bar, menu, submenu] {
        for (QAction* a : menu->actions())
            watch(ctx, bar, a->menu(), submenu, false);
    });
    QObject::connect(menu, &QMenu::aboutToHide, &ctx, [&ctx, bar] {
        // Moving from one menu to the next hides one and shows another: wait for the last.
        // The bar lets go of its active entry only after the menu has hidden, so look then.
        QTimer::singleShot(0, bar, [&ctx, bar] {
            if (!bar->activeAction()) menu_Closed(ctx);
        });
    });
}

} // namespace

void MenuHelp_install(MainContext& ctx, QMenuBar* bar) {
    int submenu = 0;
    for (QAction* a : bar->actions())
        if (a->menu()) watch(ctx, bar, a->menu(), submenu++, true);
}
