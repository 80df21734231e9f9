#include "tags/FrmMassRenamer.h"

#include "core/App.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/wmpPlayer.h"
#include "tags/MassRename.h"
#include "tags/RenameRules.h"
#include "tags/ToolWidgets.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

using namespace ToolWidgets;

bool tags_MassToolMayOpen(MainContext& ctx, const QString& title) {
    const int state = ctx.player().PlayState();
    if (state != wmpPlayer::Playing && state != wmpPlayer::Paused) return true;
    Dialogs::msgBox(QStringLiteral("You cannot use this option while %1 is playing music.\n\nThis "
                                   "function will not continue.")
                        .arg(App::Title()),
                    Dialogs::vbExclamation, title);
    return false;
}

void mnuPlaylistRenameAllFilenames_Click(MainContext& ctx) {
    if (tags_MassToolMayOpen(ctx, QStringLiteral("Rename All Filenames Error")))
        FrmMassRenamer::open(ctx);
}

FrmMassRenamer* FrmMassRenamer::open(MainContext& ctx) {
    auto* window = new FrmMassRenamer(ctx, mainWindow());
    showModal(window);
    return window;
}

FrmMassRenamer::FrmMassRenamer(MainContext& ctx, QWidget* parent)
    : QWidget(parent, Qt::Dialog), m_ctx(ctx) {
    setObjectName(QStringLiteral("FrmMassRenamer"));
    setWindowTitle(QStringLiteral("Mass File Renamer"));
    setAccessibleName(QStringLiteral("Mass File Renamer"));
    setAttribute(Qt::WA_DeleteOnClose);

    cmbFilename = new QComboBox(this);
    cmbFilename->setObjectName(QStringLiteral("cmbFilename"));
    cmbFilename->setAccessibleName(QStringLiteral("Customise Filename"));
    cmbFilename->addItems(rename_Patterns());
    chkUseID3v2 = check(this, QStringLiteral("chkUseID3v2"),
                        QStringLiteral("Use ID3v2 Tag over the ID3v1 Tag..."));
    chkAddNumbers = check(this, QStringLiteral("chkAddNumbers"),
                          QStringLiteral("Include playlist position numbers in the filenames..."));
    chkSaveChanges = check(this, QStringLiteral("chkSaveChanges"),
                           QStringLiteral("Save current playlist after changes are made..."));
    chkCloseWindow = check(this, QStringLiteral("chkCloseWindow"),
                           QStringLiteral("Close window once the filenames have been renamed..."));
    pbBar = progressBar(this);
    for (const char* name : {"lblFilename", "lblArtist", "lblAlbum", "lblTitle"})
        hiddenLabel(this, QLatin1String(name));
    cmdBack = button(this, QStringLiteral("cmdBack"), QStringLiteral("« &Back"));
    cmdRename = button(this, QStringLiteral("cmdRename"), QStringLiteral("&Rename »"));
    cmdRename->setDefault(true);
    cmdClose = button(this, QStringLiteral("cmdClose"), QStringLiteral("&Close"));
    cmdCancel = button(this, QStringLiteral("cmdCancel"), QStringLiteral("C&ancel"));
    cmdCancel->hide();

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Customise Filename:"), cmbFilename);
    auto* progress = new QHBoxLayout;
    progress->addWidget(pbBar, 1);
    progress->addWidget(cmdCancel);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdBack);
    buttons->addStretch();
    buttons->addWidget(cmdRename);
    buttons->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    for (QWidget* w : {chkUseID3v2, chkAddNumbers, chkSaveChanges, chkCloseWindow})
        layout->addWidget(w);
    layout->addLayout(progress);
    layout->addLayout(buttons);
    resize(480, 0);

    connect(cmdRename, &QPushButton::clicked, this, [this] { cmdRename_Click(); });
    connect(cmdBack, &QPushButton::clicked, this, &QWidget::close);
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    connect(cmdCancel, &QPushButton::clicked, this, [this] {
        if (m_run) m_run->cancel();
    });
}

void FrmMassRenamer::setRunning(bool running) {
    for (QWidget* w :
         std::initializer_list<QWidget*>{cmdRename, cmdClose, cmdBack, cmbFilename, chkUseID3v2,
                                         chkAddNumbers, chkSaveChanges, chkCloseWindow})
        w->setEnabled(!running);
    pbBar->setVisible(running);
    cmdCancel->setVisible(running);
}

bool FrmMassRenamer::cmdRename_Click() {
    if (m_run) return false;
    if (m_ctx.lstvPlaylist().count() == 0) {
        Dialogs::msgBox(QStringLiteral("There are no items in the playlist to rename.\n\nPlease "
                                       "add some music files before continuing."),
                        Dialogs::vbExclamation, MassRename::title());
        return false;
    }
    MassRename::Options options;
    options.pattern = cmbFilename->currentIndex();
    options.useID3v2 = chkUseID3v2->isChecked();
    options.addNumbers = chkAddNumbers->isChecked();
    m_run = new MassRename(m_ctx, options, this);
    setRunning(true);
    pbBar->setMaximum(m_ctx.lstvPlaylist().count());
    pbBar->setValue(0);
    connect(m_run, &TagBatch::progress, pbBar, &QProgressBar::setValue);
    connect(m_run, &TagBatch::finished, this, &FrmMassRenamer::finished);
    m_run->start();
    return true;
}

void FrmMassRenamer::finished() {
    m_run->deleteLater();
    m_run = nullptr;
    setRunning(false);
    tags_SavePlaylistIfAsked(m_ctx, chkSaveChanges->isChecked());
    Q_EMIT runFinished();
    if (chkCloseWindow->isChecked() || m_closeAfterRun) close();
}

void FrmMassRenamer::closeEvent(QCloseEvent* event) {
    // Closing while a run goes on stops it after the file in hand; the window waits for that.
    if (m_run) {
        m_run->cancel();
        m_closeAfterRun = true;
        event->ignore();
        return;
    }
    QWidget::closeEvent(event);
}
