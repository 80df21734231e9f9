#include "playlists/FrmEditBookmarks.h"

#include "core/ConsoleLog.h"
#include "core/MainContext.h"
#include "core/modFiles.h"
#include "playlists/Bookmarks.h"
#include "playlists/LineFiles.h"
#include "core/ListModel.h"
#include "core/modControls.h"
#include "ui/ListView.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
QPointer<FrmEditBookmarks> g_window;

QWidget* topWindow() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String("FrmMain")) return w;
    return nullptr;
}
} // namespace

FrmEditBookmarks* FrmEditBookmarks::instance() {
    return g_window.data();
}

FrmEditBookmarks* FrmEditBookmarks::open(MainContext& ctx) {
    if (!g_window) {
        g_window = new FrmEditBookmarks(ctx, topWindow());
        g_window->form_Load();
    }
    g_window->show();
    g_window->raise();
    return g_window.data();
}

FrmEditBookmarks::FrmEditBookmarks(MainContext& ctx, QWidget* parent)
    : QWidget(parent, Qt::Dialog), m_ctx(ctx),
      m_items(new ListModel({QStringLiteral("Bookmark:")}, this)) {
    setObjectName(QStringLiteral("FrmEditBookmarks"));
    setAccessibleName(QStringLiteral("Edit Bookmarks"));
    setWindowTitle(QStringLiteral("Edit Bookmarks"));
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_DeleteOnClose);
    m_items->setMultiSelect(false);
    m_view = new ListView(m_items, this);
    m_view->setObjectName(QStringLiteral("lstBookmarks"));
    m_view->setAccessibleName(QStringLiteral("Bookmarks"));
    m_view->setHeadersVisible(false);

    auto* bar = new QMenuBar(this);
    QMenu* menu = bar->addMenu(QStringLiteral("&Bookmarks"));
    menu->setObjectName(QStringLiteral("mnuMenu"));
    const auto item = [&](const char* name, const QString& caption,
                          void (FrmEditBookmarks::*slot)(), const QString& keys = {}) {
        QAction* a = menu->addAction(caption);
        a->setObjectName(QString::fromLatin1(name));
        if (!keys.isEmpty()) a->setShortcut(QKeySequence(keys));
        connect(a, &QAction::triggered, this, slot);
    };
    item("mnuRemoveSelected", QStringLiteral("&Remove Selected"),
         &FrmEditBookmarks::mnuRemoveSelected_Click);
    item("mnuRemoveDeadFilenames", QStringLiteral("Remove &Dead Filenames"),
         &FrmEditBookmarks::mnuRemoveDeadFilenames_Click);
    menu->addSeparator();
    item("mnuMoveUpOne", QStringLiteral("Move &Up One"), &FrmEditBookmarks::mnuMoveUpOne_Click,
         QStringLiteral("Alt+Up"));
    item("mnuMoveDownOne", QStringLiteral("Move D&own One"),
         &FrmEditBookmarks::mnuMoveDownOne_Click, QStringLiteral("Alt+Down"));
    menu->addSeparator();
    item("mnuClear", QStringLiteral("&Clear..."), &FrmEditBookmarks::mnuClear_Click);
    connect(menu, &QMenu::aboutToShow, this, &FrmEditBookmarks::window_UpdateOptions);
    connect(m_items->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &FrmEditBookmarks::window_UpdateOptions);

    auto* save = new QPushButton(QStringLiteral("&Save"), this);
    save->setObjectName(QStringLiteral("cmdSave"));
    save->setAccessibleName(QStringLiteral("Save"));
    connect(save, &QPushButton::clicked, this, &FrmEditBookmarks::cmdSave_Click);
    auto* cancel = new QPushButton(QStringLiteral("&Cancel"), this);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    cancel->setAccessibleName(QStringLiteral("Cancel"));
    connect(cancel, &QPushButton::clicked, this, &QWidget::close);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(save);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(bar);
    layout->addWidget(m_view);
    layout->addLayout(buttons);
    resize(420, 320);
}

QAction* FrmEditBookmarks::menuAction(const QString& name) const {
    return findChild<QAction*>(name);
}

void FrmEditBookmarks::form_Load() {
    m_items->clear();
    std::vector<QStringList> rows;
    for (const QString& line : LineFiles::readLines(bookmarks_Path()))
        rows.push_back({line});
    m_items->appendRows(std::move(rows));
    window_UpdateOptions();
}

void FrmEditBookmarks::window_UpdateOptions() {
    const int count = m_items->count();
    const int row = listview_SelectedIndex(*m_items);
    menuAction(QStringLiteral("mnuRemoveSelected"))->setEnabled(count > 0 && row > 0);
    menuAction(QStringLiteral("mnuRemoveDeadFilenames"))->setEnabled(count > 0);
    menuAction(QStringLiteral("mnuMoveUpOne"))->setEnabled(count > 0 && row > 1);
    menuAction(QStringLiteral("mnuMoveDownOne"))->setEnabled(count > 0 && row >= 1 && row < count);
}

void FrmEditBookmarks::mnuMoveUpOne_Click() {
    const int row = listview_SelectedIndex(*m_items);
    if (row > 1) listview_SwapRows(*m_items, row, row - 1, true);
    window_UpdateOptions();
}

void FrmEditBookmarks::mnuMoveDownOne_Click() {
    const int row = listview_SelectedIndex(*m_items);
    if (row >= 1 && row < m_items->count()) listview_SwapRows(*m_items, row, row + 1, true);
    window_UpdateOptions();
}

void FrmEditBookmarks::mnuRemoveSelected_Click() {
    listview_RemoveSelected(*m_items);
    window_UpdateOptions();
}

void FrmEditBookmarks::mnuRemoveDeadFilenames_Click() {
    listview_RemoveDeadEntries(*m_items, 0);
    save();
    window_UpdateOptions();
}

void FrmEditBookmarks::mnuClear_Click() {
    // The rows go only when the file went: a No keeps both.
    if (mnuClearBookmarks_Click(m_ctx)) m_items->clear();
    window_UpdateOptions();
}

void FrmEditBookmarks::save() {
    if (m_items->count() == 0) {
        modFiles::file_Delete(bookmarks_Path());
    } else {
        QStringList lines;
        for (int i = 0; i < m_items->count(); ++i)
            lines.append(m_items->text(i, 0));
        LineFiles::writeLines(bookmarks_Path(), lines);
    }
    window_InstallBookmarks(m_ctx);
}

void FrmEditBookmarks::cmdSave_Click() {
    const bool empty = m_items->count() == 0;
    save();
    if (!empty) window_WriteLog(QStringLiteral("Bookmarks were modified from the Edit window."));
    close();
}
