#pragma once
#include <QWidget>

class ListView;
class MainContext;
class QCheckBox;
class QLabel;
class QMenu;
class QPushButton;
class QTimer;
class QToolButton;
class Tracking;

// The Tracking window: shows the play counts and forwards to the rules in Tracking. Closing it
// only hides it; counting goes on.
class FrmTracking : public QWidget {
    Q_OBJECT
public:
    explicit FrmTracking(MainContext& ctx, QWidget* parent = nullptr);

    // The window of `ctx`, made on first use, shown and raised.
    static FrmTracking& showFor(MainContext& ctx);

    Tracking& rules() { return m_rules; }
    ListView* lstvItems = nullptr;
    QLabel* lblCaption = nullptr;
    QCheckBox* chkAlwaysUseTracking = nullptr;
    QPushButton* cmdClear = nullptr;
    QPushButton* cmdPlay = nullptr;
    QPushButton* cmdHide = nullptr;
    QToolButton* lblOptions = nullptr;
    QToolButton* lblPlaylist = nullptr;
    QMenu* mnuOptions = nullptr;
    QMenu* mnuMenu = nullptr;
    QTimer* tmrWindowUpdate = nullptr;

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fitColumns();

    Tracking& m_rules;
};
