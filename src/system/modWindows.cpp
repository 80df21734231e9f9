#include "system/modWindows.h"

#include "core/Settings.h"

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
    g.setWidth(qBound(200, g.width(), scr.width()));
    g.setHeight(qBound(150, g.height(), scr.height()));
    g.moveLeft(qBound(scr.left(), g.left(), scr.right() - g.width() + 1));
    g.moveTop(qBound(scr.top(), g.top(), scr.bottom() - g.height() + 1));
    window->setGeometry(g);
    // The maximised flag is looked for in "Position", which nothing writes.
    if (settings_IsOn(QStringLiteral("Position"), QStringLiteral("Window_Maximized"),
                      QStringLiteral("0")))
        window->setWindowState(window->windowState() | Qt::WindowMaximized);
}

void window_SetAlwaysOnTop(QWidget* window, bool onTop) {
    if (!window) return;
    const bool visible = window->isVisible();
    window->setWindowFlag(Qt::WindowStaysOnTopHint, onTop);
    if (visible) window->show();
}

} // namespace modWindows
