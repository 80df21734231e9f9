#pragma once
#include "playlists/ToolDialog.h"

#include <QHash>

class ListModel;
class ListView;
class QAction;
class QLabel;
class QMenu;

// The playlist files with their song count and date; renames and deletes them. The combo and
// the "Send To" menu of the main window follow when the window closes.
class FrmManagePlaylists : public ToolDialog {
    Q_OBJECT
public:
    static FrmManagePlaylists* open(MainContext& ctx);

    ListModel* items;
    ListView* lstvItems;
    QLabel* lblOptions;
    QMenu* mnuMenu;
    QAction* mnuDelete;
    QAction* mnuRename;
    QAction* mnuClear;
    QPushButton* cmdFinish;

    void window_ShowPlaylists();
    void window_AddPlaylist(const QString& name, const QString& songs, const QString& created);
    void mnuRename_Click();
    void mnuDelete_Click();
    void mnuClear_Click();
    void cmdFinish_Click();
    // The renamed titles of this visit, old -> new.
    const QHash<QString, QString>& renamed() const { return m_renamed; }

    void done(int result) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    explicit FrmManagePlaylists(MainContext& ctx);
    void updateActions();
    // However the window goes, the main window's lists show what changed on disk.
    void leave();
    QString selectedPath() const;
    QHash<QString, QString> m_renamed;
};
