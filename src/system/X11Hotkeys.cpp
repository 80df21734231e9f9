#include "system/X11Hotkeys.h"

#include "core/ConsoleLog.h"

#include <QGuiApplication>
#include <QTimer>
#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

namespace {
// The X keysym of each row of the key table.
xcb_keysym_t keysymOf(const GlobalKeys::Key& key) {
    const QString& n = key.name;
    if (key.code >= 112 && key.code <= 123) return 0xffbe + (key.code - 112); // F1..F12
    if (key.code >= 65 && key.code <= 90) return 'a' + (key.code - 65);
    if (key.code >= 48 && key.code <= 57) return key.code;
    if (key.code >= 96 && key.code <= 105) return 0xffb0 + (key.code - 96); // KP_0..KP_9
    switch (key.code) {
    case 179:
        return 0x1008FF14; // XF86AudioPlay
    case 178:
        return 0x1008FF15; // XF86AudioStop
    case 176:
        return 0x1008FF17; // XF86AudioNext
    case 177:
        return 0x1008FF16; // XF86AudioPrev
    case 173:
        return 0x1008FF12; // XF86AudioMute
    case 175:
        return 0x1008FF13; // XF86AudioRaiseVolume
    case 174:
        return 0x1008FF11; // XF86AudioLowerVolume
    }
    Q_UNUSED(n);
    return 0;
}

unsigned xMask(unsigned modifiers) {
    unsigned m = 0;
    if (modifiers & GlobalKeys::Shift) m |= XCB_MOD_MASK_SHIFT;
    if (modifiers & GlobalKeys::Ctrl) m |= XCB_MOD_MASK_CONTROL;
    if (modifiers & GlobalKeys::Alt) m |= XCB_MOD_MASK_1;
    if (modifiers & GlobalKeys::Win) m |= XCB_MOD_MASK_4;
    return m;
}

unsigned modifiersOf(unsigned state) {
    unsigned m = 0;
    if (state & XCB_MOD_MASK_SHIFT) m |= GlobalKeys::Shift;
    if (state & XCB_MOD_MASK_CONTROL) m |= GlobalKeys::Ctrl;
    if (state & XCB_MOD_MASK_1) m |= GlobalKeys::Alt;
    if (state & XCB_MOD_MASK_4) m |= GlobalKeys::Win;
    return m;
}
} // namespace

X11Hotkeys::X11Hotkeys(QObject* parent) : QObject(parent) {
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    m_conn = x11 ? x11->connection() : nullptr;
    if (!m_conn) return;
    const xcb_setup_t* setup = xcb_get_setup(m_conn);
    xcb_screen_iterator_t it = xcb_setup_roots_iterator(setup);
    if (!it.rem) {
        m_conn = nullptr;
        return;
    }
    m_root = it.data->root;
    qApp->installNativeEventFilter(this);
}

X11Hotkeys::~X11Hotkeys() {
    if (!m_conn) return;
    qApp->removeNativeEventFilter(this);
    ungrabAll();
}

void X11Hotkeys::setBindings(const GlobalKeys::Bindings& bindings) {
    m_bindings = bindings;
    if (m_enabled) {
        ungrabAll();
        grabAll();
    }
}

void X11Hotkeys::setEnabled(bool on) {
    if (on == m_enabled) return;
    m_enabled = on;
    if (!m_conn) return;
    if (on)
        grabAll();
    else
        ungrabAll();
}

unsigned X11Hotkeys::numLockMask() {
    unsigned mask = 0;
    xcb_key_symbols_t* symbols = xcb_key_symbols_alloc(m_conn);
    xcb_keycode_t* numLock = symbols ? xcb_key_symbols_get_keycode(symbols, 0xff7f) : nullptr;
    auto* reply = xcb_get_modifier_mapping_reply(m_conn, xcb_get_modifier_mapping(m_conn), nullptr);
    if (reply && numLock) {
        const xcb_keycode_t* codes = xcb_get_modifier_mapping_keycodes(reply);
        const int per = reply->keycodes_per_modifier;
        for (int mod = 0; mod < 8 && !mask; ++mod)
            for (int i = 0; i < per; ++i)
                for (xcb_keycode_t* k = numLock; *k != XCB_NO_SYMBOL; ++k)
                    if (codes[mod * per + i] == *k) mask = 1u << mod;
    }
    free(reply);
    free(numLock);
    if (symbols) xcb_key_symbols_free(symbols);
    return mask ? mask : unsigned(XCB_MOD_MASK_2);
}

