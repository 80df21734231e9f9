#pragma once
#include "tags/MassRename.h"

#include <QPointer>
#include <QWidget>

class MainContext;
class QCheckBox;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;

// Renames every file of the playlist from its tags, in slices, with progress and a cancel.
class FrmMassRenamer : public QWidget {
    Q_OBJECT
public:
    static FrmMassRenamer* open(MainContext& ctx);

    // Starts the run (false when refused); it ends in the event loop.
    bool cmdRename_Click();
    MassRename* run() const { return m_run; }

    QComboBox* cmbFilename;
    QCheckBox* chkUseID3v2;
    QCheckBox* chkAddNumbers;
    QCheckBox* chkSaveChanges;
    QCheckBox* chkCloseWindow;
    QProgressBar* pbBar;
    QPushButton* cmdBack;
    QPushButton* cmdRename;
    QPushButton* cmdClose;
    QPushButton* cmdCancel;

Q_SIGNALS:
    void runFinished();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    FrmMassRenamer(MainContext& ctx, QWidget* parent);
    void setRunning(bool running);
    void finished();

    MainContext& m_ctx;
    QPointer<MassRename> m_run;
    bool m_closeAfterRun = false;
};

// Refuses while the player plays or pauses, else opens the window.
void mnuPlaylistRenameAllFilenames_Click(MainContext& ctx);
// The refusal shared by the playlist's mass tools; true when the tool may open.
bool tags_MassToolMayOpen(MainContext& ctx, const QString& title);
