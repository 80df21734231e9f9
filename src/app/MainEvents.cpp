#include "app/MainEvents.h"

#include "app/FrmMain.h"
#include "app/MainMenus.h"
#include "app/WindowClose.h"
#include "app/WindowUpdate.h"
#include "core/Colors.h"
#include "core/Commands.h"
#include "core/FrmConsole.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "playlists/PlaylistEditing.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/PlaylistMenus.h"
#include "playlists/PlaylistRows.h"
#include "playlists/SendToMenu.h"
#include "ui/FocusColour.h"
#include "ui/FrmAbout.h"
#include "ui/ListView.h"

#include <QComboBox>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QTimer>
#include <utility>

namespace {

// The entries hidden while the File menu pops up over an empty list.
const char* const kHiddenOnEmptyList[] = {"mnuNew",
                                          "mnuLineBreak6",
                                          "mnuOpenMood",
                                          "mnuOpenBookmark",
                                          "mnuLineBreak2",
                                          "mnuSave",
                                          "mnuSavePlaylistAs",
                                          "mnuSaveAsDefault",
                                          "mnuLineBreak20",
                                          "mnuPrint",
                                          "mnuLineBreak11",
                                          "mnuRecentMediaFiles",
                                          "mnuRecentPlaylists",
                                          "mnuLineBreak16",
                                          "mnuPreferences",
                                          "mnuLineBreak3",
                                          "mnuExit"};

QMenu* buildSendToMenu(FrmMain& window, QWidget* parent) {
    MainContext& ctx = window.ctx();
    auto* menu = new QMenu(QStringLiteral("Send &To"), parent);
    menu->setObjectName(QStringLiteral("mnuSendTo"));
    auto* playlists = menu->addMenu(QStringLiteral("&Playlist"));
    playlists->setObjectName(QStringLiteral("mnuPlaylist"));
    const SendToMenu& items = SendToMenu::of(ctx);
    for (int i = 0; i < items.count(); ++i) {
        const SendToMenu::Item& item = items.item(i);
        if (!item.visible) continue;
        QAction* a = playlists->addAction(item.caption);
        a->setObjectName(QStringLiteral("mnuItem"));
        a->setEnabled(item.enabled);
        QObject::connect(a, &QAction::triggered, &window, [&ctx, i] { mnuItem_Click(ctx, i); });
    }
    playlists->addSeparator();
    playlists->addAction(ctx.commands().action(QStringLiteral("mnuUpdate")));
    PlaylistMenus_addSendTo(ctx, menu);
    return menu;
}

void popupRightMenu(FrmMain& window, const QPoint& at) {
    MainContext& ctx = window.ctx();
    Commands& c = ctx.commands();
    if (ctx.lstvPlaylist().count() > 0) {
        QMenu menu(&window);
        menu.setObjectName(QStringLiteral("mnuRightMenu"));
        QAction* play = c.action(QStringLiteral("mnuPlay2"));
        play->setEnabled(c.isEnabled(QStringLiteral("mnuPlay")));
        menu.addAction(play);
        menu.setDefaultAction(play);
        menu.addAction(c.action(QStringLiteral("mnuPlayNext")));
        menu.addAction(c.action(QStringLiteral("mnuRefresh")));
        QMenu* find = menu.addMenu(QStringLiteral("&Find"));
        find->setObjectName(QStringLiteral("mnuFind"));
        for (const char* name : {"mnuMoreOnThisArtist", "mnuMoreOnThisYear"})
            find->addAction(c.action(QString::fromLatin1(name)));
        menu.addAction(c.action(QStringLiteral("mnuJumpToMedia")));
        QMenu* queue = menu.addMenu(QStringLiteral("&Queue"));
        queue->setObjectName(QStringLiteral("mnuQueue"));
        for (const char* name :
             {"mnuPlaySong", "mnuPlayOnce", "mnuSkip", "mnuSkipOnce", "mnuRemove"})
            queue->addAction(c.action(QString::fromLatin1(name)));
        queue->addSeparator();
        for (const char* name : {"mnuPlayAll", "mnuSkipAll"})
            queue->addAction(c.action(QString::fromLatin1(name)));
        queue->addSeparator();
        queue->addAction(c.action(QStringLiteral("mnuAdvanced")));
        menu.addSeparator();
        QMenu* options = menu.addMenu(QStringLiteral("&Options"));
        options->setObjectName(QStringLiteral("mnuOptions"));
        for (const char* name : {"mnuRemoveSelected", "mnuSelectedCrop", "mnuSelectedMoveUp",
                                 "mnuSelectedMoveDown", "mnuRemovePhysicallyDeleteSelected"})
            options->addAction(c.action(QString::fromLatin1(name)));
        options->addSeparator();
        for (const char* name : {"mnuCut", "mnuCopy", "mnuPaste", "mnuSelectAll"})
            options->addAction(c.action(QString::fromLatin1(name)));
        options->addSeparator();
        for (const char* name : {"mnuSelectedCopyTAG", "mnuRenameFilename", "mnuSelectPlaying"})
            options->addAction(c.action(QString::fromLatin1(name)));
        menu.addMenu(buildSendToMenu(window, &menu));
        menu.addAction(c.action(QStringLiteral("mnuStoreVolume")));
        menu.addAction(c.action(QStringLiteral("mnuProperties")));
        menu.exec(at);
        return;
    }
    // An empty list offers only the ways to fill it.
    QMenu* file = window.menuBar()->findChild<QMenu*>(QStringLiteral("mnuFile"));
    if (!file) return;
    for (const char* name : kHiddenOnEmptyList)
        c.setVisible(QString::fromLatin1(name), false);
    file->exec(at);
    for (const char* name : kHiddenOnEmptyList)
        c.setVisible(QString::fromLatin1(name), true);
}

} // namespace

