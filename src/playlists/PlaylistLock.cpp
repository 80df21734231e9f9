#include "core/Colors.h"
#include "core/Commands.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/ListModel.h"
#include "core/PlaylistCombo.h"
#include "playlists/PlaylistEditing.h"

// The lock hands the player to somebody who may only play and stop: it takes away the list, the
// loading of anything and the moves between songs.

namespace {

// Toolbar buttons are commands of their own, "tb" + the button's key.
QString button(const char* key) {
    return QStringLiteral("tb") + QLatin1String(key);
}

void setEnabled(Commands& cmd, std::initializer_list<const char*> names, bool on) {
    for (const char* name : names)
        cmd.setEnabled(QLatin1String(name), on);
}

void setListEnabled(MainContext& ctx, bool on, qint64 backColor) {
    ctx.commands().setEnabled(button("AddFiles"), on);
    ctx.lstvPlaylist().setEnabled(on);
    ctx.cmbPlaylists().setEnabled(on);
    ctx.lstvPlaylist().setBackColor(backColor);
    PlaylistEditState::of(ctx).setComboBackColor(backColor);
}

void lock(MainContext& ctx) {
    Commands& cmd = ctx.commands();
    cmd.setChecked(QStringLiteral("mnuLockPlaylist"), true);
    settings_Write(QStringLiteral("Settings"), QStringLiteral("LockPlaylist"), QStringLiteral("1"));
    if (ctx.lstvPlaylist().isEnabled()) {
        ctx.call(ctx.window_CloseAll);
        setListEnabled(ctx, false, Colors::SystemButtonFace);
    }
    setEnabled(cmd,
               {"mnuOpenMediaLibrary",
                "mnuOpenCDPlayer",
                "mnuPlaylists",
                "mnuAddFiles",
                "mnuAddPlaylist",
                "mnuAddLocation",
                "mnuAddDirectory",
                "mnuOpenPlaylist",
                "mnuOpenMood",
                "mnuOpenBookmark",
                "mnuOptions",
                "mnuSwitchToMiniMode",
                "mnuPreferences",
                "mnuTracking",
                "mnuRecentMediaFiles",
                "mnuRecentPlaylists",
                "mnuPrevious",
                "mnuRandom",
                "mnuNextTrack",
                "mnuNextTrackAdvanced",
                "mnuSavePlaylistAs",
                "mnuSave",
                "mnuJump",
                "mnuSelected",
                "mnuSaveAsDefault",
                "mnuEntries",
                "mnuEdit",
                "mnuNew",
                "mnuDisplay",
                "mnuSort"},
               false);
    // Play, Stop and Print stay; the tray menu shares these commands.
    setEnabled(cmd, {"mnuPlay", "mnuPrint", "mnuStop"}, true);
    for (const char* key :
         {"Previous", "Random", "Next", "NextAdvanced", "PreviousPlaylist", "NextPlaylist"})
        cmd.setEnabled(button(key), false);
    cmd.setEnabled(button("Play"), true);
    cmd.setEnabled(QStringLiteral("lblOptions"), false);
}

void unlock(MainContext& ctx) {
    Commands& cmd = ctx.commands();
    cmd.setChecked(QStringLiteral("mnuLockPlaylist"), false);
    settings_Write(QStringLiteral("Settings"), QStringLiteral("LockPlaylist"), QStringLiteral("0"));
    if (!ctx.lstvPlaylist().isEnabled()) {
        const qint64 back = Colors::parse(settings_Read(QStringLiteral("Appearance"),
                                                        QStringLiteral("BackgroundColour"),
                                                        QString::number(Colors::SystemWindow)),
                                          Colors::SystemWindow);
        setListEnabled(ctx, true, back);
    }
    // The rest of the lock's list comes back through the window's periodic enabling.
    setEnabled(cmd,
               {"mnuOpenMediaLibrary", "mnuOpenCDPlayer", "mnuAddFiles", "mnuAddPlaylist",
                "mnuAddLocation", "mnuAddDirectory", "mnuOpenPlaylist", "mnuOpenMood",
                "mnuOpenBookmark", "mnuOptions", "mnuPlaylists", "mnuSwitchToMiniMode", "mnuEdit",
                "mnuPreferences", "mnuTracking", "mnuRecentMediaFiles", "mnuRecentPlaylists",
                "lblOptions"},
               true);
}

} // namespace

void mnuLockPlaylist_Click(MainContext& ctx) {
    if (ctx.commands().isChecked(QStringLiteral("mnuLockPlaylist")))
        unlock(ctx);
    else
        lock(ctx);
}

void window_RestoreLock(MainContext& ctx) {
    if (settings_IsOn(QStringLiteral("Settings"), QStringLiteral("LockPlaylist"),
                      QStringLiteral("0")))
        mnuLockPlaylist_Click(ctx);
}
