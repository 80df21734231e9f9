#pragma once
#include <QAbstractNativeEventFilter>
#include <QObject>

class QTimer;
struct xcb_connection_t;

// Tells when a tray host appears: the X tray manager announcing itself (MANAGER on the root
// window) or the StatusNotifierWatcher name returning on the session bus. Storms of hosts coming
// and going are folded into one `hostAppeared` once they settle.
class TrayHostWatch : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT
public:
    explicit TrayHostWatch(QObject* parent = nullptr);
    ~TrayHostWatch() override;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

Q_SIGNALS:
    void hostAppeared();

private:
    xcb_connection_t* m_conn = nullptr;
    unsigned m_manager = 0, m_selection = 0;
    QTimer* m_settle;
};
