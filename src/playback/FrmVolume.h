#pragma once
#include <QWidget>

class MainContext;
class QCheckBox;
class QPushButton;
class QSlider;

// A small second view of the volume near the lower right corner of the screen: a slider and
// the mute box. It shows the main window's state when it opens.
class FrmVolume : public QWidget {
    Q_OBJECT
public:
    explicit FrmVolume(MainContext& ctx, QWidget* parent = nullptr);

    // The window of `ctx`, made on first use (or again after it was closed), shown.
    static FrmVolume& showFor(MainContext& ctx);

    QSlider* sldVolume = nullptr;
    QCheckBox* chkMute = nullptr;
    QPushButton* cmdClose = nullptr;

    void Form_Load();
    void sldVolume_Scroll(int value);
    void chkMute_Click();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    MainContext& m_ctx;
};
