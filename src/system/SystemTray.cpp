#include "system/SystemTray.h"

#include "core/App.h"
#include "core/Commands.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "system/TrayHostWatch.h"

#include <QApplication>
#include <QMenu>
#include <QPainter>
#include <QStyle>
#include <QSystemTrayIcon>
#include <QWidget>

namespace {
const QString kSettings = QStringLiteral("Settings");

// Tray item -> main window command of the same name.
struct Item {
    const char* name;
    const char* target;
};
const Item kItems[] = {
    {"mnuAbout", "mnuAbout"},
    {"mnuAboutWindows", "mnuAboutWindows"},
    {"-", nullptr},
    {"mnuPrevious", "mnuPrevious"},
    {"mnuRewind", "mnuRewind"},
    {"mnuPLay", "mnuPlay"},
    {"mnuPause", "mnuPause"},
    {"mnuStop", "mnuStop"},
    {"mnuRandom", "mnuRandom"},
    {"mnuFastForward", "mnuFastForward"},
    {"mnuNextTrack", "mnuNextTrack"},
    {"mnuNextTrackAdvanced", "mnuNextTrackAdvanced"},
    {"-", nullptr},
    {"mnuOpen", "mnuOpen"},
    {"mnuVolume", "mnuVolume"},
    {"-", nullptr},
    {"mnuExit", "mnuExit"},
};

// The icon's own window carries the tip as its name, which is what a screen reader or a tray
// host that lists its icons says.
void nameIconWindow(const QString& tip) {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (!qstrcmp(w->metaObject()->className(), "QSystemTrayIconSys")) w->setWindowTitle(tip);
}

QWidget* topLevel(const char* name) {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String(name)) return w;
    return nullptr;
}
} // namespace

SystemTray::SystemTray(MainContext& ctx, QWidget* mainWindow)
    : QObject(mainWindow), m_ctx(ctx), m_main(mainWindow) {
    buildMenu();
    m_watch = new TrayHostWatch(this);
    connect(m_watch, &TrayHostWatch::hostAppeared, this, &SystemTray::tmrSystemTrayDetect_Timer);
    connect(&ctx, &MainContext::trayTipChanged, this, &SystemTray::tray_SetTip);
    // The mute command swaps the picture.
    connect(ctx.commands().action(QStringLiteral("mnuMute")), &QAction::changed, this, [this] {
        if (m_icon) tray_SetIcon(muted());
    });
}

SystemTray::~SystemTray() {
    tray_Remove();
    delete m_menu;
}

