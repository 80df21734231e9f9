#pragma once
#include "ui/StoredListWindow.h"

class AdjustVolumes;
class MainContext;
class QCheckBox;
class QLabel;
class QMenu;
class QPushButton;
class QToolButton;

// The Adjust Volumes window: shows the per-file volumes and forwards to AdjustVolumes. Closing
// it only hides it.
class FrmAdjustVolumes : public StoredListWindow {
    Q_OBJECT
public:
    explicit FrmAdjustVolumes(MainContext& ctx, QWidget* parent = nullptr);

    // The window of `ctx`, made on first use, shown and raised.
    static FrmAdjustVolumes& showFor(MainContext& ctx) { return showOnce<FrmAdjustVolumes>(ctx); }

    AdjustVolumes& rules() { return m_rules; }
    QLabel* lblCaption = nullptr;
    QCheckBox* chkAlwaysAdjust = nullptr;
    QPushButton* cmdHide = nullptr;
    QPushButton* cmdClear = nullptr;
    QPushButton* cmdBack = nullptr;
    QToolButton* lblOptions = nullptr;
    QMenu* mnuMenu = nullptr;

private:
    AdjustVolumes& m_rules;
};
