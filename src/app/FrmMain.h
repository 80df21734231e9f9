#pragma once
#include <QMainWindow>
#include <array>

class MainContext;
class ListView;
class QComboBox;
class QLabel;
class QSlider;
class QTimer;
class QToolBar;

// The main window: menu bar, toolbar with the playlist combo and the sliders, the playlist and
// the status bar. It holds widgets and forwards; the rules live in the routines it calls.
class FrmMain : public QMainWindow {
    Q_OBJECT
public:
    explicit FrmMain(MainContext& ctx, QWidget* parent = nullptr);
    ~FrmMain() override;

    MainContext& ctx() { return m_ctx; }
    ListView* lstvPlaylist() { return m_list; }
    QComboBox* cmbPlaylists() { return m_combo; }
    QSlider* sldPosition() { return m_position; }
    QSlider* sldVolume() { return m_volume; }
    QSlider* sldBalance() { return m_balance; }
    QToolBar* tbToolbar() { return m_toolbar; }
    // The bands holding the playlist combo and the sliders.
    QToolBar* comboBand() { return m_comboBand; }
    QToolBar* sliderBand() { return m_sliderBand; }
    QLabel* statusPanel(int panel) { return m_panels[qBound(0, panel - 1, 2)]; }
    // Shows a text on a panel (1 to 3), up to its first NUL, and tells a screen reader.
    void setPanelText(int panel, const QString& text);
    QTimer* tmrPosition() { return m_tmrPosition; }
    QTimer* tmrWindowUpdate() { return m_tmrWindowUpdate; }

    // Fits the filename column into the space the others leave.
    void Form_Resize();
    // Column widths in twips, the six that are kept in settings.
    QList<int> columnWidthsTwips() const;
    void setColumnWidthsTwips(const QList<int>& twips);
    // The six widths from and to "ColumnHeaders_MainWindow"; a nonsense key keeps its default.
    void restoreColumnWidths();
    void saveColumnWidths() const;
    void applyAppearance();
    // The command line that started this run, as one text.
    QString Command;

    // What the last full pass of tmrWindowUpdate_Timer saw, kept per window: a new window
    // always gets its first pass.
    std::array<qint64, 8> lastUpdateKey{};
    int quietUpdateTicks = 0;
    bool updatedOnce = false;

    // Set by the start-up code: what a user's close of the window does (Form_QueryUnload, mode 0).
    std::function<bool()> queryUnload;

Q_SIGNALS:
    // A panel's shown text changed; screen readers got the same news as a name change.
    void panelTextChanged(int panel, const QString& shown);

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void buildWidgets();
    void mirrorCombo();
    void installDisplayCommands();
    void setToolbarVisible(bool on);
    // Puts the toolbar's bands on as few rows as the width allows.
    void arrangeBands();

    MainContext& m_ctx;
    ListView* m_list = nullptr;
    QComboBox* m_combo = nullptr;
    QSlider* m_position = nullptr;
    QSlider* m_volume = nullptr;
    QSlider* m_balance = nullptr;
    QToolBar* m_toolbar = nullptr;
    QToolBar* m_comboBand = nullptr;
    QToolBar* m_sliderBand = nullptr;
    QLabel* m_panels[3] = {nullptr, nullptr, nullptr};
    QTimer* m_tmrPosition = nullptr;
    QTimer* m_tmrWindowUpdate = nullptr;
    QList<int> m_setTwips, m_setPixels;
};
