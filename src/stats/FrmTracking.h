#pragma once
#include "ui/StoredListWindow.h"

class MainContext;
class QCheckBox;
class QLabel;
class QMenu;
class QPushButton;
class QToolButton;
class Tracking;

// The Tracking window: shows the play counts and forwards to the rules in Tracking. Closing it
// only hides it; counting goes on.
class FrmTracking : public StoredListWindow {
    Q_OBJECT
public:
    explicit FrmTracking(MainContext& ctx, QWidget* parent = nullptr);

    // The window of `ctx`, made on first use, shown and raised.
    static FrmTracking& showFor(MainContext& ctx) { return showOnce<FrmTracking>(ctx); }

    Tracking& rules() { return m_rules; }
    QLabel* lblCaption = nullptr;
    QCheckBox* chkAlwaysUseTracking = nullptr;
    QPushButton* cmdClear = nullptr;
    QPushButton* cmdPlay = nullptr;
    QPushButton* cmdHide = nullptr;
    QToolButton* lblOptions = nullptr;
    QToolButton* lblPlaylist = nullptr;
    QMenu* mnuOptions = nullptr;
    QMenu* mnuMenu = nullptr;

private:
    Tracking& m_rules;
};
