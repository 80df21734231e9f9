#include "cd/FrmCDPlayer.h"

#include "cd/CdPlayer.h"
#include "cd/CdProbe.h"
#include "core/Colors.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/SliderModel.h"
#include "system/modWindows.h"
#include "ui/CommandBinding.h"
#include "ui/ListView.h"

#include <QCloseEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QPointer>
#include <QScreen>
#include <QSlider>
#include <QStatusBar>
#include <QTime>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

QPointer<FrmCDPlayer> g_window;

const QString kColumns = QStringLiteral("ColumnHeaders_CDPlayer");

// Items of the main window this one offers too; they do what they do there.
const char* const kForwarded[] = {"mnuPreferences",     "mnuConsole", "mnuTracking",
                                  "mnuVolumes",         "mnuAbout",   "mnuAboutWindows",
                                  "mnuCheckForUpdates", "mnuForum",   "mnuHomepage"};

} // namespace

FrmCDPlayer* FrmCDPlayer::current() {
    return g_window.data();
}

FrmCDPlayer& FrmCDPlayer::showFor(MainContext& ctx) {
    if (!g_window) {
        g_window = new FrmCDPlayer(ctx);
        g_window->show();
        // The scan runs once the window shows, so a slow drive never keeps it from appearing.
        g_window->rules().mnuNew_Click();
    } else {
        if (g_window->isMinimized()) g_window->showNormal();
        g_window->show();
    }
    g_window->raise();
    g_window->activateWindow();
    // Opened while the main window is still being set up, it stays in front of it.
    QTimer::singleShot(0, g_window, [] {
        if (!g_window) return;
        g_window->raise();
        g_window->activateWindow();
    });
    return *g_window;
}

FrmCDPlayer::FrmCDPlayer(MainContext& ctx, QWidget* parent)
    : QMainWindow(parent), m_ctx(ctx),
      m_rules(new CdPlayer([] { return CdProbe::instance().drives(80); }, this)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QStringLiteral("FrmCDPlayer"));
    setWindowTitle(QStringLiteral("CD Player"));
    setAccessibleName(QStringLiteral("CD Player"));
    window_WriteLog(QStringLiteral("CD Player opened at %1.")
                        .arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss"))));

    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(4, 4, 4, 4);
    m_view =
        ui_Named(new ListView(&m_rules->lstvPlaylist(), central), "lstvPlaylist", "Audio tracks");
    layout->addWidget(m_view, 1);
    auto* row = new QHBoxLayout;
    auto* label = new QLabel(QStringLiteral("Position:"), central);
    m_slider = ui_Named(new QSlider(Qt::Horizontal, central), "sldPosition", "Position");
    m_slider->setToolTip(QStringLiteral("Current Position"));
    label->setBuddy(m_slider);
    row->addWidget(label);
    row->addWidget(m_slider, 1);
    layout->addLayout(row);
    setCentralWidget(central);

    QStatusBar* bar = statusBar();
    bar->setObjectName(QStringLiteral("sbStatusBar"));
    bar->setAccessibleName(QStringLiteral("Status"));
    for (int i = 0; i < 4; ++i) {
        m_panels[i] = new QLabel(this);
        m_panels[i]->setObjectName(QStringLiteral("sbStatusBar.Panel%1").arg(i + 1));
        bar->addWidget(m_panels[i], i == 0 ? 1 : 0);
    }

    buildMenus();
    buildToolbar();

    SliderModel& position = m_rules->sldPosition();
    connect(&position, &SliderModel::changed, m_slider, [this, &position] {
        if (m_slider->isSliderDown()) return;
        m_slider->setRange(0, qMax(0, position.maximum()));
        m_slider->setValue(position.value());
    });
    connect(m_slider, &QSlider::sliderPressed, m_rules, &CdPlayer::sldPosition_MouseDown);
    connect(m_slider, &QSlider::sliderReleased, this, [this, &position] {
        position.setValue(m_slider->value());
        m_rules->sldPosition_MouseUp();
    });
    connect(m_view, &ListView::rowDoubleClicked, m_rules, &CdPlayer::lstvPlaylist_Activate);
    connect(m_view, &ListView::keyCodePressed, this,
            [this](int code, Qt::KeyboardModifiers mods, bool* handled) {
                if (code == 13) {
                    m_rules->lstvPlaylist_Activate();
                    *handled = true;
                } else {
                    *handled = transportKey(code, mods);
                }
            });
    connect(m_view, &ListView::contextMenuAt, this, [this](const QPoint& at) {
        if (auto* menu = findChild<QMenu*>(QStringLiteral("mnuPlayback"))) menu->exec(at);
    });
    connect(m_rules, &CdPlayer::panelsChanged, this, &FrmCDPlayer::showPanels);
    // A drive that answered after the scan gave up on it gets its tracks shown.
    connect(&CdProbe::instance(), &CdProbe::discRead, this, [this] {
        if (m_rules->lstvPlaylist().count() == 0) m_rules->mnuNew_Click();
    });

    restoreLook();
    applySettings();
    for (const char* name :
         {"mnuAlwaysOnTop", "mnuShowToolbar", "mnuShowStatusBar", "mnuShowPlaylistHeaders"})
        connect(m_rules->commands().action(QString::fromLatin1(name)), &QAction::toggled, this,
                &FrmCDPlayer::applySettings);
    showPanels();
}

