#include "playback/FrmVideo.h"

#include "core/Commands.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/SliderModel.h"
#include "playback/MpvPlayer.h"
#include "system/modWindows.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>
#include <QtGui/qguiapplication_platform.h>
#include <cmath>
#include <cstdio>
#include <dlfcn.h>
#include <xcb/xcb.h>

namespace {

const QString kSection = QStringLiteral("Video");

QPushButton* button(const char* name, const char* text, QWidget* parent) {
    auto* b = new QPushButton(QString::fromLatin1(text), parent);
    b->setObjectName(QString::fromLatin1(name));
    b->setAccessibleName(QString::fromLatin1(text));
    b->setFocusPolicy(Qt::NoFocus);
    return b;
}

QScrollBar* bar(const char* name, const char* accessible, int max, QWidget* parent) {
    auto* s = new QScrollBar(Qt::Horizontal, parent);
    s->setObjectName(QString::fromLatin1(name));
    s->setAccessibleName(QString::fromLatin1(accessible));
    s->setRange(0, max);
    s->setMinimumWidth(80);
    return s;
}

// Whether the X server offers GLX: without it the GL output cannot work, and trying it is what
// has brought whole programs down.
bool displayHasGl() {
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    xcb_connection_t* c = x11 ? x11->connection() : nullptr;
    if (!c) return true; // not X11: let the engine find its way
    xcb_query_extension_reply_t* r =
        xcb_query_extension_reply(c, xcb_query_extension(c, 3, "GLX"), nullptr);
    const bool present = r && r->present;
    free(r);
    return present;
}

int logXError(void*, void*) {
    std::fputs("veldor: an X error of the picture was ignored\n", stderr);
    return 0;
}

// Xlib's own handler ends the process on any protocol error, and an engine's output may leave it
// in place; an error of the picture must never take the program down.
void keepXErrorsHarmless() {
    using Handler = int (*)(void*, void*); // Display*, XErrorEvent*
    using SetHandler = Handler (*)(Handler);
    if (auto set = reinterpret_cast<SetHandler>(::dlsym(RTLD_DEFAULT, "XSetErrorHandler")))
        set(logXError);
}

} // namespace

