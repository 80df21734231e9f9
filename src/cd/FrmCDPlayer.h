#pragma once
#include <QMainWindow>

class CdPlayer;
class ListView;
class MainContext;
class QLabel;
class QSlider;
class QToolBar;

// "CD Player": the tracks of the first audio disc found, with their transport. It comes and
// goes: closing it stops the disc and deletes it.
class FrmCDPlayer : public QMainWindow {
    Q_OBJECT
public:
    explicit FrmCDPlayer(MainContext& ctx, QWidget* parent = nullptr);
    ~FrmCDPlayer() override;

    // The open window, if any.
    static FrmCDPlayer* current();
    // Opens the window (or raises the open one).
    static FrmCDPlayer& showFor(MainContext& ctx);

    CdPlayer& rules() { return *m_rules; }
    ListView* lstvPlaylist() const { return m_view; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void buildMenus();
    void buildToolbar();
    void applySettings();
    void showPanels();
    void restoreLook();
    void recenter();
    bool transportKey(int key, Qt::KeyboardModifiers mods);

    MainContext& m_ctx;
    CdPlayer* m_rules;
    ListView* m_view;
    QSlider* m_slider;
    QToolBar* m_toolbar;
    QLabel* m_panels[4];
    bool m_closed = false;
};