FrmCDPlayer::~FrmCDPlayer() = default;

void FrmCDPlayer::buildMenus() {
    Commands& c = m_rules->commands();
    auto menu = [this, &c](const char* name, const char* title,
                           std::initializer_list<const char*> items) {
        QMenu* m = menuBar()->addMenu(QString::fromLatin1(title));
        m->setObjectName(QString::fromLatin1(name));
        for (const char* item : items) {
            if (!item) {
                m->addSeparator();
                continue;
            }
            QAction* a = c.action(QString::fromLatin1(item));
            a->setObjectName(QString::fromLatin1(item));
            m->addAction(a);
            connect(a, &QAction::hovered, m_rules, [this, item] {
                m_rules->showMenuText(CdPlayer::menuHelp(QString::fromLatin1(item)));
            });
        }
        connect(m, &QMenu::aboutToHide, m_rules, [this] { m_rules->showMenuText({}); });
        return m;
    };
    menu("mnuFile", "&File", {"mnuNew", "mnuPreferences", nullptr, "mnuClose"});
    QMenu* playback = menu("mnuPlayback", "&Playback",
                           {"mnuPrevious", "mnuPlay", "mnuPause", "mnuStop", "mnuNext", nullptr,
                            "mnuRandom", nullptr, "mnuEject"});
    playback->setDefaultAction(c.action(QStringLiteral("mnuPlay")));
    menu("mnuView", "&View",
         {"mnuAlwaysOnTop", nullptr, "mnuShowTimeElapsed", "mnuShowTimeRemaining", nullptr,
          "mnuShowToolbar", "mnuShowStatusBar", "mnuShowPlaylistHeaders", nullptr,
          "mnuReCenterWindow"});
    menu("mnuTools", "&Tools", {"mnuConsole", "mnuTracking", "mnuVolumes"});
    menu("mnuHelp", "&Help",
         {"mnuCheckForUpdates", nullptr, "mnuForum", "mnuHomepage", nullptr, "mnuAbout",
          "mnuAboutWindows"});

    c.setHandler(QStringLiteral("mnuClose"), [this] { close(); });
    c.setHandler(QStringLiteral("mnuReCenterWindow"), [this] { recenter(); });
    for (const char* item : kForwarded) {
        const QString name = QString::fromLatin1(item);
        c.setHandler(name, [this, name] { m_ctx.commands().run(name); });
        c.setEnabled(name, m_ctx.commands().hasHandler(name));
    }
}

void FrmCDPlayer::buildToolbar() {
    m_toolbar = addToolBar(QStringLiteral("Controls"));
    m_toolbar->setObjectName(QStringLiteral("tbToolbar"));
    m_toolbar->setAccessibleName(QStringLiteral("Controls"));
    m_toolbar->setMovable(false);
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    Commands& c = m_rules->commands();
    const char* const keys[] = {"Previous", "Play", "Pause", "Stop", "Next", "Random", "Eject"};
    for (const char* key : keys) {
        const QString name = QStringLiteral("mnu") + QString::fromLatin1(key);
        // The button is the face of the menu item: same enabling, same click.
        auto* button = new QAction(QString::fromLatin1(key), m_toolbar);
        button->setObjectName(QStringLiteral("tbToolbar.") + QString::fromLatin1(key));
        QAction* item = c.action(name);
        button->setEnabled(item->isEnabled());
        connect(item, &QAction::changed, button,
                [button, item] { button->setEnabled(item->isEnabled()); });
        connect(button, &QAction::triggered, this, [&c, name] { c.runIfEnabled(name); });
        m_toolbar->addAction(button);
        if (qstrcmp(key, "Next") == 0 || qstrcmp(key, "Random") == 0) m_toolbar->addSeparator();
    }
}

