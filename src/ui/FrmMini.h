#pragma once
#include "ui/MiniModeColours.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <array>

class MainContext;
class QAction;
class QLabel;
class QMenu;
class ctlKL_Digital;
class ctlKL_wImageButton;
class ctlKL_wPanel;
class ctlKL_wScrollbar;
class MiniScrollText;

// The small borderless window that stands in for the main window: its own title bar, the
// transport buttons, the three sliders of the main window, the time and the song's text.
class FrmMini : public QWidget {
    Q_OBJECT
public:
    FrmMini(MainContext& ctx, QWidget* mainWindow);
    ~FrmMini() override;

    void window_InstallColours();
    // The font chosen in the colour editor, or the desktop's.
    void installFont();
    void klbButton_Click(int index);
    void tmrPosition_Timer();
    void tmrPlaying_Timer();
    // Writes the window's place under "Position_MiniMode".
    void savePosition();
    void restorePosition();
    // Closed with the tray in use: this window and the player's others go to the tray.
    void miniMode_HideToTray();

    QString playingText() const;
    ctlKL_wScrollbar* klsPosition() const { return m_position; }
    ctlKL_wScrollbar* klsVolume() const { return m_volume; }
    ctlKL_wScrollbar* klsBalance() const { return m_balance; }
    ctlKL_Digital* kldNumber() const { return m_number; }
    ctlKL_wImageButton* klbButton(int index) const { return m_buttons[size_t(index)]; }
    QMenu* mnuSystemMenu() const { return m_systemMenu; }
    QAction* mnuAlwaysOnTop() const { return m_alwaysOnTop; }
    QAction* mnuLockPosition() const { return m_lockPosition; }
    bool playingTimerActive() const { return m_tmrPlaying.isActive(); }
    bool positionTimerActive() const { return m_tmrPosition.isActive(); }
    int scrollOffset() const;

protected:
    void closeEvent(QCloseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void showEvent(QShowEvent* e) override;
    void hideEvent(QHideEvent* e) override;
    void changeEvent(QEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    void buildTitleBar();
    void buildCenter();
    void buildMenu();
    // Ticks only while the window shows and something plays.
    void updateTimers();
    void titleBarDown(Qt::MouseButton button, int x, int y);
    void titleBarMove(int x, int y);
    void mnuCustomise_Click();
    void applyTopMost();
    void fitToFont();

    MainContext& m_ctx;
    QPointer<QWidget> m_main;
    MiniModeColours m_colours;
    ctlKL_wPanel* m_titleBar = nullptr;
    ctlKL_wPanel* m_center = nullptr;
    QLabel* m_icon = nullptr;
    QLabel* m_caption = nullptr;
    ctlKL_wImageButton* m_minimize = nullptr;
    ctlKL_wImageButton* m_close = nullptr;
    std::array<ctlKL_wImageButton*, 12> m_buttons{};
    ctlKL_wPanel* m_picPlaying = nullptr;
    MiniScrollText* m_playing = nullptr;
    ctlKL_wPanel* m_picTime = nullptr;
    ctlKL_Digital* m_number = nullptr;
    ctlKL_wScrollbar* m_position = nullptr;
    ctlKL_wScrollbar* m_volume = nullptr;
    ctlKL_wScrollbar* m_balance = nullptr;
    QLabel* m_lblVolume = nullptr;
    QLabel* m_lblBalance = nullptr;
    QMenu* m_systemMenu = nullptr;
    QAction* m_customise = nullptr;
    QAction* m_lockPosition = nullptr;
    QAction* m_alwaysOnTop = nullptr;
    QAction* m_returnToFullMode = nullptr;
    QAction* m_minimizeAction = nullptr;
    QTimer m_tmrPosition;
    QTimer m_tmrPlaying;
    bool m_dragging = false;
    QPoint m_grab;
};
