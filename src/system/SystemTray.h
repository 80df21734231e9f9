#pragma once
#include <QIcon>
#include <QObject>
#include <QPointer>
#include <QSystemTrayIcon>

class MainContext;
class QMenu;
class QSystemTrayIcon;
class QWidget;
class TrayHostWatch;

// One icon in the desktop's notification area with the song as its tip; its clicks and its menu
// drive the player, and while it is shown closing the main window only hides the player.
class SystemTray : public QObject {
    Q_OBJECT
public:
    SystemTray(MainContext& ctx, QWidget* mainWindow);
    ~SystemTray() override;

    void tray_Install(bool muted);
    void tray_Remove();
    void tray_SetTip(const QString& tip);
    void tray_SetIcon(bool muted);
    // The icon is up and a tray host shows it.
    bool shown() const;
    QSystemTrayIcon* icon() const { return m_icon; }
    QMenu* mnuSystemTray() const { return m_menu; }

    // Hides the player's windows into the tray; false when there is no tray to come back from.
    bool window_MinimizeToTray();
    // The tray's Open.
    void mnuOpen_Click();
    // A click on the icon; `reason` as QSystemTrayIcon gives it.
    void activated(int reason);
    // A tray host came back: the icon goes up again with the right mute picture.
    void tmrSystemTrayDetect_Timer();

    static QIcon appIcon(bool muted);
    // The tip as the fixed field of the classic record holds it.
    static QString clipTip(const QString& tip);

private:
    void buildMenu();
    bool muted() const;

    MainContext& m_ctx;
    QPointer<QWidget> m_main;
    QPointer<QSystemTrayIcon> m_icon;
    QMenu* m_menu = nullptr;
    TrayHostWatch* m_watch = nullptr;
};