QIcon SystemTray::appIcon(bool muted) {
    // Drawn here: a round badge with a note, crossed out while muted.
    QPixmap pm(64, 64);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    p.setBrush(QColor(0x2d, 0x5f, 0x9e));
    p.setPen(Qt::NoPen);
    p.drawEllipse(2, 2, 60, 60);
    p.setBrush(Qt::white);
    p.drawEllipse(16, 38, 16, 12);
    p.drawRect(28, 14, 4, 30);
    p.drawRect(28, 14, 18, 5);
    if (muted) {
        p.setPen(QPen(QColor(0xd0, 0x20, 0x20), 7, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(10, 54, 54, 10);
    }
    return QIcon(pm);
}

QString SystemTray::clipTip(const QString& tip) {
    return tip.left(255);
}

bool SystemTray::muted() const {
    return m_ctx.commands().caption(QStringLiteral("mnuMute")).startsWith(QLatin1String("Un-"));
}

void SystemTray::buildMenu() {
    Commands& c = m_ctx.commands();
    m_menu = new QMenu();
    m_menu->setObjectName(QStringLiteral("mnuSystemTray"));
    m_menu->setAccessibleName(QStringLiteral("Tray menu"));
    for (const Item& item : kItems) {
        if (!item.target) {
            m_menu->addSeparator();
            continue;
        }
        QAction* target = c.action(QLatin1String(item.target));
        auto* a = new QAction(m_menu);
        a->setObjectName(QLatin1String(item.name));
        const auto follow = [a, target] {
            a->setText(target->text()); // key hint included, as on the main menu
            a->setEnabled(target->isEnabled());
        };
        follow();
        connect(target, &QAction::changed, a, follow);
        const QString name = QLatin1String(item.target);
        connect(a, &QAction::triggered, this, [this, name] {
            if (m_ctx.commands().isEnabled(name)) m_ctx.commands().run(name);
        });
        m_menu->addAction(a);
        if (name == QLatin1String("mnuOpen")) {
            QFont bold = a->font();
            bold.setBold(true);
            a->setFont(bold);
            m_menu->setDefaultAction(a);
        }
    }
    // A modal dialog up: the menu offers nothing, so it cannot be left behind a window.
    connect(m_menu, &QMenu::aboutToShow, this, [this] {
        for (QAction* a : m_menu->actions()) {
            if (a->isSeparator()) continue;
            const QString target = QLatin1String(a->objectName() == QLatin1String("mnuPLay")
                                                     ? "mnuPlay"
                                                     : a->objectName().toLatin1().constData());
            a->setEnabled(!m_ctx.ModalWindowOpen && m_ctx.commands().isEnabled(target));
        }
    });
}

void SystemTray::tray_Install(bool mutedIcon) {
    if (!m_icon) {
        // Parented to the application: the exit ticks look for it there.
        m_icon = new QSystemTrayIcon(qApp);
        m_icon->setObjectName(QStringLiteral("SystemTrayIcon"));
        m_icon->setContextMenu(m_menu);
        connect(m_icon, &QSystemTrayIcon::activated, this,
                [this](QSystemTrayIcon::ActivationReason r) { activated(int(r)); });
    }
    m_icon->setIcon(appIcon(mutedIcon));
    m_icon->setToolTip(clipTip(m_ctx.TrayTip));
    m_icon->show();
    nameIconWindow(clipTip(m_ctx.TrayTip));
}

void SystemTray::tray_Remove() {
    if (!m_icon) return;
    m_icon->hide();
    delete m_icon;
}

void SystemTray::tray_SetTip(const QString& tip) {
    if (!m_icon) return;
    m_icon->setToolTip(clipTip(tip));
    nameIconWindow(clipTip(tip));
}

void SystemTray::tray_SetIcon(bool mutedIcon) {
    if (m_icon) m_icon->setIcon(appIcon(mutedIcon));
}

bool SystemTray::shown() const {
    return m_icon && m_icon->isVisible() && QSystemTrayIcon::isSystemTrayAvailable();
}

void SystemTray::tmrSystemTrayDetect_Timer() {
    if (!settings_IsOn(kSettings, QStringLiteral("UseSystemTraySupport"), QStringLiteral("1")))
        return;
    tray_Remove();
    tray_Install(muted());
}

void SystemTray::activated(int reason) {
    if (m_ctx.ModalWindowOpen || !m_main) return;
    if (reason == QSystemTrayIcon::DoubleClick) {
        m_ctx.commands().run(QStringLiteral("mnuOpen"));
        return;
    }
    if (reason != QSystemTrayIcon::Trigger) return;
    QWidget* w = m_main;
    if (m_ctx.commands().isChecked(QStringLiteral("mnuSwitchToMiniMode")))
        if (QWidget* mini = topLevel("FrmMini")) w = mini;
    if (w->isMinimized() || !w->isVisible()) {
        m_ctx.commands().run(QStringLiteral("mnuOpen"));
    } else {
        w->raise();
        w->activateWindow();
    }
}

bool SystemTray::window_MinimizeToTray() {
    if (!m_main) return false;
    if (!shown()) return false; // nowhere to come back from
    Commands& c = m_ctx.commands();
    m_ctx.WindowWasMaximized = m_main->isMaximized();
    if (c.isChecked(QStringLiteral("mnuOpenMediaLibrary")))
        if (QWidget* w = topLevel("FrmMediaLibrary")) w->hide();
    if (c.isChecked(QStringLiteral("mnuOpenCDPlayer")))
        if (QWidget* w = topLevel("FrmCDPlayer")) w->hide();
    m_main->hide();
    if (settings_IsOn(kSettings, QStringLiteral("ShowMiniModeWhenWindowIsClosed"),
                      QStringLiteral("0")) &&
        c.hasHandler(QStringLiteral("mnuSwitchToMiniMode"))) {
        c.run(QStringLiteral("mnuSwitchToMiniMode"));
        return true;
    }
    m_ctx.WindowShown = false;
    if (QWidget* video = topLevel("FrmVideo")) video->hide();
    return true;
}

void SystemTray::mnuOpen_Click() {
    if (!m_main || m_ctx.WindowClosing) return;
    Commands& c = m_ctx.commands();
    QWidget* mini =
        c.isChecked(QStringLiteral("mnuSwitchToMiniMode")) ? topLevel("FrmMini") : nullptr;
    if (mini) {
        mini->showNormal();
    } else {
        if (m_ctx.WindowWasMaximized)
            m_main->showMaximized();
        else
            m_main->showNormal();
        m_main->raise();
        m_main->activateWindow();
    }
    if (c.isChecked(QStringLiteral("mnuOpenMediaLibrary")))
        if (QWidget* w = topLevel("FrmMediaLibrary")) w->show();
    // The video window comes back only with a video in it.
    if (m_ctx.video_IsOpened && m_ctx.video_IsOpened() && m_ctx.playerActive())
        if (QWidget* video = topLevel("FrmVideo")) video->showNormal();
    if (c.isChecked(QStringLiteral("mnuOpenCDPlayer")))
        if (QWidget* w = topLevel("FrmCDPlayer")) w->show();
    m_ctx.WindowShown = true;
}
