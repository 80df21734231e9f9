#pragma once
#include "playlists/ToolDialog.h"

#include <memory>

class ListModel;
class ListView;
class PlaylistGenerator;
class QCheckBox;
class QLabel;
class QProgressBar;
class QRadioButton;

// "Generate Playlist": a new playlist of the rows whose artist, album or year equals a
// criterion, named after the criterion.
class FrmGeneratePlaylist : public ToolDialog {
    Q_OBJECT
public:
    static FrmGeneratePlaylist* open(MainContext& ctx);
    ~FrmGeneratePlaylist() override;

    QRadioButton* opOptions[3];
    QLineEdit* txtCriteria;
    QCheckBox* chkUseID3v2;
    QCheckBox* chkOpenPlaylist;
    QProgressBar* pbBar;
    ListModel* items;
    ListView* lstvItems;
    QLabel* lblSearchResults;
    QPushButton* cmdCreate;
    QPushButton* cmdClose;

    void opOptions_Click(int index);
    void cmdCreate_Click();
    // True while rows are being tested.
    bool generating() const { return m_generator != nullptr; }

Q_SIGNALS:
    void finished();

private:
    explicit FrmGeneratePlaylist(MainContext& ctx);
    void setInputsEnabled(bool on);
    void generateSlice();
    void finish();

    int m_option = 0;
    QString m_path;
    std::unique_ptr<PlaylistGenerator> m_generator;
};
