#pragma once
#include "system/GlobalKeys.h"

#include <QAbstractNativeEventFilter>
#include <QHash>
#include <QObject>
#include <QSet>
#include <functional>

struct xcb_connection_t;

// Key grabs on the X root window for exactly the bound keys: one event a press, from whichever
// program has the focus. Without an X connection (Wayland, the offscreen platform) it does
// nothing.
class X11Hotkeys : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT
public:
    explicit X11Hotkeys(QObject* parent = nullptr);
    ~X11Hotkeys() override;

    bool available() const { return m_conn != nullptr; }
    // Grabs the keys of `bindings` (and lets go of the ones grabbed before).
    void setBindings(const GlobalKeys::Bindings& bindings);
    void setEnabled(bool on);
    bool isEnabled() const { return m_enabled; }
    // The key names that could not be grabbed on the last setBindings.
    QStringList refused() const { return m_refused; }

    // Called with the full name of each new press ("Ctrl+Alt+P").
    std::function<void(const QString&)> pressed;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    void grabAll();
    void ungrabAll();
    void watchKeysDownAtStart();
    unsigned numLockMask();

    xcb_connection_t* m_conn = nullptr;
    unsigned m_root = 0;
    bool m_enabled = false;
    GlobalKeys::Bindings m_bindings;
    // Grabbed keycode -> row of the key table; grabbed (keycode, modifiers) pairs.
    QHash<int, int> m_keyRow;
    QList<QPair<int, unsigned>> m_grabs;
    QStringList m_refused;
    QSet<QString> m_reported;
    GlobalKeys::PressTracker m_tracker;
};
