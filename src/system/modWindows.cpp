#include "system/modWindows.h"

#include "core/Settings.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace modWindows {
namespace {
double dpi(const QWidget* widget) {
    const QScreen* screen =
        widget && widget->screen() ? widget->screen() : QGuiApplication::primaryScreen();
    const double d = screen ? screen->logicalDotsPerInch() : 96.0;
    return d > 0 ? d : 96.0;
}

QRect screenRect(const QWidget* window) {
    const QScreen* screen =
        window && window->screen() ? window->screen() : QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect(0, 0, 1280, 1024);
}

// The free area of the screen that holds most of `r`, or of the primary screen.
QRect screenFor(const QRect& r) {
    const QScreen* best = QGuiApplication::primaryScreen();
    qint64 most = 0;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect common = screen->availableGeometry().intersected(r);
        const qint64 area = qint64(common.width()) * common.height();
        if (area > most) {
            most = area;
            best = screen;
        }
    }
    return best ? best->availableGeometry() : QRect(0, 0, 1280, 1024);
}

// Once the window manager has framed a restored window, its frame is pulled onto the screen
// too: a title bar above the screen's top cannot be grabbed.
class FrameKeeper : public QObject {
public:
    explicit FrameKeeper(QWidget* window) : QObject(window), m_window(window) {
        window->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        const auto type = event->type();
        if (type != QEvent::Move && type != QEvent::Resize && type != QEvent::Show) return false;
        if (!m_window->isVisible()) return false;
        window_KeepOnScreen(m_window);
        // The frame is known once it differs from the client area; until then keep watching.
        if (m_window->frameGeometry() != m_window->geometry()) deleteLater();
        return false;
    }

private:
    QWidget* m_window;
};

QString section(const QString& name) {
    return QStringLiteral("Position_") + name;
}
} // namespace

int twipsToPixels(int twips, const QWidget* widget) {
    return qRound(twips * dpi(widget) / 1440.0);
}
int pixelsToTwips(int pixels, const QWidget* widget) {
    return qRound(pixels * 1440.0 / dpi(widget));
}

void window_SavePosition(QWidget* window, const QString& name, int margin) {
    if (!window || window->isMinimized())
        return; // a window closed while minimised keeps its old place
    const QString s = section(name);
    if (window->isMaximized()) {
        const QRect scr = screenRect(window);
        const int h = pixelsToTwips(scr.height(), window), w = pixelsToTwips(scr.width(), window);
        settings_Write(s, QStringLiteral("Window_Top"), margin);
        settings_Write(s, QStringLiteral("Window_left"), margin);
        settings_Write(s, QStringLiteral("Window_Height"), h - margin - margin);
        settings_Write(s, QStringLiteral("Window_Width"), w - margin - margin);
        settings_Write(s, QStringLiteral("Window_Maximized"), QStringLiteral("1"));
        return;
    }
    const QRect g = window->geometry();
    settings_Write(s, QStringLiteral("Window_Top"), pixelsToTwips(g.top(), window));
    settings_Write(s, QStringLiteral("Window_left"), pixelsToTwips(g.left(), window));
    settings_Write(s, QStringLiteral("Window_Height"), pixelsToTwips(g.height(), window));
    settings_Write(s, QStringLiteral("Window_Width"), pixelsToTwips(g.width(), window));
    settings_Write(s, QStringLiteral("Window_Maximized"), QStringLiteral("0"));
}

void window_RestorePosition(QWidget* window, const QString& name, int margin) {
    if (!window) return;
    const QString s = section(name);
    const QRect scr = screenRect(window);
    const int scrH = pixelsToTwips(scr.height(), window), scrW = pixelsToTwips(scr.width(), window);
    const QString m = QString::number(margin);
    // A place no screen has is nonsense: the key's default stands in for it.
    constexpr int kTwipsLimit = 10000000;
    const int top =
        settings_Int(s, QStringLiteral("Window_Top"), m, -kTwipsLimit, kTwipsLimit, margin);
    const int left =
        settings_Int(s, QStringLiteral("Window_left"), m, -kTwipsLimit, kTwipsLimit, margin);
    const int height =
        settings_Int(s, QStringLiteral("Window_Height"), QString::number(scrH - top - margin),
                     -kTwipsLimit, kTwipsLimit, scrH - top - margin);
    const int width =
        settings_Int(s, QStringLiteral("Window_Width"), QString::number(scrW - left - margin),
                     -kTwipsLimit, kTwipsLimit, scrW - left - margin);
    // Keep the window on the screen whatever the keys say.
    QRect g(twipsToPixels(left, window), twipsToPixels(top, window), twipsToPixels(width, window),
            twipsToPixels(height, window));
    g.setWidth(qMax(200, g.width()));
    g.setHeight(qMax(150, g.height()));
    window->setGeometry(clampToArea(g, screenFor(g)));
    if (!window->findChild<FrameKeeper*>(QString(), Qt::FindDirectChildrenOnly))
        new FrameKeeper(window);
    // The maximised flag is looked for in "Position", which nothing writes.
    if (settings_IsOn(QStringLiteral("Position"), QStringLiteral("Window_Maximized"),
                      QStringLiteral("0")))
        window->setWindowState(window->windowState() | Qt::WindowMaximized);
}

QRect clampToArea(QRect frame, const QRect& area) {
    frame.setWidth(qMin(frame.width(), area.width()));
    frame.setHeight(qMin(frame.height(), area.height()));
    frame.moveLeft(qBound(area.left(), frame.left(), area.right() - frame.width() + 1));
    frame.moveTop(qBound(area.top(), frame.top(), area.bottom() - frame.height() + 1));
    return frame;
}

void window_KeepOnScreen(QWidget* window) {
    if (!window || window->isMaximized() || window->isFullScreen()) return;
    const QRect frame = window->frameGeometry();
    const QRect kept = clampToArea(frame, screenFor(frame));
    if (kept == frame) return;
    // The client area follows the frame by the frame's own margins.
    const QRect client = window->geometry();
    window->setGeometry(client.adjusted(kept.left() - frame.left(), kept.top() - frame.top(),
                                        kept.right() - frame.right(),
                                        kept.bottom() - frame.bottom()));
}

void window_Center(QWidget* window) {
    if (!window) return;
    if (window->isMaximized()) window->showNormal();
    QRect frame = window->frameGeometry();
    const QRect area = screenFor(frame);
    frame.moveCenter(area.center());
    window->move(clampToArea(frame, area).topLeft());
}

void window_SetAlwaysOnTop(QWidget* window, bool onTop) {
    if (!window) return;
    const bool visible = window->isVisible();
    window->setWindowFlag(Qt::WindowStaysOnTopHint, onTop);
    if (visible) window->show();
}

} // namespace modWindows
