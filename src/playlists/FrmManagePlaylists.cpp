#include "playlists/FrmManagePlaylists.h"

#include "core/ListModel.h"
#include "core/modControls.h"
#include "playlists/FrmRenamePlaylist.h"
#include "playlists/ManagePlaylists.h"
#include "playlists/PlaylistFiles.h"
#include "ui/ListView.h"

#include <QAction>
#include <QCloseEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
// A label that opens the options menu, as the panel's caption does.
class OptionsLabel : public QLabel {
public:
    OptionsLabel(QMenu* menu, QWidget* parent) : QLabel(QStringLiteral("&Options"), parent) {
        m_menu = menu;
        setFocusPolicy(Qt::StrongFocus);
        setCursor(Qt::PointingHandCursor);
    }

protected:
    void mousePressEvent(QMouseEvent*) override { popup(); }
    void keyPressEvent(QKeyEvent* e) override {
        if (e->key() == Qt::Key_Space || e->key() == Qt::Key_Return || e->key() == Qt::Key_Down)
            popup();
        else
            QLabel::keyPressEvent(e);
    }

private:
    void popup() { m_menu->popup(mapToGlobal(QPoint(0, height()))); }
    QMenu* m_menu;
};
} // namespace

FrmManagePlaylists* FrmManagePlaylists::open(MainContext& ctx) {
    auto* w = new FrmManagePlaylists(ctx);
    w->window_ShowPlaylists();
    w->show();
    w->lstvItems->setFocus();
    return w;
}

FrmManagePlaylists::FrmManagePlaylists(MainContext& ctx)
    : ToolDialog(ctx, QStringLiteral("FrmManagePlaylists"), QStringLiteral("Manage Playlists")) {
    items = new ListModel(
        {QStringLiteral("Playlist Name:"), QStringLiteral("Songs:"), QStringLiteral("Created:")},
        this);
    items->setMultiSelect(false);
    lstvItems = new ListView(items, this);
    lstvItems->setObjectName(QStringLiteral("lstvItems"));
    lstvItems->setAccessibleName(QStringLiteral("Playlists"));
    lstvItems->setColumnWidths({220, 70, 160});

    mnuMenu = new QMenu(this);
    mnuMenu->setObjectName(QStringLiteral("mnuMenu"));
    const auto action = [this](const char* name, const QString& caption) {
        auto* a = mnuMenu->addAction(caption);
        a->setObjectName(QString::fromLatin1(name));
        return a;
    };
    mnuDelete = action("mnuDelete", QStringLiteral("&Delete..."));
    mnuRename = action("mnuRename", QStringLiteral("&Rename..."));
    mnuMenu->addSeparator();
    mnuClear = action("mnuClear", QStringLiteral("Delete &All..."));
    connect(mnuDelete, &QAction::triggered, this, &FrmManagePlaylists::mnuDelete_Click);
    connect(mnuRename, &QAction::triggered, this, &FrmManagePlaylists::mnuRename_Click);
    connect(mnuClear, &QAction::triggered, this, &FrmManagePlaylists::mnuClear_Click);

    auto* klpOptions = new QFrame(this);
    klpOptions->setObjectName(QStringLiteral("klpOptions"));
    klpOptions->setFrameShape(QFrame::StyledPanel);
    lblOptions = new OptionsLabel(mnuMenu, klpOptions);
    lblOptions->setObjectName(QStringLiteral("lblOptions"));
    lblOptions->setAccessibleName(QStringLiteral("Options"));
    auto* panel = new QHBoxLayout(klpOptions);
    panel->addWidget(lblOptions);
    panel->addStretch();

    cmdFinish = button("cmdFinish", QStringLiteral("&Finish"));
    cmdFinish->setDefault(true);
    auto* close = button("cmdClose", QStringLiteral("&Close"));
    connect(cmdFinish, &QPushButton::clicked, this, &FrmManagePlaylists::cmdFinish_Click);
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    connect(lstvItems, &ListView::contextMenuAt, this,
            [this](const QPoint& at) { mnuMenu->popup(at); });
    connect(items->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &FrmManagePlaylists::updateActions);
    connect(items, &QAbstractItemModel::rowsRemoved, this, &FrmManagePlaylists::updateActions);
    connect(items, &QAbstractItemModel::modelReset, this, &FrmManagePlaylists::updateActions);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdFinish);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(klpOptions);
    layout->addWidget(lstvItems, 1);
    layout->addLayout(buttons);
    resize(520, 420);
    updateActions();
}

void FrmManagePlaylists::updateActions() {
    const bool selected = items->selectedItem() >= 0;
    mnuDelete->setEnabled(selected);
    mnuRename->setEnabled(selected);
    mnuClear->setEnabled(items->count() > 0);
}

void FrmManagePlaylists::window_AddPlaylist(const QString& name, const QString& songs,
                                            const QString& created) {
    items->addRow({name, songs, created});
}

void FrmManagePlaylists::window_ShowPlaylists() {
    std::vector<QStringList> rows;
    for (const PlaylistFileInfo& info : manage_ListPlaylists())
        rows.push_back({info.title, info.songs, info.created});
    listview_Clear(*items);
    items->appendRows(std::move(rows));
    if (items->count() > 0) listview_SelectItem(*items, 1);
    updateActions();
}

QString FrmManagePlaylists::selectedPath() const {
    const int row = items->selectedItem();
    return row < 0 ? QString() : playlist_PathOf(items->text(row, 0));
}

void FrmManagePlaylists::mnuRename_Click() {
    const int row = items->selectedItem();
    if (row < 0) return;
    auto* rename = FrmRenamePlaylist::open(m_ctx, selectedPath(), row, this);
    connect(rename, &FrmRenamePlaylist::renamed, this,
            [this](int at, const QString& old, const QString& now) {
                if (at < items->count()) items->setText(at, 0, now);
                // A chain of renames leads the first name to the last.
                for (auto it = m_renamed.begin(); it != m_renamed.end(); ++it)
                    if (it.value() == old) it.value() = now;
                if (!m_renamed.contains(old)) m_renamed.insert(old, now);
            });
}

void FrmManagePlaylists::mnuDelete_Click() {
    const int row = items->selectedItem();
    if (row < 0) return;
    if (!playlist_DeleteFile(m_ctx, selectedPath())) return;
    // The file is gone, so is its row; the next one takes the selection.
    listview_RemoveSelected(*items);
    manage_Refresh(m_ctx, m_renamed);
}

void FrmManagePlaylists::mnuClear_Click() {
    if (playlist_DeleteAll(m_ctx)) window_ShowPlaylists();
}

void FrmManagePlaylists::cmdFinish_Click() {
    close();
}

void FrmManagePlaylists::leave() {
    manage_Refresh(m_ctx, m_renamed);
    m_renamed.clear();
}

void FrmManagePlaylists::closeEvent(QCloseEvent* event) {
    leave();
    ToolDialog::closeEvent(event);
}

void FrmManagePlaylists::done(int result) {
    leave();
    ToolDialog::done(result);
}

void FrmManagePlaylists::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Delete) {
        if (mnuDelete->isEnabled()) mnuDelete_Click();
        return;
    }
    ToolDialog::keyPressEvent(event);
}
