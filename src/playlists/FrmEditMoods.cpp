#include "playlists/FrmEditMoods.h"

#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/modFiles.h"
#include "playlists/FrmAddMood.h"
#include "core/ListModel.h"
#include "playlists/Moods.h"
#include "core/modControls.h"
#include "ui/ListView.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {
QPointer<FrmEditMoods> g_window;

QWidget* topWindow() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String("FrmMain")) return w;
    return nullptr;
}

long songsIn(const QString& name) {
    const QString path = mood_FilePath(name);
    return path.isEmpty() ? 0 : modFiles::file_CountLines(path);
}
} // namespace

FrmEditMoods* FrmEditMoods::instance() {
    return g_window.data();
}

FrmEditMoods* FrmEditMoods::open(MainContext& ctx) {
    if (!g_window) {
        g_window = new FrmEditMoods(ctx, topWindow());
        g_window->form_Load();
    }
    g_window->show();
    g_window->raise();
    return g_window.data();
}

FrmEditMoods::FrmEditMoods(MainContext& ctx, QWidget* parent)
    : QWidget(parent, Qt::Dialog), m_ctx(ctx),
      m_items(new ListModel({QStringLiteral("Title:"), QStringLiteral("Songs:")}, this)) {
    setObjectName(QStringLiteral("FrmEditMoods"));
    setAccessibleName(QStringLiteral("Edit Moods"));
    setWindowTitle(QStringLiteral("Edit Moods"));
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_DeleteOnClose);
    m_items->setMultiSelect(false);
    m_view = new ListView(m_items, this);
    m_view->setObjectName(QStringLiteral("lstvItems"));
    m_view->setAccessibleName(QStringLiteral("Moods"));
    m_view->header()->setSectionResizeMode(0, QHeaderView::Stretch);

    m_menu = new QMenu(this);
    m_menu->setObjectName(QStringLiteral("mnuMenu"));
    connect(addMenuAction(QStringLiteral("mnuAdd"), QStringLiteral("&Add...")), &QAction::triggered,
            this, &FrmEditMoods::cmdAdd_Click);
    connect(addMenuAction(QStringLiteral("mnuRemove"), QStringLiteral("&Remove")),
            &QAction::triggered, this, &FrmEditMoods::mnuRemove_Click);
    m_menu->addSeparator();
    connect(addMenuAction(QStringLiteral("mnuMoveUpOne"), QStringLiteral("Move &Up One"),
                          QStringLiteral("Alt+Up")),
            &QAction::triggered, this, &FrmEditMoods::mnuMoveUpOne_Click);
    connect(addMenuAction(QStringLiteral("mnuMoveDownOne"), QStringLiteral("Move &Down One"),
                          QStringLiteral("Alt+Down")),
            &QAction::triggered, this, &FrmEditMoods::mnuMoveDownOne_Click);
    m_menu->addSeparator();
    connect(addMenuAction(QStringLiteral("mnuReset"), QStringLiteral("R&eset Moods...")),
            &QAction::triggered, this, &FrmEditMoods::mnuReset_Click);
    connect(m_view, &ListView::contextMenuAt, this, [this](const QPoint& at) {
        if (m_view->isEnabled()) m_menu->exec(at);
    });

    auto* buttons = new QHBoxLayout;
    const auto button = [&](const char* name, const QString& caption,
                            void (FrmEditMoods::*slot)()) {
        auto* b = new QPushButton(caption, this);
        b->setObjectName(QString::fromLatin1(name));
        b->setAccessibleName(QString(caption).remove(QLatin1Char('&')));
        connect(b, &QPushButton::clicked, this, slot);
        buttons->addWidget(b);
    };
    button("cmdAdd", QStringLiteral("&Add..."), &FrmEditMoods::cmdAdd_Click);
    buttons->addStretch();
    button("cmdSave", QStringLiteral("&Save"), &FrmEditMoods::cmdSave_Click);
    auto* cancel = new QPushButton(QStringLiteral("&Cancel"), this);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    cancel->setAccessibleName(QStringLiteral("Cancel"));
    connect(cancel, &QPushButton::clicked, this, &QWidget::close);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_view);
    layout->addLayout(buttons);
    resize(360, 320);

    m_timer = new QTimer(this);
    m_timer->setInterval(50);
    connect(m_timer, &QTimer::timeout, this, &FrmEditMoods::tmrWindowUpdate_Timer);
    m_timer->start();
}

