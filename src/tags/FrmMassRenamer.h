#pragma once
#include "tags/FrmMassTool.h"
#include "tags/MassRename.h"

class MainContext;
class QCheckBox;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;

// Renames every file of the playlist from its tags, in slices, with progress and a cancel.
class FrmMassRenamer : public FrmMassTool {
    Q_OBJECT
public:
    static FrmMassRenamer* open(MainContext& ctx);

    // Starts the run (false when refused); it ends in the event loop.
    bool cmdRename_Click();
    MassRename* run() const { return static_cast<MassRename*>(batch()); }

    QComboBox* cmbFilename;
    QCheckBox* chkUseID3v2;
    QCheckBox* chkAddNumbers;
    QCheckBox* chkSaveChanges;
    QPushButton* cmdRename;

private:
    FrmMassRenamer(MainContext& ctx, QWidget* parent);
    void runEnded() override;
};

// Refuses while the player plays or pauses, else opens the window.
void mnuPlaylistRenameAllFilenames_Click(MainContext& ctx);
// The refusal shared by the playlist's mass tools; true when the tool may open.
bool tags_MassToolMayOpen(MainContext& ctx, const QString& title);
