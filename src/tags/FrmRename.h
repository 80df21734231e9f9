#pragma once
#include <QWidget>

class MainContext;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

// Renames one file, by hand or from its tags, and carries the new name to the playlist row, the
// play counts and the stored volumes.
class FrmRename : public QWidget {
    Q_OBJECT
public:
    static FrmRename* open(MainContext& ctx, const QString& filename, int position);

    void Get_Filename(const QString& filename, int position);
    void cmdUseID3_Click();
    // True when the file was renamed (the window then closes).
    bool cmdUpdate_Click();

    QLineEdit* txtDirectory;
    QLineEdit* txtFilename;
    QLineEdit* txtNewFilename;
    QComboBox* cmbFilename;
    QPushButton* cmdUseID3;
    QCheckBox* chkUseID3v2;
    QCheckBox* chkMaintain;
    QCheckBox* chkSaveChanges;
    QPushButton* cmdUpdate;
    QLabel* lblArtist;
    QLabel* lblTitle;
    QLabel* lblAlbum;

Q_SIGNALS:
    void renamed(const QString& oldPath, const QString& newPath);

private:
    FrmRename(MainContext& ctx, QWidget* parent);
    MainContext& m_ctx;
    int m_position = 0;
};

// The menu command: checks the selected row and opens the window for it.
void mnuSelectedRenameFilename_Click(MainContext& ctx);
