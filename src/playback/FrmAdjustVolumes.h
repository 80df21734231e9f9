#pragma once
#include <QWidget>

class AdjustVolumes;
class ListView;
class MainContext;
class QCheckBox;
class QLabel;
class QMenu;
class QPushButton;
class QTimer;
class QToolButton;

// The Adjust Volumes window: shows the per-file volumes and forwards to AdjustVolumes. Closing
// it only hides it.
class FrmAdjustVolumes : public QWidget {
    Q_OBJECT
public:
    explicit FrmAdjustVolumes(MainContext& ctx, QWidget* parent = nullptr);

    // The window of `ctx`, made on first use, shown and raised.
    static FrmAdjustVolumes& showFor(MainContext& ctx);

    AdjustVolumes& rules() { return m_rules; }
    ListView* lstvItems = nullptr;
    QLabel* lblCaption = nullptr;
    QCheckBox* chkAlwaysAdjust = nullptr;
    QPushButton* cmdHide = nullptr;
    QPushButton* cmdClear = nullptr;
    QPushButton* cmdBack = nullptr;
    QToolButton* lblOptions = nullptr;
    QMenu* mnuMenu = nullptr;
    QTimer* tmrWindowUpdate = nullptr;

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fitColumns();

    AdjustVolumes& m_rules;
};
