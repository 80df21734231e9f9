#include "ui/FrmMini.h"

#include "core/Colors.h"
#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/SliderModel.h"
#include "playlists/PlaylistRows.h"
#include "system/SystemTray.h"
#include "system/modWindows.h"
#include "ui/FrmCustomise.h"
#include "ui/MiniGlyphs.h"
#include "ui/MiniScrollText.h"
#include "ui/ctlKL_Buttons.h"
#include "ui/ctlKL_Digital.h"
#include "ui/ctlKL_wScrollbar.h"

#include <QAccessibleWidget>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QScreen>
#include <QSystemTrayIcon>
#include <QVBoxLayout>
#include <QWindow>

namespace {
const QString kSettings = QStringLiteral("MiniModeSettings");
const QString kPosition = QStringLiteral("Position_MiniMode");

// What each of the twelve buttons runs, and its name for a screen reader.
struct ButtonSpec {
    const char* command;
    const char* name;
};
const ButtonSpec kButtons[12] = {{"mnuPrevious", "Previous"},
                                 {"mnuRewind", "Rewind"},
                                 {"mnuPlay", "Play"},
                                 {"mnuPause", "Pause"},
                                 {"mnuStop", "Stop"},
                                 {"mnuFastForward", "Fast Forward"},
                                 {"mnuRandom", "Random"},
                                 {"mnuNextTrack", "Next"},
                                 {"mnuNextTrackAdvanced", "Next (Advanced)"},
                                 {nullptr, "Media Library"},
                                 {nullptr, "CD Player"},
                                 {nullptr, "Full Mode"}};

// A plain QWidget is a "client" to screen readers; this one is a window of its own.
QAccessibleInterface* windowAccessible(const QString& className, QObject* object) {
    if (className == QLatin1String("FrmMini") && object->isWidgetType())
        return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Window);
    return nullptr;
}

QWidget* topLevel(const char* name) {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String(name)) return w;
    return nullptr;
}

QLabel* label(const QString& name, const QString& text, QWidget* parent) {
    auto* l = new QLabel(text, parent);
    l->setObjectName(name);
    l->setAutoFillBackground(true);
    return l;
}
} // namespace

