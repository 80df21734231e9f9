#include "system/modWindows.h"

#include "core/Commands.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/Settings.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDesktopServices>
#include <QDialog>
#include <QDir>
#include <QEvent>
#include <QGuiApplication>
#include <QNetworkInterface>
#include <QPointer>
#include <QScreen>
#include <QSysInfo>
#include <QTimer>
#include <QUrl>
#include <QWidget>
#include <xcb/xcb.h>

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
// findChild needs Q_OBJECT to tell types apart; these small filters go without it.
template <typename T> T* keeperOf(QWidget* window) {
    for (QObject* child : window->children())
        if (auto* keeper = dynamic_cast<T*>(child)) return keeper;
    return nullptr;
}

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
    if (!keeperOf<FrameKeeper>(window)) new FrameKeeper(window);
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

namespace modWindows {
namespace {
unsigned internAtom(xcb_connection_t* c, const char* name) {
    auto* r =
        xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, uint16_t(qstrlen(name)), name), nullptr);
    const unsigned a = r ? r->atom : 0;
    free(r);
    return a;
}

// Asks the window manager to add or take away the skip-taskbar state of a mapped window.
void sendSkipTaskbar(QWidget* window, bool skip) {
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    xcb_connection_t* c = x11 ? x11->connection() : nullptr;
    if (!c || !window->isVisible()) return;
    xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(c));
    if (!it.rem) return;
    xcb_client_message_event_t ev{};
    ev.response_type = XCB_CLIENT_MESSAGE;
    ev.format = 32;
    ev.window = xcb_window_t(window->winId());
    ev.type = internAtom(c, "_NET_WM_STATE");
    ev.data.data32[0] = skip ? 1 : 0; // add : remove
    ev.data.data32[1] = internAtom(c, "_NET_WM_STATE_SKIP_TASKBAR");
    ev.data.data32[3] = 1; // a normal application
    xcb_send_event(c, 0, it.data->root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&ev));
    xcb_flush(c);
}

// The toolkit writes the window's states afresh each time it maps it, so the hint is asked for
// again after every show.
class SkipTaskbarKeeper : public QObject {
public:
    explicit SkipTaskbarKeeper(QWidget* window) : QObject(window), m_window(window) {
        window->installEventFilter(this);
    }
    bool skip = false;
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Show)
            QTimer::singleShot(0, this, [this] {
                if (m_window) sendSkipTaskbar(m_window, skip);
            });
        return false;
    }

private:
    QPointer<QWidget> m_window;
};
} // namespace

bool window_IsAlwaysOnTop(const QWidget* window) {
    return window && window->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
}

int window_ShowModal(MainContext& ctx, QDialog* dialog, QWidget* owner, bool releaseAfter) {
    if (!dialog) return 0;
    const bool onTop = window_IsAlwaysOnTop(owner);
    if (onTop) window_SetAlwaysOnTop(owner, false);
    ctx.ModalWindowOpen = true;
    if (owner && dialog->parentWidget() != owner)
        dialog->setParent(owner, dialog->windowFlags() | Qt::Dialog);
    dialog->setWindowModality(Qt::WindowModal);
    const int result = dialog->exec();
    if (releaseAfter) dialog->deleteLater();
    ctx.ModalWindowOpen = false;
    if (onTop) window_SetAlwaysOnTop(owner, true);
    return result;
}

void window_ShowAboutWindows(MainContext& ctx, const QString& title, QWidget* owner,
                             const QString& text) {
    const bool onTop = window_IsAlwaysOnTop(owner);
    if (onTop) window_SetAlwaysOnTop(owner, false);
    ctx.ModalWindowOpen = true;
    Dialogs::msgBox(QStringLiteral("%1\n%2\n\n%3")
                        .arg(system_WindowsName(),
                             QSysInfo::kernelType() + QLatin1Char(' ') + QSysInfo::kernelVersion(),
                             text),
                    Dialogs::vbInformation, title);
    ctx.ModalWindowOpen = false;
    if (onTop) window_SetAlwaysOnTop(owner, true);
}

void window_ShowInTaskbar(QWidget* window, bool show) {
    if (!window) return;
    auto* keeper = keeperOf<SkipTaskbarKeeper>(window);
    if (!keeper) keeper = new SkipTaskbarKeeper(window);
    keeper->skip = !show;
    sendSkipTaskbar(window, !show);
}

