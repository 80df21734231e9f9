#include "app/PlayerWiring.h"

#include "app/FrmMain.h"
#include "app/MenuHelp.h"
#include "app/WindowUpdate.h"
#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/PlaylistCombo.h"
#include "playback/FrmLyrics.h"
#include "playback/FrmVideo.h"
#include "playback/Lyrics.h"
#include "playback/MpvApi.h"
#include "playback/MpvPlayer.h"

#include <QApplication>
#include <QMenuBar>
#include <QTimer>
#include <functional>
#include <utility>

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

// Waits for the first paint of the main window.
class FirstPaint : public QObject {
public:
    FirstPaint(QWidget* window, std::function<void()> then)
        : QObject(window), m_then(std::move(then)) {
        window->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint && m_then) {
            // After the paint has reached the screen.
            QTimer::singleShot(0, parent(), std::exchange(m_then, {}));
            deleteLater();
        }
        return false;
    }

private:
    std::function<void()> m_then;
};

} // namespace

void PlayerWiring_startEngineWhenShown(FrmMain& window, FrmVideo& video) {
    auto started = std::make_shared<bool>(false);
    auto start = [&video, started] {
        if (std::exchange(*started, true)) return;
        mpv_PreloadLibrary(&video, [&video] { video.player().startEngine(); });
    };
    // The engine's library tree is most of an idle program's memory: with nothing to play it
    // waits for the first row, and the first song starts it in any case.
    ListModel& list = window.ctx().lstvPlaylist();
    auto startWithRows = [&list, start] {
        if (list.count() > 0) start();
    };
    new FirstPaint(&window, startWithRows);
    QTimer::singleShot(1500, &video, startWithRows); // started into the tray
    auto* firstRow = new QObject(&video);
    QObject::connect(&list, &QAbstractItemModel::rowsInserted, firstRow, [firstRow, start] {
        firstRow->deleteLater();
        // After the adding, not inside it.
        QTimer::singleShot(0, firstRow->parent(), start);
    });
}

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
