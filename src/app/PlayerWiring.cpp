#include "app/PlayerWiring.h"

#include "app/FrmMain.h"
#include "app/MenuHelp.h"
#include "app/WindowUpdate.h"
#include "core/Commands.h"
#include "core/MainContext.h"
#include "playback/FrmLyrics.h"
#include "playback/FrmVideo.h"
#include "playback/Lyrics.h"
#include "core/ListModel.h"
#include "core/PlaylistCombo.h"

#include <QApplication>
#include <QMenuBar>
#include <QTimer>

namespace {

// The enabling pass follows the events that can change what it shows, at once and coalesced,
// instead of waking the process twenty times a second; a slow tick stays as a safety net.
void driveWindowUpdateByEvents(FrmMain& window) {
    MainContext& ctx = window.ctx();
    auto* soon = new QTimer(&window);
    soon->setSingleShot(true);
    soon->setInterval(0);
    QObject::connect(soon, &QTimer::timeout, &window, [&window] {
        if (window.tmrWindowUpdate()->isActive()) tmrWindowUpdate_Timer(window);
    });
    auto schedule = [soon] {
        if (!soon->isActive()) soon->start();
    };
    ListModel& list = ctx.lstvPlaylist();
    QObject::connect(&list, &QAbstractItemModel::rowsInserted, soon, schedule);
    QObject::connect(&list, &QAbstractItemModel::rowsRemoved, soon, schedule);
    QObject::connect(&list, &QAbstractItemModel::modelReset, soon, schedule);
    QObject::connect(&list, &QAbstractItemModel::layoutChanged, soon, schedule);
    QObject::connect(&list, &QAbstractItemModel::dataChanged, soon, schedule);
    QObject::connect(list.selectionModel(), &QItemSelectionModel::selectionChanged, soon, schedule);
    QObject::connect(list.selectionModel(), &QItemSelectionModel::currentChanged, soon, schedule);
    QObject::connect(&ctx.cmbPlaylists(), &PlaylistCombo::itemsChanged, soon, schedule);
    QObject::connect(&ctx.cmbPlaylists(), &PlaylistCombo::listIndexChanged, soon, schedule);
    for (QAction* a : ctx.commands().all()) {
        QObject::connect(a, &QAction::triggered, soon, schedule);
        QObject::connect(a, &QAction::toggled, soon, schedule);
    }
    QObject::connect(qApp, &QApplication::focusChanged, soon, schedule);
    window.tmrWindowUpdate()->setInterval(1000);
}

// Brings the main window back: the tray's Open and a click on the song alert.
void mnuOpen_Click(FrmMain& window) {
    if (window.ctx().WindowClosing) return;
    if (window.ctx().WindowWasMaximized)
        window.showMaximized();
    else if (window.isMinimized())
        window.showNormal();
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

std::unique_ptr<FrmVideo> PlayerWiring_install(FrmMain& window) {
    MainContext& ctx = window.ctx();
    ctx.tmrPosition_Timer = [&window] { tmrPosition_Timer(window); };
    ctx.tmrWindowUpdate_Timer = [&window] { tmrWindowUpdate_Timer(window); };
    MenuHelp_install(ctx, window.menuBar());
    driveWindowUpdateByEvents(window);
    ctx.commands().setHandler(QStringLiteral("mnuOpen"), [&window] { mnuOpen_Click(window); });
    // The lyrics window passes its keys on, as the video window does.
    lyrics_Window().keyTarget = [&window](QKeyEvent* event) {
        QCoreApplication::sendEvent(&window, event);
    };

    auto video = std::make_unique<FrmVideo>(ctx, &window);
    video->install();
    video->hide();
    video->video_Update();
    return video;
}
