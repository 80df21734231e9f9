#include "playback/FrmPlaying.h"
#include "core/ShownText.h"

#include "core/App.h"
#include "system/modWindows.h"

#include <QGuiApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QScreen>
#include <QTimer>

namespace {
// Room beside the text, and above the bottom of the work area (the task bar stays visible).
constexpr int kPaddingTwips = 480;
constexpr int kHeightTwips = 450;
constexpr int kBottomGapTwips = 240;
} // namespace

FrmPlaying::FrmPlaying(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                          Qt::WindowDoesNotAcceptFocus),
      m_label(new QLabel(this)), m_timer(new QTimer(this)) {
    setObjectName(QStringLiteral("FrmPlaying"));
    // Borderless, so the title is never seen; it only must not pass for the main window's.
    setWindowTitle(App::Title() + QStringLiteral(" Alert"));
    setAccessibleName(QStringLiteral("Song alert"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    m_label->setObjectName(QStringLiteral("lblText"));
    m_label->setAccessibleName(QStringLiteral("Song"));
    m_label->setAlignment(Qt::AlignCenter);
    // Clicks on the text are clicks on the window.
    m_label->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_timer->setObjectName(QStringLiteral("tmrTimer"));
    m_timer->setInterval(1000);
    connect(m_timer, &QTimer::timeout, this, &FrmPlaying::tmrTimer_Timer);
    m_timer->start();
}

void FrmPlaying::setText(const QString& text) {
    m_label->setText(text_Shown(text));
    const int width = m_label->fontMetrics().horizontalAdvance(text) +
                      modWindows::twipsToPixels(kPaddingTwips, this);
    const int height = modWindows::twipsToPixels(kHeightTwips, this);
    resize(width, height);
    m_label->setGeometry(0, 0, width, height);
    if (QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        move(area.left() + area.width() / 2 - width / 2,
             area.bottom() + 1 - height - modWindows::twipsToPixels(kBottomGapTwips, this));
    }
}

void FrmPlaying::tmrTimer_Timer() {
    if (++m_ticks >= 3) unload();
}

void FrmPlaying::unload() {
    m_timer->stop();
    hide();
    Q_EMIT unloaded();
    deleteLater();
}

void FrmPlaying::mousePressEvent(QMouseEvent* event) {
    event->accept();
    const auto then = clicked;
    unload();
    if (then) then();
}
