#pragma once
#include "tags/MassTagEdit.h"

#include <QPointer>
#include <QWidget>

class MainContext;
class QCheckBox;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;

// Writes the same artist, album, year, comment and genre into every tagged file of the playlist.
class FrmMassTagEditor : public QWidget {
    Q_OBJECT
public:
    static FrmMassTagEditor* open(MainContext& ctx);

    // Starts the run (false when refused); it ends in the event loop.
    bool cmdEditAll_Click();
    MassTagEdit* run() const { return m_run; }

    QLineEdit* txtArtist;
    QLineEdit* txtAlbum;
    QLineEdit* txtYear;
    QLineEdit* txtComments;
    QListWidget* lstGenre;
    QCheckBox* chkEditID3v2;
    QCheckBox* chkClearTitle;
    QCheckBox* chkCloseWindow;
    QCheckBox* chkSaveChanges;
    QProgressBar* pbBar;
    QPushButton* cmdBack;
    QPushButton* cmdEditAll;
    QPushButton* cmdClose;
    QPushButton* cmdCancel;

Q_SIGNALS:
    void runFinished();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    FrmMassTagEditor(MainContext& ctx, QWidget* parent);
    void setRunning(bool running);
    void finished();

    MainContext& m_ctx;
    QPointer<MassTagEdit> m_run;
    bool m_closeAfterRun = false;
};

void mnuPlaylistEditAllTags_Click(MainContext& ctx);
