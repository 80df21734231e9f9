#pragma once
#include "playlists/ToolDialog.h"

class QRadioButton;

// Selects a row by its number, and plays it or sets it to be played next when asked.
class FrmJumpToNumber : public ToolDialog {
    Q_OBJECT
public:
    static FrmJumpToNumber* open(MainContext& ctx);

    QLineEdit* txtNum;
    QRadioButton* opOptions[3];
    QPushButton* cmdJump;

    void cmdJump_Click();

private:
    explicit FrmJumpToNumber(MainContext& ctx);
};
