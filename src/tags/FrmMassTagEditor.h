#pragma once
#include "tags/FrmMassTool.h"
#include "tags/MassTagEdit.h"

class MainContext;
class QCheckBox;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;

// Writes the same artist, album, year, comment and genre into every tagged file of the playlist.
class FrmMassTagEditor : public FrmMassTool {
    Q_OBJECT
public:
    static FrmMassTagEditor* open(MainContext& ctx);

    // Starts the run (false when refused); it ends in the event loop.
    bool cmdEditAll_Click();
    MassTagEdit* run() const { return static_cast<MassTagEdit*>(batch()); }

    QLineEdit* txtArtist;
    QLineEdit* txtAlbum;
    QLineEdit* txtYear;
    QLineEdit* txtComments;
    QListWidget* lstGenre;
    QCheckBox* chkEditID3v2;
    QCheckBox* chkClearTitle;
    QCheckBox* chkSaveChanges;
    QPushButton* cmdEditAll;

private:
    FrmMassTagEditor(MainContext& ctx, QWidget* parent);
    void runEnded() override;
};

void mnuPlaylistEditAllTags_Click(MainContext& ctx);
