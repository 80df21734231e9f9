#include "system/Desktop.h"

#include "core/Commands.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "playback/FrmVolume.h"
#include "system/GlobalKeys.h"
#include "system/MainKeys.h"
#include "system/Messenger.h"
#include "system/Mpris.h"
#include "system/SystemTray.h"
#include "system/X11Hotkeys.h"
#include "system/modWindows.h"

#include <QApplication>
#include <QTimer>
#include <QWidget>

namespace {
const QString kSettings = QStringLiteral("Settings");

// Captions of the entries the menu bar may not carry yet.
void caption(Commands& c, const char* name, const char* text, bool checkable) {
    c.addCaption(QLatin1String(name), QLatin1String(text))->setCheckable(checkable);
}

void mnuWindowsDisableGlobalHotkeys_Click(MainContext& ctx, X11Hotkeys* keys) {
    Commands& c = ctx.commands();
    const QString menu = QStringLiteral("mnuWindowsDisableGlobalHotkeys");
    const bool wasChecked = c.isChecked(menu);
    c.setChecked(menu, !wasChecked);
    settings_Write(kSettings, QStringLiteral("DisableGlobalHotkeys"), wasChecked ? 0 : 1);
    // Before the end of start-up the keys wait for it; from then on the menu acts at once.
    if (ctx.WindowShown) keys->setEnabled(wasChecked);
}

} // namespace

void Desktop_install(MainContext& ctx, QWidget* mainWindow) {
    Commands& c = ctx.commands();
    caption(c, "mnuKeysUseAsShortcuts", "Keys:  Use As Shortcut Keys...", true);
    caption(c, "mnuKeysUseAsArtistFindingKeys", "Keys:  Use As Artist Finding Keys...", true);
    caption(c, "mnuWindowsEditWindowsGLobalHotkeys", "Windows:  &Edit Windows Global Hotkeys...",
            false);
    caption(c, "mnuWindowsDisableGlobalHotkeys", "Windows:  &Disable Global Hotkeys...", true);
    caption(c, "mnuMessengerShowSongsBeingPlayed", "Messenger:  Show Songs Being Played", true);
    caption(c, "mnuHideInTheTaskManager", "Hide In The Task Manager", true);
    caption(c, "mnuOpen", "&Open", false);
    caption(c, "mnuVolume", "&Volume...", false);
    caption(c, "mnuAboutWindows", "About &System...", false);

    // --- the main window's keys
    c.setChecked(
        QStringLiteral("mnuKeysUseAsShortcuts"),
        settings_IsOn(kSettings, QStringLiteral("KeysUseAsShortcuts"), QStringLiteral("1")));
    c.setChecked(QStringLiteral("mnuKeysUseAsArtistFindingKeys"),
                 settings_IsOn(kSettings, QStringLiteral("KeysUseAsArtistFindingKeys"),
                               QStringLiteral("0")));
    c.setHandler(QStringLiteral("mnuKeysUseAsShortcuts"),
                 [&ctx] { mnuKeysUseAsShortcuts_Click(ctx); });
    c.setHandler(QStringLiteral("mnuKeysUseAsArtistFindingKeys"),
                 [&ctx] { mnuKeysUseAsArtistFindingKeys_Click(ctx); });
    qApp->installEventFilter(new MainKeyFilter(ctx, mainWindow));

    // --- global keys: grabbed once start-up is over, so keys held while starting fire nothing
    auto* keys = new X11Hotkeys(mainWindow);
    auto bindings = std::make_shared<GlobalKeys::Bindings>(GlobalKeys::window_InstallGlobalKeys());
    keys->setBindings(*bindings);
    keys->pressed = [&ctx, bindings](const QString& name) {
        GlobalKeys::window_UseGlobalKey(ctx, *bindings, name);
    };
    ctx.window_InstallGlobalKeys = [keys, bindings] {
        *bindings = GlobalKeys::window_InstallGlobalKeys();
        keys->setBindings(*bindings);
    };
    c.setHandler(QStringLiteral("mnuWindowsDisableGlobalHotkeys"),
                 [&ctx, keys] { mnuWindowsDisableGlobalHotkeys_Click(ctx, keys); });
    QTimer::singleShot(0, keys, [&ctx, keys] {
        if (!ctx.commands().isChecked(QStringLiteral("mnuWindowsDisableGlobalHotkeys")))
            keys->setEnabled(true);
    });
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, keys,
                     [keys] { keys->setEnabled(false); });

    // --- tray
    auto* tray = new SystemTray(ctx, mainWindow);
    if (settings_IsOn(kSettings, QStringLiteral("UseSystemTraySupport"), QStringLiteral("1")))
        tray->tray_Install(false);
    ctx.tray_Enable = [tray](bool on) {
        if (on)
            tray->tmrSystemTrayDetect_Timer();
        else
            tray->tray_Remove();
    };
    ctx.window_MinimizeToTray = [tray, mainWindow] {
        if (tray->window_MinimizeToTray()) return true;
        // Started into a tray that is not there: the window must stay reachable.
        if (!mainWindow->isVisible()) {
            mainWindow->showMinimized();
            return true;
        }
        return false;
    };
    c.setHandler(QStringLiteral("mnuOpen"), [tray] { tray->mnuOpen_Click(); });
    if (!c.hasHandler(QStringLiteral("mnuVolume")))
        c.setHandler(QStringLiteral("mnuVolume"), [&ctx] {
            FrmVolume& w = FrmVolume::showFor(ctx);
            w.raise();
            w.activateWindow();
        });
    // --- shell
    c.setHandler(QStringLiteral("mnuMessengerShowSongsBeingPlayed"),
                 [&ctx] { Messenger::mnuMessengerShowSongsBeingPlayed_Click(ctx); });
    c.setHandler(QStringLiteral("mnuHideInTheTaskManager"), [&ctx, mainWindow] {
        modWindows::mnuHideInTheTaskManager_Click(ctx, mainWindow);
    });
    if (!c.hasHandler(QStringLiteral("mnuAlwaysOnTop")))
        c.setHandler(QStringLiteral("mnuAlwaysOnTop"), [&c, mainWindow] {
            const bool on = !c.isChecked(QStringLiteral("mnuAlwaysOnTop"));
            c.setChecked(QStringLiteral("mnuAlwaysOnTop"), on);
            settings_Write(kSettings, QStringLiteral("AlwaysOnTop"), on ? 1 : 0);
            modWindows::window_SetAlwaysOnTop(mainWindow, on);
        });
    new Mpris(ctx, mainWindow);
}
