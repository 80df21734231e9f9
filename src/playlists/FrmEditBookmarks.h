#pragma once
#include <QWidget>

class ListModel;
class ListView;
class MainContext;
class QAction;

// The bookmark editor: the lines of bookmarks.sbl, reordered, removed and saved back.
class FrmEditBookmarks : public QWidget {
    Q_OBJECT
public:
    static FrmEditBookmarks* open(MainContext& ctx);
    static FrmEditBookmarks* instance();

    ListModel& lstBookmarks() { return *m_items; }
    QAction* menuAction(const QString& name) const;

    void form_Load();
    void window_UpdateOptions();
    void mnuMoveUpOne_Click();
    void mnuMoveDownOne_Click();
    void mnuRemoveSelected_Click();
    void mnuRemoveDeadFilenames_Click();
    void mnuClear_Click();
    void cmdSave_Click();

private:
    FrmEditBookmarks(MainContext& ctx, QWidget* parent);
    void save();

    MainContext& m_ctx;
    ListModel* m_items;
    ListView* m_view;
};