void X11Hotkeys::grabAll() {
    m_refused.clear();
    if (!m_conn) return;
    const unsigned numLock = numLockMask();
    const unsigned locks[] = {0, XCB_MOD_MASK_LOCK, numLock, numLock | XCB_MOD_MASK_LOCK};
    xcb_key_symbols_t* symbols = xcb_key_symbols_alloc(m_conn);
    if (!symbols) return;
    const QList<GlobalKeys::Key>& table = GlobalKeys::keyTable();
    QSet<QPair<int, unsigned>> done;
    for (const QString& binding : m_bindings.lblMedia) {
        const GlobalKeys::Parsed parsed = GlobalKeys::parseBinding(binding);
        if (!parsed.valid()) continue; // never produced by any key: nothing to grab
        const xcb_keysym_t sym = keysymOf(table[parsed.keyIndex]);
        xcb_keycode_t* codes = sym ? xcb_key_symbols_get_keycode(symbols, sym) : nullptr;
        bool refused = false, any = false;
        for (xcb_keycode_t* k = codes; k && *k != XCB_NO_SYMBOL; ++k) {
            for (unsigned mods : parsed.modifierSets) {
                if (done.contains({*k, mods})) continue;
                done.insert({*k, mods});
                m_keyRow.insert(*k, parsed.keyIndex);
                for (unsigned lock : locks) {
                    const auto cookie =
                        xcb_grab_key_checked(m_conn, 0, m_root, uint16_t(xMask(mods) | lock), *k,
                                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
                    if (xcb_generic_error_t* error = xcb_request_check(m_conn, cookie)) {
                        refused = true;
                        free(error);
                    } else {
                        any = true;
                        m_grabs.append({*k, xMask(mods) | lock});
                    }
                }
            }
        }
        free(codes);
        if (refused || !any) {
            m_refused.append(binding);
            // Said once a run, however often the bindings are installed again.
            if (!m_reported.contains(binding.toLower())) {
                m_reported.insert(binding.toLower());
                window_WriteLog(QStringLiteral("Global hotkey '%1' is in use by another program.")
                                    .arg(binding));
            }
        }
    }
    xcb_key_symbols_free(symbols);
    xcb_flush(m_conn);
    watchKeysDownAtStart();
}

void X11Hotkeys::ungrabAll() {
    if (!m_conn) return;
    for (const auto& [code, mask] : std::as_const(m_grabs))
        xcb_ungrab_key(m_conn, xcb_keycode_t(code), m_root, uint16_t(mask));
    m_grabs.clear();
    m_keyRow.clear();
    xcb_flush(m_conn);
}

// A bound key already down fires nothing; it is looked at again only until it is let go, so no
// check runs while nothing is held.
void X11Hotkeys::watchKeysDownAtStart() {
    auto* reply = xcb_query_keymap_reply(m_conn, xcb_query_keymap(m_conn), nullptr);
    if (!reply) return;
    bool anyDown = false;
    for (auto it = m_keyRow.constBegin(); it != m_keyRow.constEnd(); ++it) {
        const int code = it.key();
        const bool down = reply->keys[code / 8] & (1 << (code % 8));
        if (down) {
            m_tracker.setDown(code);
            anyDown = true;
        } else if (m_tracker.isDown(code)) {
            m_tracker.release(code, 0);
        }
    }
    free(reply);
    if (anyDown)
        QTimer::singleShot(200, this, [this] {
            if (m_enabled && m_conn) watchKeysDownAtStart();
        });
}

bool X11Hotkeys::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (!m_enabled || eventType != "xcb_generic_event_t") return false;
    auto* event = static_cast<xcb_generic_event_t*>(message);
    const uint8_t type = event->response_type & ~0x80;
    if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE) return false;
    auto* key = reinterpret_cast<xcb_key_press_event_t*>(event);
    if (key->event != m_root) return false;
    const auto row = m_keyRow.constFind(key->detail);
    if (row == m_keyRow.constEnd()) return false;
    if (type == XCB_KEY_RELEASE) {
        m_tracker.release(key->detail, key->time);
        return true;
    }
    if (!m_tracker.press(key->detail, key->time)) return true;
    const QString name = GlobalKeys::window_CheckGlobalKey(true, modifiersOf(key->state),
                                                           GlobalKeys::keyTable()[*row].name);
    if (pressed) pressed(name);
    return true;
}
