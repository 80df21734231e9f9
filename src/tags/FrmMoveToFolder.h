#pragma once
#include "tags/FrmMassTool.h"
#include "tags/MoveToFolder.h"

class ListModel;
class MainContext;
class QCheckBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;

// Moves or copies the playlist's tagged files whose artist, album or year matches into a folder.
class FrmMoveToFolder : public FrmMassTool {
    Q_OBJECT
public:
    static FrmMoveToFolder* open(MainContext& ctx);
    ~FrmMoveToFolder() override;

    void opOptions_Click(int index);
    void cmbBrowse_Click();
    // Starts the run (false when refused); it ends in the event loop.
    bool cmdMove_Click();
    MoveToFolder* run() const { return static_cast<MoveToFolder*>(batch()); }
    ListModel& lstvItems() { return *m_items; }

    int SearchOption = 0;
    QRadioButton* opOptions[3];
    QLineEdit* txtSearch;
    QLineEdit* txtDestination;
    QPushButton* cmbBrowse;
    QCheckBox* chkSearchID3v2;
    QCheckBox* chkCopyFiles;
    QCheckBox* chkShowFiles;
    QPushButton* cmdMove;
    QLabel* lblMusicMoved;

private:
    FrmMoveToFolder(MainContext& ctx, QWidget* parent);
    void runEnded() override;

    ListModel* m_items;
    QString m_destination;
};

void mnuPlaylistMoveMusicToFolder_Click(MainContext& ctx);
