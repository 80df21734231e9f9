#pragma once
#include "tags/MoveToFolder.h"

#include <QPointer>
#include <QWidget>

class ListModel;
class MainContext;
class QCheckBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;

// Moves or copies the playlist's tagged files whose artist, album or year matches into a folder.
class FrmMoveToFolder : public QWidget {
    Q_OBJECT
public:
    static FrmMoveToFolder* open(MainContext& ctx);
    ~FrmMoveToFolder() override;

    void opOptions_Click(int index);
    void cmbBrowse_Click();
    // Starts the run (false when refused); it ends in the event loop.
    bool cmdMove_Click();
    MoveToFolder* run() const { return m_run; }
    ListModel& lstvItems() { return *m_items; }

    int SearchOption = 0;
    QRadioButton* opOptions[3];
    QLineEdit* txtSearch;
    QLineEdit* txtDestination;
    QPushButton* cmbBrowse;
    QCheckBox* chkSearchID3v2;
    QCheckBox* chkCopyFiles;
    QCheckBox* chkShowFiles;
    QCheckBox* chkCloseWindow;
    QPushButton* cmdBack;
    QPushButton* cmdMove;
    QPushButton* cmdClose;
    QPushButton* cmdCancel;
    QProgressBar* pbBar;
    QLabel* lblMusicMoved;

Q_SIGNALS:
    void runFinished();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    FrmMoveToFolder(MainContext& ctx, QWidget* parent);
    void setRunning(bool running);
    void finished();

    MainContext& m_ctx;
    ListModel* m_items;
    QPointer<MoveToFolder> m_run;
    QString m_destination;
    bool m_closeAfterRun = false;
};

void mnuPlaylistMoveMusicToFolder_Click(MainContext& ctx);
