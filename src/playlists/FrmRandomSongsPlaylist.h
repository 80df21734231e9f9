#pragma once
#include "playlists/ToolDialog.h"

class QComboBox;
class QRadioButton;

// "Create Random Songs Playlist": a new playlist of rows drawn at random.
class FrmRandomSongsPlaylist : public ToolDialog {
    Q_OBJECT
public:
    static FrmRandomSongsPlaylist* open(MainContext& ctx);

    QLineEdit* txtPlaylistName;
    QLineEdit* txtSongCount;
    QComboBox* cmbOptions;
    QRadioButton* opOptions[2];
    QPushButton* cmdCreate;
    QPushButton* cmdClose;

    void cmdCreate_Click();

private:
    explicit FrmRandomSongsPlaylist(MainContext& ctx);
    void setInputsEnabled(bool on);
};