FrmVideo::FrmVideo(MainContext& ctx, QWidget* mainWindow)
    : QWidget(nullptr, Qt::Window), m_ctx(ctx), m_main(mainWindow) {
    setObjectName(QStringLiteral("FrmVideo"));
    setWindowTitle(QStringLiteral("VELDOR Video"));
    setAccessibleName(QStringLiteral("VELDOR Video"));

    // The engine draws into a native child window of its own.
    m_picture = new QWidget(this);
    m_picture->setObjectName(QStringLiteral("wmpPlayer"));
    m_picture->setAccessibleName(QStringLiteral("Video"));
    m_picture->setAttribute(Qt::WA_NativeWindow);
    // The engine paints this window; Qt must leave it alone.
    m_picture->setAttribute(Qt::WA_NoSystemBackground);
    m_picture->setAttribute(Qt::WA_OpaquePaintEvent);
    m_picture->setAttribute(Qt::WA_PaintOnScreen);
    m_picture->setUpdatesEnabled(false);
    m_picture->setMinimumSize(64, 48);
    const bool native = !QGuiApplication::platformName().startsWith(QLatin1String("offscreen"));
    // The window id must stay the same for the life of the process: make the top level native
    // first, so that showing it later does not create the picture's window anew.
    if (native) winId();
    m_player =
        new MpvPlayer(native ? quintptr(m_picture->winId()) : 0, this, native && displayHasGl());

    m_bottom = new QWidget(this);
    m_bottom->setObjectName(QStringLiteral("nfpBottom"));
    auto* row = new QHBoxLayout(m_bottom);
    row->setContentsMargins(4, 2, 4, 2);
    m_normal = button("klbNormal", "Normal", m_bottom);
    m_full = button("klbFullScreen", "Full Screen", m_bottom);
    m_hide = button("klbHideScreen", "Hide", m_bottom);
    m_stop = button("klbStopVideo", "Stop", m_bottom);
    m_pause = button("klbPause", "Pause", m_bottom);
    for (QPushButton* b : {m_normal, m_full, m_hide, m_stop, m_pause})
        row->addWidget(b);
    m_lblPosition = new QLabel(QStringLiteral("Position:"), m_bottom);
    m_position = bar("klsPosition", "Position", 100, m_bottom);
    m_lblVolume = new QLabel(QStringLiteral("Volume:"), m_bottom);
    m_volume = bar("klsVolume", "Volume", 100, m_bottom);
    m_lblBalance = new QLabel(QStringLiteral("Balance:"), m_bottom);
    m_balance = bar("klsBalance", "Balance", 100, m_bottom);
    m_lblPosition->setObjectName(QStringLiteral("lblPosition"));
    m_lblVolume->setObjectName(QStringLiteral("lblVolume"));
    m_lblBalance->setObjectName(QStringLiteral("lblBalance"));
    for (QWidget* w : {static_cast<QWidget*>(m_lblPosition), static_cast<QWidget*>(m_position),
                       static_cast<QWidget*>(m_lblVolume), static_cast<QWidget*>(m_volume),
                       static_cast<QWidget*>(m_lblBalance), static_cast<QWidget*>(m_balance)})
        row->addWidget(w);
    m_lblPosition->setBuddy(m_position);
    m_lblVolume->setBuddy(m_volume);
    m_lblBalance->setBuddy(m_balance);
    row->addStretch(1);
    // The bars belong to the maximized window only.
    showBars(false);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_picture, 1);
    column->addWidget(m_bottom);

    m_timer = new QTimer(this);
    m_timer->setObjectName(QStringLiteral("tmrWindowUpdate"));
    m_timer->setInterval(100);
    connect(m_timer, &QTimer::timeout, this, &FrmVideo::tick);

    Commands& c = ctx.commands();
    connect(m_pause, &QPushButton::clicked, this, [&c] { c.run(QStringLiteral("mnuPause")); });
    connect(m_stop, &QPushButton::clicked, this, [&c] { c.run(QStringLiteral("mnuStop")); });
    connect(m_hide, &QPushButton::clicked, this, [this] { video_Close(); });
    connect(m_full, &QPushButton::clicked, this, [this] { setFullScreen(true); });
    connect(m_normal, &QPushButton::clicked, this, [this] { setFullScreen(false); });
    // Only the user's moves act; the tick's own updates are not scrolls.
    connect(m_position, &QScrollBar::actionTriggered, this, [this](int) {
        m_ctx.player().setCurrentPosition(m_position->sliderPosition() / 1000.0);
    });
    connect(m_volume, &QScrollBar::actionTriggered, this, [this](int) {
        const int v = m_volume->sliderPosition();
        m_ctx.sldVolume().setValue(v);
        if (m_ctx.player_Volume) m_ctx.player_Volume(v);
    });
    connect(m_balance, &QScrollBar::actionTriggered, this, [this](int) {
        const int v = m_balance->sliderPosition();
        m_ctx.sldBalance().setValue(v);
        if (m_ctx.player_Balance) m_ctx.player_Balance(v);
    });
    connect(&ctx.sldVolume(), &SliderModel::changed, this,
            [this] { m_volume->setValue(m_ctx.sldVolume().value()); });
    connect(&ctx.sldBalance(), &SliderModel::changed, this,
            [this] { m_balance->setValue(m_ctx.sldBalance().value()); });
    m_volume->setValue(ctx.sldVolume().value());
    m_balance->setValue(ctx.sldBalance().value());
    resize(640, 400);
    if (m_main) m_main->installEventFilter(this);
}

bool FrmVideo::eventFilter(QObject* watched, QEvent* event) {
    // A picture opened before the main window showed stays in front of it.
    if (watched == m_main && event->type() == QEvent::Show && m_opened)
        QTimer::singleShot(0, this, [this] {
            if (m_opened) raise();
        });
    return QWidget::eventFilter(watched, event);
}

FrmVideo::~FrmVideo() {
    if (&m_ctx.player() == m_player) m_ctx.setPlayer(nullptr);
    if (m_opened) m_ctx.commands().setEnabled(QStringLiteral("mnuVideoWindow"), true);
}

void FrmVideo::install() {
    m_ctx.commands().addCaption(QStringLiteral("mnuVideoWindow"), QStringLiteral("&Video Window"));
    m_ctx.setPlayer(m_player);
    m_ctx.video_Open = [this] { video_Open(); };
    m_ctx.video_Close = [this] { video_Close(); };
    m_ctx.video_IsOpened = [this] { return m_opened; };
    m_ctx.video_GetSize = [this] { video_GetSize(); };
    m_ctx.video_SaveSize = [this] { video_SaveSize(); };
}

void FrmVideo::video_Update() {
    Commands& c = m_ctx.commands();
    const bool maximized = windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen);
    const bool entry = !m_opened || !maximized;
    if (c.isEnabled(QStringLiteral("mnuVideoWindow")) != entry)
        c.setEnabled(QStringLiteral("mnuVideoWindow"), entry);
    if (!m_opened) return;
    showBars(maximized);
}

void FrmVideo::showBars(bool shown) {
    for (QWidget* w : {static_cast<QWidget*>(m_lblPosition), static_cast<QWidget*>(m_position),
                       static_cast<QWidget*>(m_lblVolume), static_cast<QWidget*>(m_volume),
                       static_cast<QWidget*>(m_lblBalance), static_cast<QWidget*>(m_balance)})
        // isHidden, not isVisible: the row must shrink before the window is first shown too.
        if (w->isHidden() == shown) w->setVisible(shown);
}

