#pragma once
#include <QWidget>

class MainContext;
class QCheckBox;
class QLineEdit;

// Changes the artist, title and year of a row whose file has no tags (not "mp3", "mp2", "mp1").
// Only the row changes; the file is not touched.
class FrmEditEntry : public QWidget {
    Q_OBJECT
public:
    // Opens the editor for row `row` (1-based) of the playlist.
    static FrmEditEntry* open(MainContext& ctx, int row);

    int EditEntryRowIndex = 0;
    QLineEdit* txtFilename;
    QLineEdit* txtArtist;
    QLineEdit* txtTitle;
    QLineEdit* txtYear;
    QCheckBox* chkSaveChanges;

    void cmdUpdate_Click();

private:
    FrmEditEntry(MainContext& ctx, QWidget* parent);
    MainContext& m_ctx;
};
