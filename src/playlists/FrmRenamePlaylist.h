#pragma once
#include "playlists/ToolDialog.h"

class QLabel;

// Gives a playlist file a new name, from the main menu (row -1) or from a row of the manage
// window.
class FrmRenamePlaylist : public ToolDialog {
    Q_OBJECT
public:
    static FrmRenamePlaylist* open(MainContext& ctx, const QString& path, int row,
                                   QWidget* owner = nullptr);

    QLabel* lblDirectory;
    QLabel* lblFilename;
    QLineEdit* txtName;
    QPushButton* cmdRename;
    int RenameRow = -1;

    void Get_Filename(const QString& filename, int position);
    void cmdRename_Click();

Q_SIGNALS:
    // A row of the manage window was renamed (row 0-based).
    void renamed(int row, const QString& oldTitle, const QString& newTitle);

private:
    FrmRenamePlaylist(MainContext& ctx, QWidget* owner);
    QString m_path;
};
