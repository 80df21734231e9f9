#pragma once
#include <QWidget>

class ListModel;
class ListView;
class MainContext;
class QAction;
class QMenu;
class QTimer;

// The mood editor: the names with their song counts, reordered, removed, added (FrmAddMood) and
// saved back to the setting and the menus. One at a time; it does not block the event loop.
class FrmEditMoods : public QWidget {
    Q_OBJECT
public:
    static FrmEditMoods* open(MainContext& ctx);
    static FrmEditMoods* instance();

    ListModel& lstvItems() { return *m_items; }
    QAction* menuAction(const QString& name) const; // mnuAdd, mnuRemove, mnuMoveUpOne, ...

    void window_AddMood(const QString& name, long songCount);
    void form_Load();
    void mnuMoveUpOne_Click();
    void mnuMoveDownOne_Click();
    void mnuRemove_Click();
    void mnuReset_Click();
    void cmdAdd_Click();
    void cmdSave_Click();
    void tmrWindowUpdate_Timer();

private:
    FrmEditMoods(MainContext& ctx, QWidget* parent);
    QAction* addMenuAction(const QString& name, const QString& caption, const QString& keys = {});

    MainContext& m_ctx;
    ListModel* m_items;
    ListView* m_view;
    QMenu* m_menu;
    QTimer* m_timer;
};
