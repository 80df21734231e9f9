#pragma once
#include <QWidget>

class MainContext;
class MpvPlayer;
class QLabel;
class QPushButton;
class QScrollBar;
class QTimer;

// "VELDOR Video": the picture of the media control, with its own transport row. It owns the
// control, for audio too, and lives as long as the process; closing it only hides it.
class FrmVideo : public QWidget {
    Q_OBJECT
public:
    FrmVideo(MainContext& ctx, QWidget* mainWindow);
    ~FrmVideo() override;

    MpvPlayer& player() { return *m_player; }
    bool opened() const { return m_opened; }

    void video_Update();
    void video_GetSize();
    void video_SaveSize();
    void video_Open();
    void video_Close();

    // Installs the video hooks of the context and attaches the control.
    void install();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void tick();
    void setFullScreen(bool on);
    void showBars(bool shown);

    MainContext& m_ctx;
    QWidget* m_main;
    QWidget* m_picture;
    MpvPlayer* m_player;
    QWidget* m_bottom;
    QPushButton *m_pause, *m_stop, *m_full, *m_normal, *m_hide;
    QScrollBar *m_position, *m_volume, *m_balance;
    QLabel *m_lblPosition, *m_lblVolume, *m_lblBalance;
    QTimer* m_timer;
    bool m_opened = false;
    QSize m_normalSize;
};
