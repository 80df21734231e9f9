#include "app/WindowClose.h"

#include "app/FrmMain.h"
#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/PlaylistCombo.h"
#include "core/Settings.h"
#include "core/SliderModel.h"
#include "playback/Lyrics.h"
#include "playlists/ListFiles.h"
#include "playlists/PlaylistAutosave.h"
#include "system/modWindows.h"
#include "ui/ListView.h"

#include <QApplication>
#include <QSystemTrayIcon>
#include <QTimer>

namespace {

// The small exit window of the classic program never needs to be seen here: two ticks of its
// timer are what is kept. Tick 1 takes the tray icon away, tick 2 ends the process.
void startExitTicks(FrmMain& window) {
    auto* timer = new QTimer(&window);
    timer->setObjectName(QStringLiteral("FrmExit.tmrTimer"));
    timer->setInterval(250);
    auto ticks = std::make_shared<int>(0);
    QObject::connect(timer, &QTimer::timeout, &window, [timer, ticks] {
        ++*ticks;
        if (*ticks == 1) {
            for (QSystemTrayIcon* icon : qApp->findChildren<QSystemTrayIcon*>())
                icon->hide();
        } else if (*ticks >= 2) {
            timer->stop();
            QCoreApplication::exit(0);
        }
    });
    timer->start();
}
// A tray icon the user can click to come back.
bool trayIconShown() {
    const auto icons = qApp->findChildren<QSystemTrayIcon*>();
    return QSystemTrayIcon::isSystemTrayAvailable() &&
           std::any_of(icons.begin(), icons.end(),
                       [](QSystemTrayIcon* i) { return i->isVisible(); });
}
} // namespace

void window_CloseAll(FrmMain& window) {
    window.ctx().call(window.ctx().window_CloseAll);
}

void window_SaveSettingsOnClose(FrmMain& window) {
    MainContext& ctx = window.ctx();
    ListModel& list = ctx.lstvPlaylist();
    ctx.call(ctx.player_Stop);
    ctx.call(ctx.video_SaveSize);
    lyrics_SaveSize();
    window.tmrPosition()->stop();
    window.tmrWindowUpdate()->stop();
    window_CloseAll(window);

    PlaylistAutosave_stop(ctx);
    playlist_SaveDefault(ctx);

    const double size = list.font().pointSizeF();
    settings_Write(QStringLiteral("Appearance"), QStringLiteral("Fontsize"),
                   size == int(size) ? QString::number(int(size)) : QString::number(size));
    settings_Write(QStringLiteral("Sound"), QStringLiteral("Volume"),
                   window.ctx().sldVolume().value());
    settings_Write(QStringLiteral("Sound"), QStringLiteral("Balance"),
                   window.ctx().sldBalance().value());
    window.saveColumnWidths();
    // The selected row is stored, not the playing one.
    if (list.count() > 0 && list.selectedItem() >= 0)
        settings_Write(QStringLiteral("Playback"), QStringLiteral("LastPlayed"),
                       list.selectedItem() + 1);
    const QString shown = ctx.cmbPlaylists().text();
    settings_Write(QStringLiteral("Playback"), QStringLiteral("PlaylistUsed"),
                   shown.toLower() == QLatin1String("((select playlist))") ? QString() : shown);
    modWindows::window_SavePosition(&window, QStringLiteral("MainWindow"), 1500);
}

void mnuExit_Click(FrmMain& window) {
    if (window.ctx().WindowClosing && window.findChild<QTimer*>(QStringLiteral("FrmExit.tmrTimer")))
        return; // already on the way out
    window.hide();
    window_SaveSettingsOnClose(window);
    window.ctx().WindowClosing = true;
    startExitTicks(window);
}

void window_MinimizeToTray(FrmMain& window) {
    if (window.ctx().window_MinimizeToTray && window.ctx().window_MinimizeToTray()) return;
    // The tray icon is the tray's own business; without one, hiding would strand the user.
    if (trayIconShown())
        window.hide();
    else if (window.isVisible())
        window.showMinimized();
}

bool Form_QueryUnload(FrmMain& window, int unloadMode) {
    MainContext& ctx = window.ctx();
    switch (unloadMode) {
    case 0: {
        const bool tray =
            settings_IsOn(QStringLiteral("Settings"), QStringLiteral("UseSystemTraySupport"),
                          QStringLiteral("1")) &&
            trayIconShown();
        if (tray) {
            window_MinimizeToTray(window);
        } else {
            ctx.WindowClosing = true;
            mnuExit_Click(window);
        }
        return true;
    }
    case 2:
        // Already saved when an exit is under way; the process ends at once either way.
        if (!window.findChild<QTimer*>(QStringLiteral("FrmExit.tmrTimer"))) {
            ctx.WindowClosing = true;
            window_SaveSettingsOnClose(window);
        }
        QCoreApplication::exit(0);
        return false;
    case 3:
        ctx.WindowClosing = true;
        mnuExit_Click(window);
        return true;
    default:
        return false;
    }
}
