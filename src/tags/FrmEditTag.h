#pragma once
#include <QWidget>

class MainContext;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

// Edits the ID3v1 and ID3v2 tags of one file side by side, with its lyrics and properties.
// Nothing reaches the file before Update.
class FrmEditTag : public QWidget {
    Q_OBJECT
public:
    // Opens the editor on `filename`, row `rowIndex` (1-based) of the playlist, at `section`.
    static FrmEditTag* open(MainContext& ctx, const QString& filename, int rowIndex, int section);

    static const QStringList& sectionCaptions();
    void window_ShowSection(int section);
    int currentSection() const { return m_section; }
    void window_GetID3Data(const QString& filename, int rowIndex);

    void cmdCopyID31ToID32_Click();
    void cmdCopyID32ToID31_Click();
    void cmdReload_Click();
    void cmdRename_Click();
    // True when both tags were written.
    bool cmdUpdate_Click();

    // Index 0: the ID3v1 panel, 1: the ID3v2 panel.
    QLineEdit* txtArtist[2];
    QLineEdit* txtTitle[2];
    QLineEdit* txtAlbum[2];
    QLineEdit* txtYear[2];
    QLineEdit* txtComments[2];
    QLineEdit* txtTrack;
    QLineEdit* txtOrgArtist;
    QLineEdit* txtComposer;
    QLineEdit* txtCopyright;
    QPlainTextEdit* txtLyrics;
    QComboBox* cmbGenre;
    QLineEdit* txtFilename;
    QLabel* lblTitle;
    QLabel* lblSize;
    QLabel* lblSizeMB;
    QLabel* lblLength;
    QLabel* lblFileDateTime;
    QLabel* lblReadOnly;
    QLabel* lblHidden;
    QCheckBox* chkSaveChanges;
    QPushButton* lblSection[4];
    QWidget* panels[4];

private:
    FrmEditTag(MainContext& ctx, QWidget* parent);
    QWidget* makeTagPanel(int index);
    QWidget* makeLyricsPanel();
    QWidget* makePropertiesPanel();
    bool fail(const QString& text, QWidget* focus = nullptr);

    MainContext& m_ctx;
    QWidget* m_genreRow = nullptr;
    int m_rowIndex = 0;
    int m_section = 0;
};

// The playlist's Properties command: the tag editor for a tagged file, the entry editor for
// any other.
void mnuProperties_Click(MainContext& ctx);
