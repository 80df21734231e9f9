#pragma once
#include "playlists/ToolDialog.h"

class QLabel;

// Moves the playing song to a minute and second of it.
class FrmJumpToTime : public ToolDialog {
    Q_OBJECT
public:
    // Opens only while a song plays or is paused; nullptr otherwise.
    static FrmJumpToTime* open(MainContext& ctx);

    QLabel* lblLength;
    QLineEdit* txtMins;
    QLineEdit* txtSecs;
    QPushButton* cmdJump;

    void cmdJump_Click();

private:
    explicit FrmJumpToTime(MainContext& ctx);
};