FrmMini::FrmMini(MainContext& ctx, QWidget* mainWindow)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint), m_ctx(ctx), m_main(mainWindow) {
    static const bool accessible = (QAccessible::installFactory(windowAccessible), true);
    Q_UNUSED(accessible);
    setObjectName(QStringLiteral("FrmMini"));
    setWindowTitle(QStringLiteral("VELDOR"));
    setAccessibleName(QStringLiteral("Mini-Mode"));
    setAttribute(Qt::WA_DeleteOnClose, false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    buildTitleBar();
    buildCenter();
    layout->addWidget(m_titleBar);
    layout->addWidget(m_center);
    buildMenu();
    installFont();
    fitToFont();

    m_tmrPosition.setInterval(500);
    m_tmrPlaying.setInterval(100);
    connect(&m_tmrPosition, &QTimer::timeout, this, &FrmMini::tmrPosition_Timer);
    connect(&m_tmrPlaying, &QTimer::timeout, this, &FrmMini::tmrPlaying_Timer);

    // The main window's sliders are the store: moving one moves the other, and a move from
    // the program never raises Change here.
    auto follow = [](SliderModel& model, ctlKL_wScrollbar* bar) {
        if (model.maximum() > bar->Max()) bar->setMax(model.maximum());
        bar->setValue(model.value());
        if (model.maximum() < bar->Max()) bar->setMax(model.maximum());
    };
    connect(&ctx.sldVolume(), &SliderModel::changed, this,
            [this, follow] { follow(m_ctx.sldVolume(), m_volume); });
    connect(&ctx.sldBalance(), &SliderModel::changed, this,
            [this, follow] { follow(m_ctx.sldBalance(), m_balance); });
    connect(&ctx.sldPosition(), &SliderModel::changed, this, [this] { updateTimers(); });
    connect(&ctx, &MainContext::statusTextChanged, this, [this] { updateTimers(); });
    connect(m_volume, &ctlKL_wScrollbar::Change, this,
            [this] { m_ctx.sldVolume().scroll(m_volume->value()); });
    connect(m_balance, &ctlKL_wScrollbar::Change, this,
            [this] { m_ctx.sldBalance().scroll(m_balance->value()); });
    connect(m_position, &ctlKL_wScrollbar::Change, this,
            [this] { m_ctx.sldPosition().scroll(m_position->value()); });

    // Opening: colours, top-most state, the lock, the place, the sliders, one tick of each timer.
    window_InstallColours();
    m_alwaysOnTop->setChecked(settings_Read(kSettings, QStringLiteral("AlwaysOnTop"),
                                            QStringLiteral("0")) == QLatin1String("1"));
    m_lockPosition->setChecked(settings_Read(kSettings, QStringLiteral("LockPosition"),
                                             QStringLiteral("0")) == QLatin1String("1"));
    follow(ctx.sldVolume(), m_volume);
    follow(ctx.sldBalance(), m_balance);
    adjustSize();
    applyTopMost();
    restorePosition();
    tmrPosition_Timer();
    tmrPlaying_Timer();
}

FrmMini::~FrmMini() = default;

void FrmMini::buildTitleBar() {
    m_titleBar = new ctlKL_wPanel(this);
    m_titleBar->setObjectName(QStringLiteral("guiTitleBar"));
    auto* row = new QHBoxLayout(m_titleBar);
    row->setContentsMargins(3, 2, 3, 2);
    row->setSpacing(2);
    m_icon = new QLabel(m_titleBar);
    m_icon->setObjectName(QStringLiteral("imgIcon"));
    QIcon icon = QApplication::windowIcon();
    if (icon.isNull()) icon = SystemTray::appIcon(false);
    m_icon->setPixmap(icon.pixmap(QSize(14, 14)));
    m_caption = label(QStringLiteral("lblCaption"), QStringLiteral("VELDOR"), m_titleBar);
    m_caption->setAutoFillBackground(false);
    QFont bold = m_caption->font();
    bold.setBold(true);
    m_caption->setFont(bold);
    m_minimize = new ctlKL_wImageButton(m_titleBar);
    m_minimize->setObjectName(QStringLiteral("imgMinimize"));
    m_minimize->setAccessibleName(QStringLiteral("Minimize"));
    m_close = new ctlKL_wImageButton(m_titleBar);
    m_close->setObjectName(QStringLiteral("imgClose"));
    m_close->setAccessibleName(QStringLiteral("Close"));
    for (auto* b : {m_minimize, m_close})
        b->setFixedSize(16, 14);
    row->addWidget(m_icon);
    row->addWidget(m_caption, 1);
    row->addWidget(m_minimize);
    row->addWidget(m_close);
    // Presses on the caption reach the title bar: a label takes no mouse of its own. The icon
    // opens the window's menu on a double click and moves nothing.
    m_caption->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_icon->installEventFilter(this);
    connect(
        m_titleBar, &ctlKL_wPanel::MouseDown, this,
        [this](Qt::MouseButton b, Qt::KeyboardModifiers, int x, int y) { titleBarDown(b, x, y); });
    connect(m_titleBar, &ctlKL_wPanel::MouseMove, this,
            [this](Qt::MouseButtons, Qt::KeyboardModifiers, int x, int y) { titleBarMove(x, y); });
    connect(m_titleBar, &ctlKL_wPanel::MouseUp, this, [this] { m_dragging = false; });
    connect(m_minimize, &ctlKL_wImageButton::Click, this, [this] { showMinimized(); });
    connect(m_close, &ctlKL_wImageButton::Click, this, [this] { close(); });
}

void FrmMini::buildCenter() {
    m_center = new ctlKL_wPanel(this);
    m_center->setObjectName(QStringLiteral("guiCenter"));
    auto* grid = new QGridLayout(m_center);
    grid->setContentsMargins(5, 5, 5, 5);
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(4);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(1);
    for (int i = 0; i < 12; ++i) {
        auto* b = new ctlKL_wImageButton(m_center);
        b->setObjectName(QStringLiteral("klbButton_%1").arg(i));
        b->setAccessibleName(QString::fromLatin1(kButtons[i].name));
        b->setToolTip(QString::fromLatin1(kButtons[i].name));
        b->setFixedSize(22, 20);
        connect(b, &ctlKL_wImageButton::Click, this, [this, i] { klbButton_Click(i); });
        m_buttons[size_t(i)] = b;
        buttons->addWidget(b);
        if (i == 8) buttons->addSpacing(4);
    }
    grid->addLayout(buttons, 0, 0, 1, 4);

    m_picPlaying = new ctlKL_wPanel(m_center);
    m_picPlaying->setObjectName(QStringLiteral("picPlaying"));
    auto* playingRow = new QHBoxLayout(m_picPlaying);
    playingRow->setContentsMargins(3, 2, 3, 2);
    m_playing = new MiniScrollText(m_picPlaying);
    connect(m_playing, &MiniScrollText::fitChanged, this, [this] { updateTimers(); });
    playingRow->addWidget(m_playing);
    grid->addWidget(m_picPlaying, 1, 0, 1, 3);

    m_picTime = new ctlKL_wPanel(m_center);
    m_picTime->setObjectName(QStringLiteral("picTime"));
    auto* timeRow = new QHBoxLayout(m_picTime);
    timeRow->setContentsMargins(2, 2, 2, 2);
    m_number = new ctlKL_Digital(m_picTime);
    m_number->setObjectName(QStringLiteral("kldNumber"));
    timeRow->addWidget(m_number);
    grid->addWidget(m_picTime, 1, 3);

    m_position = new ctlKL_wScrollbar(m_center);
    m_position->setObjectName(QStringLiteral("klsPosition"));
    m_position->setAccessibleName(QStringLiteral("Position"));
    m_position->setFixedHeight(12);
    grid->addWidget(m_position, 2, 0, 1, 4);

    m_lblVolume = label(QStringLiteral("lblVolume"), QStringLiteral("Volume:"), m_center);
    m_volume = new ctlKL_wScrollbar(m_center);
    m_volume->setObjectName(QStringLiteral("klsVolume"));
    m_volume->setAccessibleName(QStringLiteral("Volume"));
    m_lblBalance = label(QStringLiteral("lblBalance"), QStringLiteral("Balance:"), m_center);
    m_balance = new ctlKL_wScrollbar(m_center);
    m_balance->setObjectName(QStringLiteral("klsBalance"));
    m_balance->setAccessibleName(QStringLiteral("Balance"));
    for (auto* s : {m_volume, m_balance})
        s->setFixedHeight(12);
    grid->addWidget(m_lblVolume, 3, 0);
    grid->addWidget(m_volume, 3, 1);
    grid->addWidget(m_lblBalance, 3, 2);
    grid->addWidget(m_balance, 3, 3);
    grid->setColumnStretch(1, 1);
}

void FrmMini::buildMenu() {
    m_systemMenu = new QMenu(this);
    m_systemMenu->setObjectName(QStringLiteral("mnuSystemMenu"));
    auto add = [this](const char* name, const QString& text, bool checkable) {
        QAction* a = m_systemMenu->addAction(text);
        a->setObjectName(QString::fromLatin1(name));
        a->setCheckable(checkable);
        return a;
    };
    m_customise = add("mnuCustomise", QStringLiteral("&Customise..."), false);
    m_systemMenu->addSeparator();
    m_lockPosition = add("mnuLockPosition", QStringLiteral("&Lock Position"), true);
    m_alwaysOnTop = add("mnuAlwaysOnTop", QStringLiteral("&Always On Top"), true);
    m_systemMenu->addSeparator();
    m_returnToFullMode = add("mnuReturnToFullMode", QStringLiteral("&Return To Full Mode"), false);
    m_minimizeAction = add("mnuMinimize", QStringLiteral("Mi&nimize"), false);
    m_systemMenu->setDefaultAction(m_minimizeAction);
    connect(m_customise, &QAction::triggered, this, &FrmMini::mnuCustomise_Click);
    connect(m_lockPosition, &QAction::triggered, this, [](bool on) {
        settings_Write(kSettings, QStringLiteral("LockPosition"), on ? "1" : "0");
    });
    connect(m_alwaysOnTop, &QAction::triggered, this, [this](bool on) {
        applyTopMost();
        settings_Write(kSettings, QStringLiteral("AlwaysOnTop"), on ? "1" : "0");
    });
    connect(m_returnToFullMode, &QAction::triggered, this, [this] { klbButton_Click(11); });
    connect(m_minimizeAction, &QAction::triggered, this, [this] { showMinimized(); });
}

void FrmMini::applyTopMost() {
    modWindows::window_SetAlwaysOnTop(this, m_alwaysOnTop->isChecked());
}

void FrmMini::window_InstallColours() {
    m_colours = MiniModeColours::read();
    const auto& c = m_colours.colour;
    using K = MiniModeColours;
    for (ctlKL_wPanel* panel : {m_titleBar, m_center}) {
        panel->setBackColor(c[K::BackColour]);
        panel->setBorderColor(c[K::BorderColour]);
        panel->setLinesLightColor(c[K::LightLinesColour]);
        panel->setLinesDarkColor(c[K::DarkLinesColour]);
    }
    const QColor glyph = Colors::fromColorRef(c[K::WindowFontColour], palette());
    for (int i = 0; i < 12; ++i) {
        ctlKL_wImageButton* b = m_buttons[size_t(i)];
        b->setBackColor(c[K::BackColour]);
        b->setBorderColor(c[K::BorderColour]);
        b->setLinesLightColor(c[K::LightLinesColour]);
        b->setLinesDarkColor(c[K::DarkLinesColour]);
        b->setNormalImage(miniGlyph(i, glyph));
    }
    for (ctlKL_wImageButton* b : {m_minimize, m_close}) {
        b->setBackColor(c[K::BackColour]);
        b->setBorderColor(c[K::BorderColour]);
        b->setLinesLightColor(c[K::LightLinesColour]);
        b->setLinesDarkColor(c[K::DarkLinesColour]);
    }
    m_minimize->setNormalImage(miniGlyph(12, glyph));
    m_close->setNormalImage(miniGlyph(13, glyph));
    for (ctlKL_wPanel* inset : {m_picPlaying, m_picTime}) {
        inset->setBackColor(c[K::IndentBackColour]);
        inset->setBorderColor(c[K::BorderColour]);
        // An inset: dark above and left, light below and right.
        inset->setLinesLightColor(c[K::DarkLinesColour]);
        inset->setLinesDarkColor(c[K::LightLinesColour]);
    }
    m_number->setBackColor(c[K::IndentBackColour]);
    m_number->setColourLight(c[K::IndentFontColour]);
    // Unlit segments are a faint shade of the lit ones on the inset, readable on any ground.
    const QColor lit = Colors::fromColorRef(c[K::IndentFontColour], palette());
    const QColor ground = Colors::fromColorRef(c[K::IndentBackColour], palette());
    auto mix = [](int a, int b) { return (a * 28 + b * 72 + 50) / 100; };
    m_number->setColourDark(
        Colors::toColorRef(QColor(mix(lit.red(), ground.red()), mix(lit.green(), ground.green()),
                                  mix(lit.blue(), ground.blue()))));
    m_playing->setColours(Colors::fromColorRef(c[K::IndentFontColour], palette()),
                          Colors::fromColorRef(c[K::IndentBackColour], palette()));
    for (ctlKL_wScrollbar* s : {m_position, m_volume, m_balance})
        s->setBackColor(c[K::SlidersBackColour]);
    for (QLabel* l : {m_caption, m_lblVolume, m_lblBalance}) {
        QPalette p = l->palette();
        p.setColor(QPalette::WindowText, Colors::fromColorRef(c[K::WindowFontColour], palette()));
        p.setColor(QPalette::Window, Colors::fromColorRef(c[K::WindowFontBackColour], palette()));
        l->setPalette(p);
    }
}

void FrmMini::klbButton_Click(int index) {
    if (index < 0 || index > 11) return;
    Commands& commands = m_ctx.commands();
    if (index <= 8) {
        commands.runIfEnabled(QString::fromLatin1(kButtons[index].command));
        return;
    }
    // The two window toggles ask for no enabled entry.
    if (index == 9) {
        commands.run(QStringLiteral("mnuOpenMediaLibrary"));
        return;
    }
    if (index == 10) {
        commands.run(QStringLiteral("mnuOpenCDPlayer"));
        return;
    }
    savePosition();
    commands.setChecked(QStringLiteral("mnuSwitchToMiniMode"), false);
    hide();
    if (m_main) {
        m_main->show();
        m_main->raise();
        m_main->activateWindow();
    }
}

QString FrmMini::playingText() const {
    const int state = m_ctx.TransportState; // 0 playing, 1 stopped, 2 paused
    if (state != 0 && state != 2) return QStringLiteral("Stopped");
    using namespace PlaylistColumn;
    const ListModel& list = const_cast<MainContext&>(m_ctx).lstvPlaylist();
    const int row = m_ctx.PlayingRowIndex - 1;
    const QString head = state == 0 ? QStringLiteral("Playing... ") : QStringLiteral("Paused... ");
    if (row < 0 || row >= list.count()) return head;
    return head + QStringLiteral("%1.  %2 - %3 (%4)")
                      .arg(list.text(row, Number), list.text(row, Artist), list.text(row, Title),
                           list.text(row, Length));
}

void FrmMini::tmrPosition_Timer() {
    const bool active = m_ctx.playerActive();
    SliderModel& pos = m_ctx.sldPosition();
    if (!active) {
        m_playing->setText(playingText());
        m_number->setValue(0);
        m_position->setValue(0);
    } else {
        if (pos.maximum() != m_position->Max()) {
            if (pos.maximum() >= m_position->value())
                m_position->setMax(pos.maximum());
            else {
                m_position->setValue(0);
                m_position->setMax(pos.maximum());
            }
        }
        m_position->setValue(pos.value());
        const bool remaining =
            m_ctx.commands().isChecked(QStringLiteral("mnuStatusBarShowTimeRemaining"));
        m_number->setValue(remaining ? pos.maximum() - pos.value() : pos.value());
        m_playing->setText(playingText());
    }
    m_number->setEnabledProperty(m_ctx.TransportState == 0);
    updateTimers();
}

void FrmMini::tmrPlaying_Timer() {
    m_playing->tick(qMax(1, modWindows::twipsToPixels(30, this)));
}

int FrmMini::scrollOffset() const {
    return m_playing->offset();
}

void FrmMini::updateTimers() {
    const bool shown = isVisible() && !isMinimized();
    // A paused song moves nothing: one last tick shows "Paused..." and the window sleeps.
    const bool active = m_ctx.TransportState == 0;
    if (shown && active) {
        if (!m_tmrPosition.isActive()) m_tmrPosition.start();
    } else if (m_tmrPosition.isActive()) {
        m_tmrPosition.stop();
        if (shown)
            QMetaObject::invokeMethod(this, &FrmMini::tmrPosition_Timer, Qt::QueuedConnection);
    }
    const bool playing = shown && m_ctx.TransportState == 0 && !m_playing->fits();
    if (playing != m_tmrPlaying.isActive()) playing ? m_tmrPlaying.start() : m_tmrPlaying.stop();
}

void FrmMini::titleBarDown(Qt::MouseButton button, int x, int y) {
    if (button == Qt::RightButton) {
        m_systemMenu->popup(QCursor::pos());
        return;
    }
    if (button != Qt::LeftButton || m_lockPosition->isChecked()) return;
    // The window manager moves a borderless window best; without one, follow the mouse.
    if (windowHandle() && windowHandle()->startSystemMove()) return;
    m_dragging = true;
    m_grab = QPoint(x, y);
}

void FrmMini::titleBarMove(int x, int y) {
    if (!m_dragging) return;
    move(pos() + QPoint(x, y) - m_grab);
}

void FrmMini::savePosition() {
    settings_Write(kPosition, QStringLiteral("Window_Top"), modWindows::pixelsToTwips(y(), this));
    settings_Write(kPosition, QStringLiteral("Window_left"), modWindows::pixelsToTwips(x(), this));
}

void FrmMini::restorePosition() {
    QScreen* screen = QGuiApplication::primaryScreen();
    const QRect area = screen ? screen->availableGeometry() : QRect(0, 0, 1024, 768);
    const int margin = modWindows::twipsToPixels(500, this);
    // A new user finds the window in the bottom right-hand corner, above the taskbar.
    const int defTop = area.bottom() + 1 - height() - margin;
    const int defLeft = area.right() + 1 - width() - margin;
    // Stored in twips; nonsense takes the corner, and a place off every screen comes back.
    constexpr int kLimit = 10000000;
    const int defTopTwips = modWindows::pixelsToTwips(defTop, this);
    const int defLeftTwips = modWindows::pixelsToTwips(defLeft, this);
    const int top = settings_Int(kPosition, QStringLiteral("Window_Top"),
                                 QString::number(defTopTwips), -kLimit, kLimit, defTopTwips);
    const int left = settings_Int(kPosition, QStringLiteral("Window_left"),
                                  QString::number(defLeftTwips), -kLimit, kLimit, defLeftTwips);
    move(modWindows::twipsToPixels(left, this), modWindows::twipsToPixels(top, this));
    modWindows::window_KeepOnScreen(this);
}

void FrmMini::mnuCustomise_Click() {
    const bool onTop = m_alwaysOnTop->isChecked();
    if (onTop) modWindows::window_SetAlwaysOnTop(this, false);
    FrmCustomise dialog(this);
    connect(&dialog, &FrmCustomise::saved, this, [this] {
        window_InstallColours();
        installFont();
    });
    m_ctx.ModalWindowOpen = true;
    dialog.exec();
    m_ctx.ModalWindowOpen = false;
    if (onTop) applyTopMost();
}

void FrmMini::closeEvent(QCloseEvent* e) {
    e->ignore();
    if (settings_Read(QStringLiteral("Settings"), QStringLiteral("UseSystemTraySupport"),
                      QStringLiteral("1")) == QLatin1String("1") &&
        QSystemTrayIcon::isSystemTrayAvailable()) {
        miniMode_HideToTray();
        return;
    }
    // Without a tray there would be no way back: the player exits.
    m_ctx.commands().run(QStringLiteral("mnuExit"));
}

void FrmMini::miniMode_HideToTray() {
    // The whole player goes to the tray, as a close of the main window sends it; the tray's Open
    // brings back this window and the others that were open.
    savePosition();
    hide();
    Commands& c = m_ctx.commands();
    const std::pair<const char*, const char*> others[] = {
        {"mnuOpenMediaLibrary", "FrmMediaLibrary"}, {"mnuOpenCDPlayer", "FrmCDPlayer"}};
    for (const auto& [menu, window] : others)
        if (c.has(QString::fromLatin1(menu)) && c.isChecked(QString::fromLatin1(menu)))
            if (QWidget* w = topLevel(window)) w->hide();
    if (QWidget* video = topLevel("FrmVideo")) video->hide();
    m_ctx.WindowShown = false;
}

void FrmMini::keyPressEvent(QKeyEvent* e) {
    // The main window's keys work here too.
    if (m_main) QApplication::sendEvent(m_main, e);
}

void FrmMini::showEvent(QShowEvent* e) {
    QWidget::showEvent(e);
    tmrPosition_Timer();
}

void FrmMini::hideEvent(QHideEvent* e) {
    QWidget::hideEvent(e);
    updateTimers();
}

void FrmMini::installFont() {
    // Without a stored font the window follows the desktop's, as if never set.
    setFont(FrmCustomise::storedFont(QFont()));
}

void FrmMini::fitToFont() {
    // The text rows grow with a larger font, so nothing of the caption or the song is cut.
    const int line = fontMetrics().height();
    m_titleBar->setFixedHeight(qMax(20, line + 6));
    const int inset = qMax(22, line + 8);
    m_picPlaying->setFixedHeight(inset);
    m_picTime->setFixedSize(inset * 70 / 22, inset);
    adjustSize();
}

void FrmMini::changeEvent(QEvent* e) {
    QWidget::changeEvent(e);
    if (e->type() == QEvent::FontChange) fitToFont();
    // Minimised it shows nothing, so nothing ticks; restored, it catches up at once.
    if (e->type() == QEvent::WindowStateChange) {
        if (isMinimized())
            updateTimers();
        else
            tmrPosition_Timer();
    }
}

bool FrmMini::eventFilter(QObject* watched, QEvent* e) {
    if (watched != m_icon) return QWidget::eventFilter(watched, e);
    switch (e->type()) {
    case QEvent::MouseButtonDblClick:
        if (static_cast<QMouseEvent*>(e)->button() == Qt::LeftButton)
            m_systemMenu->popup(QCursor::pos());
        return true;
    case QEvent::MouseButtonPress:
        if (static_cast<QMouseEvent*>(e)->button() == Qt::RightButton)
            m_systemMenu->popup(QCursor::pos());
        return true;
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        return true;
    default:
        return false;
    }
}
