#include "system/TrayHostWatch.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QGuiApplication>
#include <QTimer>
#include <xcb/xcb.h>

namespace {
unsigned atom(xcb_connection_t* c, const QByteArray& name) {
    auto* r = xcb_intern_atom_reply(
        c, xcb_intern_atom(c, 0, uint16_t(name.size()), name.constData()), nullptr);
    const unsigned a = r ? r->atom : 0;
    free(r);
    return a;
}
} // namespace

TrayHostWatch::TrayHostWatch(QObject* parent) : QObject(parent), m_settle(new QTimer(this)) {
    // Well under the 500 ms a returning host may wait for its icon.
    m_settle->setSingleShot(true);
    m_settle->setInterval(150);
    connect(m_settle, &QTimer::timeout, this, &TrayHostWatch::hostAppeared);

    auto* watcher = new QDBusServiceWatcher(QStringLiteral("org.kde.StatusNotifierWatcher"),
                                            QDBusConnection::sessionBus(),
                                            QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, m_settle,
            qOverload<>(&QTimer::start));

    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    m_conn = x11 ? x11->connection() : nullptr;
    if (!m_conn) return;
    xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(m_conn));
    if (!it.rem) {
        m_conn = nullptr;
        return;
    }
    const xcb_window_t root = it.data->root;
    m_manager = atom(m_conn, "MANAGER");
    m_selection = atom(m_conn, "_NET_SYSTEM_TRAY_S0");
    // The announcement goes to the root window's structure listeners; the toolkit's own mask on
    // the root window is kept.
    auto* attrs =
        xcb_get_window_attributes_reply(m_conn, xcb_get_window_attributes(m_conn, root), nullptr);
    const uint32_t mask = (attrs ? attrs->your_event_mask : 0) | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    free(attrs);
    xcb_change_window_attributes(m_conn, root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(m_conn);
    qApp->installNativeEventFilter(this);
}

TrayHostWatch::~TrayHostWatch() {
    if (m_conn) qApp->removeNativeEventFilter(this);
}

bool TrayHostWatch::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (eventType != "xcb_generic_event_t") return false;
    auto* event = static_cast<xcb_generic_event_t*>(message);
    if ((event->response_type & ~0x80) != XCB_CLIENT_MESSAGE) return false;
    auto* cm = reinterpret_cast<xcb_client_message_event_t*>(event);
    if (cm->type == m_manager && cm->format == 32 && cm->data.data32[1] == m_selection)
        m_settle->start();
    return false; // the toolkit watches the same message for its own tray icon
}
