#include "ui/MiniMode.h"

#include "core/Commands.h"
#include "core/MainContext.h"
#include "ui/FrmMini.h"

#include <QPointer>
#include <QWidget>

namespace {
QPointer<FrmMini> g_mini;
const QString kCommand = QStringLiteral("mnuSwitchToMiniMode");
} // namespace

FrmMini* miniMode_Window() {
    return g_mini;
}

void mnuSwitchToMiniMode_Click(MainContext& ctx, QWidget* mainWindow) {
    if (ctx.commands().isChecked(kCommand) && g_mini) {
        // From the main window this is the way back; with the window gone to the tray it is
        // the way in again.
        if (g_mini->isVisible())
            g_mini->klbButton_Click(11);
        else
            g_mini->showNormal();
        return;
    }
    if (!g_mini) g_mini = new FrmMini(ctx, mainWindow);
    ctx.commands().setChecked(kCommand, true);
    if (mainWindow) mainWindow->hide();
    g_mini->restorePosition();
    g_mini->showNormal();
    g_mini->raise();
    g_mini->activateWindow();
}

void MiniMode_install(MainContext& ctx, QWidget* mainWindow) {
    ctx.commands().setHandler(kCommand,
                              [&ctx, mainWindow] { mnuSwitchToMiniMode_Click(ctx, mainWindow); });
    // The tray's Open and the like show Mini-Mode instead of the main window while it is on.
    ctx.miniMode_Show = [&ctx] {
        if (!g_mini || !ctx.commands().isChecked(kCommand)) return false;
        g_mini->showNormal();
        g_mini->raise();
        g_mini->activateWindow();
        return true;
    };
    ctx.miniMode_Hide = [] {
        if (g_mini) g_mini->hide();
    };
    // At exit the window goes with the others, and keeps its place.
    auto closeAll = ctx.window_CloseAll;
    ctx.window_CloseAll = [closeAll] {
        if (g_mini && g_mini->isVisible()) {
            g_mini->savePosition();
            g_mini->hide();
        }
        if (closeAll) closeAll();
    };
}