void FrmVideo::video_GetSize() {
    const double h = settings_Number(kSection, QStringLiteral("Height"), QStringLiteral("3705"));
    const double w = settings_Number(kSection, QStringLiteral("Width"), QStringLiteral("6000"));
    if (layout()) layout()->activate();
    // Never smaller than the button row, or the window grows after it has been placed.
    const QSize size =
        QSize(modWindows::twipsToPixels(int(w), this), modWindows::twipsToPixels(int(h), this))
            .expandedTo(minimumSizeHint());
    resize(size);
    if (m_main) {
        // Against the lower right of the main window, kept on its screen.
        const QRect main = m_main->frameGeometry();
        QPoint at(main.x() + main.width() - size.width(), main.y() + main.height() - size.height());
        if (const QScreen* screen = m_main->screen()) {
            const QRect area = screen->availableGeometry();
            // The frame the window manager adds, as the main window has it.
            const QSize frame = main.size() - m_main->size();
            const int right = area.right() + 1 - size.width() - frame.width();
            const int bottom = area.bottom() + 1 - size.height() - frame.height();
            at.setX(qBound(area.left(), at.x(), qMax(area.left(), right)));
            at.setY(qBound(area.top(), at.y(), qMax(area.top(), bottom)));
        }
        move(at);
    }
}

void FrmVideo::video_SaveSize() {
    if (windowState() & (Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen)) return;
    settings_Write(kSection, QStringLiteral("Height"), modWindows::pixelsToTwips(height(), this));
    settings_Write(kSection, QStringLiteral("Width"), modWindows::pixelsToTwips(width(), this));
}

void FrmVideo::video_Open() {
    if (settings_IsOn(QStringLiteral("Settings"),
                      QStringLiteral("StartVideoinFullModeWhenPlayingVideo"), QStringLiteral("0")))
        setFullScreen(true);
    // The engine holds the screen saver off while it shows a picture (stop-screensaver).
    m_timer->start();
    keepXErrorsHarmless();
    const bool wasHidden = !isVisible();
    show();
    raise();
    if (wasHidden)
        QTimer::singleShot(100, this, [this] {
            if (m_opened) m_player->refreshVideo();
        });
    const bool onTop = m_ctx.commands().has(QStringLiteral("mnuAlwaysOnTop")) &&
                       m_ctx.commands().isChecked(QStringLiteral("mnuAlwaysOnTop"));
    if (onTop) modWindows::window_SetAlwaysOnTop(this, true);
    m_opened = true;
    video_Update();
}

void FrmVideo::video_Close() {
    if (windowFlags() & Qt::WindowStaysOnTopHint) modWindows::window_SetAlwaysOnTop(this, false);
    m_timer->stop();
    hide();
    m_opened = false;
    video_Update();
}

void FrmVideo::setFullScreen(bool on) {
    const bool maximized = windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen);
    if (on) {
        if (!maximized) m_normalSize = size();
        showMaximized();
    } else {
        // Without the bars first, or the wide bar row holds the restored window at its width.
        showBars(false);
        showNormal();
        // Let the layouts take the smaller minimum first, or the resize is clamped.
        QCoreApplication::sendPostedEvents(m_bottom, QEvent::LayoutRequest);
        QCoreApplication::sendPostedEvents(this, QEvent::LayoutRequest);
        if (m_normalSize.isValid()) resize(m_normalSize);
    }
    video_Update();
}

void FrmVideo::tick() {
    wmpPlayer& p = m_ctx.player();
    const bool moving = p.PlayState() == wmpPlayer::Playing;
    m_position->setEnabled(m_ctx.sldPosition().enabled());
    if (!m_position->isSliderDown()) {
        m_position->setMaximum(int(std::lround(p.Duration() * 1000)));
        if (moving || m_position->isEnabled())
            m_position->setValue(int(std::lround(p.CurrentPosition() * 1000)));
    }
    const QString caption = m_ctx.PlayerPaused ? QStringLiteral("Play") : QStringLiteral("Pause");
    if (m_pause->text() != caption) m_pause->setText(caption);
    video_Update();
}

void FrmVideo::closeEvent(QCloseEvent* event) {
    // The window stays loaded; the user's close only hides it.
    event->ignore();
    video_Close();
}

void FrmVideo::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    // Later, not inside the resize: showing the bars resizes the window again.
    QTimer::singleShot(0, this, &FrmVideo::video_Update);
}

void FrmVideo::keyPressEvent(QKeyEvent* event) {
    if (m_main) QCoreApplication::sendEvent(m_main, event);
}