void FrmCDPlayer::restoreLook() {
    // A first opening gets a player's size rather than the whole screen.
    if (settings_Read(QStringLiteral("Position_CDPlayer"), QStringLiteral("Window_Width"))
            .isEmpty()) {
        // Wide enough that the status bar's longest texts show whole, track number included.
        const QFontMetrics metrics(statusBar()->font());
        int needed = 0;
        for (const char* text : {"Status:  Playing... Audio Track 00", "Tracks:  00",
                                 "Length:  None", "Remaining:  00:00"})
            needed += metrics.horizontalAdvance(QLatin1String(text)) + 16;
        resize(qMax(modWindows::twipsToPixels(7200, this), needed),
               modWindows::twipsToPixels(5400, this));
        recenter();
    } else {
        modWindows::window_RestorePosition(this, QStringLiteral("CDPlayer"), 0);
    }
    const auto twips = [this](const char* key, const char* def) {
        const double v =
            settings_Number(kColumns, QString::fromLatin1(key), QString::fromLatin1(def));
        return modWindows::twipsToPixels(int(qBound(0.0, v, 20000.0)), this);
    };
    const int number = twips("Number", "800"), length = twips("Length", "1000");
    m_view->setColumnWidths({number, qMax(80, width() - number - length - 40), length});
    const QString section = QStringLiteral("Appearance");
    QPalette p = m_view->palette();
    p.setColor(QPalette::Base, Colors::fromColorRef(Colors::parse(
                                   settings_Read(section, QStringLiteral("BackgroundColour")),
                                   Colors::SystemWindow)));
    p.setColor(QPalette::Text, Colors::fromColorRef(Colors::parse(
                                   settings_Read(section, QStringLiteral("FontColour")),
                                   Colors::SystemWindowText)));
    m_view->setPalette(p);
}

void FrmCDPlayer::applySettings() {
    Commands& c = m_rules->commands();
    modWindows::window_SetAlwaysOnTop(this, c.isChecked(QStringLiteral("mnuAlwaysOnTop")));
    m_toolbar->setVisible(c.isChecked(QStringLiteral("mnuShowToolbar")));
    statusBar()->setVisible(c.isChecked(QStringLiteral("mnuShowStatusBar")));
    m_view->setHeadersVisible(c.isChecked(QStringLiteral("mnuShowPlaylistHeaders")));
}

void FrmCDPlayer::showPanels() {
    for (int i = 0; i < 4; ++i)
        m_panels[i]->setText(m_rules->panelText(i));
}

void FrmCDPlayer::recenter() {
    const QScreen* screen = this->screen() ? this->screen() : QGuiApplication::primaryScreen();
    if (!screen) return;
    QRect r = frameGeometry();
    r.moveCenter(screen->availableGeometry().center());
    move(r.topLeft());
}

bool FrmCDPlayer::transportKey(int key, Qt::KeyboardModifiers mods) {
    // E ejects only through its menu item: a stray key must not open the tray.
    static const QHash<int, QString> keys{
        {Qt::Key_M, QStringLiteral("mnuRandom")}, {Qt::Key_V, QStringLiteral("mnuPrevious")},
        {Qt::Key_P, QStringLiteral("mnuPlay")},   {Qt::Key_U, QStringLiteral("mnuPause")},
        {Qt::Key_S, QStringLiteral("mnuStop")},   {Qt::Key_N, QStringLiteral("mnuNext")}};
    const auto it = keys.constFind(key);
    if (it == keys.constEnd() || (mods & ~Qt::KeypadModifier) == Qt::ControlModifier) return false;
    m_rules->commands().runIfEnabled(*it);
    return true;
}

void FrmCDPlayer::keyPressEvent(QKeyEvent* event) {
    if (!transportKey(event->key(), event->modifiers())) QMainWindow::keyPressEvent(event);
}

void FrmCDPlayer::closeEvent(QCloseEvent* event) {
    if (!m_closed) {
        m_closed = true;
        modWindows::window_SavePosition(this, QStringLiteral("CDPlayer"), 0);
        settings_Write(kColumns, QStringLiteral("Number"),
                       modWindows::pixelsToTwips(m_view->columnWidth(0), this));
        settings_Write(kColumns, QStringLiteral("Length"),
                       modWindows::pixelsToTwips(m_view->columnWidth(2), this));
        m_rules->form_Unload();
    }
    event->accept();
}