QAction* FrmEditMoods::addMenuAction(const QString& name, const QString& caption,
                                     const QString& keys) {
    auto* a = new QAction(caption, this);
    a->setObjectName(name);
    if (!keys.isEmpty()) {
        a->setShortcut(QKeySequence(keys));
        a->setShortcutContext(Qt::WindowShortcut);
        addAction(a);
    }
    m_menu->addAction(a);
    return a;
}

QAction* FrmEditMoods::menuAction(const QString& name) const {
    return findChild<QAction*>(name);
}

void FrmEditMoods::window_AddMood(const QString& name, long songCount) {
    m_items->addRow({name, QString::number(songCount)});
}

void FrmEditMoods::form_Load() {
    m_items->clear();
    for (const QString& name : mood_List())
        window_AddMood(name, songsIn(name));
    m_view->resizeColumnToContents(0);
    tmrWindowUpdate_Timer();
}

void FrmEditMoods::mnuMoveUpOne_Click() {
    const int row = listview_SelectedIndex(*m_items);
    if (row > 1) listview_SwapRows(*m_items, row, row - 1, true);
}

void FrmEditMoods::mnuMoveDownOne_Click() {
    const int row = listview_SelectedIndex(*m_items);
    if (row >= 1 && row < m_items->count()) listview_SwapRows(*m_items, row, row + 1, true);
}

void FrmEditMoods::mnuRemove_Click() {
    const int row = listview_SelectedIndex(*m_items);
    if (row < 1) return;
    const QString path = mood_FilePath(m_items->text(row - 1, 0));
    if (!path.isEmpty() && modFiles::file_Exists(path)) {
        if (Dialogs::msgBox(QStringLiteral("The mood that you have selected contains songs that "
                                           "you have added, which means they will be lost.\n\n"
                                           "Are you sure you want to remove this mood?\n"),
                            Dialogs::vbQuestion | Dialogs::vbYesNo,
                            QStringLiteral("Remove Mood Confirmation")) != Dialogs::vbYes)
            return;
        modFiles::file_Delete(path);
    }
    listview_RemoveSelected(*m_items);
}

void FrmEditMoods::mnuReset_Click() {
    media_ResetMoods();
    form_Load();
}

void FrmEditMoods::cmdAdd_Click() {
    FrmAddMood::open(this);
}

void FrmEditMoods::cmdSave_Click() {
    if (m_items->count() == 0) {
        Dialogs::msgBox(QStringLiteral("It has been detected that you have not entered any moods "
                                       "into the list.\n\nThis function will not be proformed.\n"),
                        Dialogs::vbExclamation, QStringLiteral("Saving Moods Error"));
        m_view->setFocus();
        return;
    }
    QStringList names;
    for (int i = 0; i < m_items->count(); ++i)
        names.append(text_ProperCase(m_items->text(i, 0)));
    MoodNames() = names.join(QLatin1Char('|'));
    window_RemoveMoodMenus(m_ctx);
    window_InstallMoods(m_ctx);
    window_UpdateMoods(m_ctx);
    settings_Write(QStringLiteral("Advanced"), QStringLiteral("Moods"), MoodNames());
    close();
}

void FrmEditMoods::tmrWindowUpdate_Timer() {
    const int count = m_items->count();
    const int row = listview_SelectedIndex(*m_items);
    menuAction(QStringLiteral("mnuRemove"))->setEnabled(count > 0);
    menuAction(QStringLiteral("mnuMoveUpOne"))->setEnabled(count > 0 && row > 1);
    menuAction(QStringLiteral("mnuMoveDownOne"))->setEnabled(count > 0 && row >= 1 && row < count);
}