void MainEvents_install(FrmMain& window) {
    MainContext& ctx = window.ctx();
    Commands& c = ctx.commands();
    // Entries only the pop-up menus carry.
    for (const auto& [name, text] : {std::pair{"mnuPlay2", "&Play"},
                                     {"mnuRefresh", "&Refresh Tags"},
                                     {"mnuMoreOnThisArtist", "More On This &Artist"},
                                     {"mnuMoreOnThisYear", "More On This &Year"},
                                     {"mnuRenameFilename", "Re&name Filename..."},
                                     {"mnuUpdate", "&Update"}})
        c.addCaption(QLatin1String(name), QLatin1String(text));
    ListView* view = window.lstvPlaylist();
    ListModel& list = ctx.lstvPlaylist();

    QObject::connect(view, &ListView::columnClicked, &window,
                     [&ctx](int column) { lstvPlaylist_ColumnClick(ctx, column); });
    QObject::connect(view, &ListView::rowDoubleClicked, &window,
                     [&ctx] { lstvPlaylist_DblClick(ctx); });
    QObject::connect(view, &ListView::keyCodePressed, &window,
                     [&window, &ctx](int code, Qt::KeyboardModifiers mods, bool* handled) {
                         if (mods & (Qt::AltModifier | Qt::ControlModifier)) return;
                         if (code == 93) {
                             const QRect r = window.lstvPlaylist()->visualRect(
                                 window.lstvPlaylist()->currentIndex());
                             popupRightMenu(window, window.lstvPlaylist()->viewport()->mapToGlobal(
                                                        r.isValid() ? r.center() : QPoint(10, 10)));
                             *handled = true;
                             return;
                         }
                         if (code == 39 || code == 37 || code == 13)
                             *handled = lstvPlaylist_KeyDown(ctx, code);
                     });
    QObject::connect(view, &ListView::contextMenuAt, &window,
                     [&window](const QPoint& at) { popupRightMenu(window, at); });
    QObject::connect(view, &ListView::rowDragStarted, &window,
                     [&ctx](int row) { lstvPlaylist_OLEStartDrag(ctx, row + 1); });
    QObject::connect(view, &ListView::rowDropped, &window,
                     [&ctx](int target) { lstvPlaylist_OLEDragDrop(ctx, target + 1); });

    // The lock's look: the list and the combo greyed and unusable.
    QObject::connect(&list, &ListModel::enabledChanged, view, &QWidget::setEnabled);
    QObject::connect(&list, &ListModel::backColorChanged, view, [view](qint64 colour) {
        view->setBackgroundColor(Colors::fromColorRef(colour, view->palette()));
    });
    QObject::connect(&PlaylistEditState::of(ctx), &PlaylistEditState::comboBackColorChanged,
                     window.cmbPlaylists(), [&window](qint64 colour) {
                         ui_SetBackground(window.cmbPlaylists(),
                                          Colors::fromColorRef(colour, window.palette()));
                     });

    // Commands of the main window itself.
    c.setHandler(QStringLiteral("mnuExit"), [&window] { mnuExit_Click(window); });
    c.setHandler(QStringLiteral("mnuPlay2"), [&c] { c.runIfEnabled(QStringLiteral("mnuPlay")); });
    c.setHandler(QStringLiteral("mnuConsole"), [] {
        FrmConsole& console = FrmConsole::instance();
        console.show();
        console.raise();
        console.activateWindow();
    });
    c.setHandler(QStringLiteral("mnuFontsizeIncrease"), [&window] {
        QFont f = window.ctx().lstvPlaylist().font();
        f.setPointSizeF(qMin(72.0, f.pointSizeF() + 1));
        window.ctx().lstvPlaylist().setFont(f);
        window.lstvPlaylist()->setFont(f);
    });
    c.setHandler(QStringLiteral("mnuFontsizeDecrease"), [&window] {
        QFont f = window.ctx().lstvPlaylist().font();
        f.setPointSizeF(qMax(4.0, f.pointSizeF() - 1));
        window.ctx().lstvPlaylist().setFont(f);
        window.lstvPlaylist()->setFont(f);
    });
    c.setHandler(QStringLiteral("mnuAbout"), [&window] { FrmAbout::showOver(&window); });
    c.setHandler(QStringLiteral("mnuAboutWindows"), [] { mnuAboutWindows_Click(); });
    ctx.focusPlaylist = [view] { view->setFocus(); };

    QObject::connect(window.tmrWindowUpdate(), &QTimer::timeout, &window,
                     [&window] { tmrWindowUpdate_Timer(window); });
    QObject::connect(window.tmrPosition(), &QTimer::timeout, &window,
                     [&window] { tmrPosition_Timer(window); });
    // What later parts will bring stays greyed until it stands.
    c.disableUnbuilt(MainMenus::containerNames(), MainMenus::toolbarTargets());
    // Menu help on the status bar comes from hovering, not from polling.
    for (QAction* a : c.all())
        QObject::connect(a, &QAction::hovered, &window, [a, &ctx] {
            if (!a->statusTip().isEmpty()) ctx.setStatusText(a->statusTip());
        });
}
