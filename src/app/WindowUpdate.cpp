#include "app/WindowUpdate.h"

#include "app/FrmMain.h"
#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/PlaylistCombo.h"
#include "playback/PlayerTimers.h"
#include "playlists/PlaylistEditing.h"
#include "ui/ListView.h"

#include <QApplication>
#include <QLabel>
#include <array>

void window_Controls(FrmMain& window, bool enabled) {
    Commands& c = window.ctx().commands();
    for (const char* menu : {"mnuPlay", "mnuRandom", "mnuNextTrack", "mnuNextTrackAdvanced",
                             "mnuSavePlaylistAs", "mnuSave", "mnuPrint", "mnuJump", "mnuSelected",
                             "mnuSaveAsDefault", "mnuEntries", "mnuNew"})
        c.setEnabled(QString::fromLatin1(menu), enabled);
    for (const char* key :
         {"Previous", "Play", "Random", "Next", "NextAdvanced", "PreviousPlaylist", "NextPlaylist"})
        c.setEnabled(QStringLiteral("tb") + QString::fromLatin1(key), enabled);
}

void tmrWindowUpdate_Timer(FrmMain& window) {
    MainContext& ctx = window.ctx();
    Commands& c = ctx.commands();
    ListModel& list = ctx.lstvPlaylist();
    ctx.ApplicationActive = QApplication::activeWindow() != nullptr;

    const int selected = list.count() ? list.selectedCount() : 0;
    // What the enabling depends on. While it stands still a tick has nothing to change, so the
    // full pass runs only on a change, or once a second to set right what others may have moved.
    const std::array<qint64, 8> now{list.count(),
                                    selected,
                                    list.count() ? list.selectedItem() : -1,
                                    PlaylistEditState::of(ctx).hasClip(),
                                    c.isChecked(QStringLiteral("mnuLockPlaylist")),
                                    ctx.cmbPlaylists().count(),
                                    ctx.cmbPlaylists().listIndex(),
                                    qint64(&ctx)};
    if (window.updatedOnce && now == window.lastUpdateKey && ++window.quietUpdateTicks < 20) return;
    window.updatedOnce = true;
    window.lastUpdateKey = now;
    window.quietUpdateTicks = 0;
    window.lstvPlaylist()->setToolTip(
        selected > 1 ? QStringLiteral("Songs Selected:  %1").arg(selected) : QString());
    const bool clip = PlaylistEditState::of(ctx).hasClip();
    c.setEnabled(QStringLiteral("mnuPaste"), clip);
    c.setEnabled(QStringLiteral("mnuClear"), clip);

    const bool locked = c.isChecked(QStringLiteral("mnuLockPlaylist"));
    const int entries = ctx.cmbPlaylists().count();
    const int entry = ctx.cmbPlaylists().listIndex();
    c.setEnabled(QStringLiteral("mnuRenameCurrentPlaylist"), entries > 1 && entry > 0);
    c.setEnabled(QStringLiteral("mnuDeleteCurrentPlaylist"), entries > 1 && entry > 0);
    c.setEnabled(QStringLiteral("mnuDeleteAllPlaylists"), entries > 1);

    if (list.count() == 0) {
        for (const char* menu : {"mnuSelectAll", "mnuCopy", "mnuCut"})
            c.setEnabled(QString::fromLatin1(menu), false);
        window.setPanelText(2, QStringLiteral("Songs:  None"));
        window_Controls(window, false);
        // An empty list cannot be locked, and a list that empties unlocks itself.
        if (locked) c.run(QStringLiteral("mnuLockPlaylist"));
        c.setEnabled(QStringLiteral("mnuLockPlaylist"), false);
        return;
    }
    c.setEnabled(QStringLiteral("mnuLockPlaylist"), true);
    for (const char* menu : {"mnuSelectAll", "mnuCopy", "mnuCut"})
        c.setEnabled(QString::fromLatin1(menu), !locked);
    for (const char* menu : {"mnuGeneratePlaylist", "mnuUseRandomSongsForPlaylist"})
        c.setEnabled(QString::fromLatin1(menu), !locked);
    const int row = list.selectedItem() + 1;
    const bool single = list.count() == 1;
    c.setEnabled(QStringLiteral("mnuSelectedMoveUp"), !locked && !single && row != 1);
    c.setEnabled(QStringLiteral("mnuSelectedMoveDown"), !locked && !single && row != list.count());
    window.setPanelText(2, QStringLiteral("Songs:  %1").arg(list.count()));
    if (!locked) window_Controls(window, true);
}

void tmrPosition_Timer(FrmMain& window) {
    tmrPosition_Timer(window.ctx(),
                      [&window](const QString& text) { window.setPanelText(3, text); });
}