void window_CenterOnScreen(QWidget* window, int margin) {
    if (!window) return;
    if (window->isMaximized()) window->showNormal();
    const QRect scr = screenRect(window);
    const int m = twipsToPixels(margin, window);
    QRect g = window->frameGeometry();
    g.moveCenter(scr.center());
    g.moveLeft(qBound(scr.left() + m, g.left(), qMax(scr.left() + m, scr.right() - g.width() - m)));
    g.moveTop(qBound(scr.top() + m, g.top(), qMax(scr.top() + m, scr.bottom() - g.height() - m)));
    window->move(g.topLeft());
}

void window_FitToScreen(QWidget* window) {
    if (!window) return;
    const QRect scr = screenRect(window);
    const int gap = twipsToPixels(480, window);
    QRect g = window->geometry();
    if (g.height() > scr.height()) g.setHeight(scr.height() - gap - (g.top() - scr.top()));
    if (g.bottom() > scr.bottom()) g.moveTop(qMax(scr.top(), scr.bottom() - gap - g.height()));
    if (g.width() > scr.width()) g.setWidth(scr.width() - gap - (g.left() - scr.left()));
    if (g.right() > scr.right()) g.moveLeft(qMax(scr.left(), scr.right() - gap - g.width()));
    window->setGeometry(g);
}

int system_TaskbarHeight(const QWidget* window) {
    const QScreen* screen =
        window && window->screen() ? window->screen() : QGuiApplication::primaryScreen();
    if (!screen) return 0;
    return pixelsToTwips(screen->geometry().bottom() - screen->availableGeometry().bottom(),
                         window);
}

QString system_WindowsName() {
    return QSysInfo::prettyProductName();
}

bool system_IsConnected() {
    for (const QNetworkInterface& i : QNetworkInterface::allInterfaces()) {
        const auto f = i.flags();
        if (f.testFlag(QNetworkInterface::IsUp) && f.testFlag(QNetworkInterface::IsRunning) &&
            !f.testFlag(QNetworkInterface::IsLoopBack) && !i.addressEntries().isEmpty())
            return true;
    }
    return false;
}

void system_SetScreenSaver(bool active) {
    static uint cookie = 0;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    const QString service = QStringLiteral("org.freedesktop.ScreenSaver");
    const QString path = QStringLiteral("/org/freedesktop/ScreenSaver");
    if (!active && !cookie) {
        QDBusMessage m =
            QDBusMessage::createMethodCall(service, path, service, QStringLiteral("Inhibit"));
        m << QStringLiteral("veldor") << QStringLiteral("Playing video");
        const QDBusReply<uint> reply = bus.call(m, QDBus::Block, 2000);
        if (reply.isValid()) cookie = reply.value();
    } else if (active && cookie) {
        QDBusMessage m =
            QDBusMessage::createMethodCall(service, path, service, QStringLiteral("UnInhibit"));
        m << cookie;
        bus.call(m, QDBus::NoBlock);
        cookie = 0;
    }
}

bool shell_Open(const QString& file, const QString& folder) {
    if (file.contains(QLatin1String("://")) || file.startsWith(QLatin1String("mailto:")))
        return QDesktopServices::openUrl(QUrl(file));
    const QString path =
        folder.isEmpty() || QDir::isAbsolutePath(file) ? file : QDir(folder).filePath(file);
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool shell_SendMail(const QString& address, const QString& subject) {
    return shell_Open(QStringLiteral("mailto:%1?SUBJECT=%2")
                          .arg(address, QString::fromUtf8(QUrl::toPercentEncoding(subject))));
}

void mnuHideInTheTaskManager_Click(MainContext& ctx, QWidget* mainWindow) {
    Commands& c = ctx.commands();
    const QString menu = QStringLiteral("mnuHideInTheTaskManager");
    const bool hide = !c.isChecked(menu);
    c.setChecked(menu, hide);
    window_ShowInTaskbar(mainWindow, !hide);
    settings_Write(QStringLiteral("Settings"), QStringLiteral("HideInTheTaskManager"),
                   hide ? 1 : 0);
}

} // namespace modWindows
