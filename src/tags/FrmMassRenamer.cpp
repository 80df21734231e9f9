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
#include <QComboBox>
#include <QFormLayout>
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
    : FrmMassTool(ctx, parent, QStringLiteral("FrmMassRenamer"),
                  QStringLiteral("Mass File Renamer")) {
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
    for (const char* name : {"lblFilename", "lblArtist", "lblAlbum", "lblTitle"})
        hiddenLabel(this, QLatin1String(name));
    cmdRename = button(this, QStringLiteral("cmdRename"), QStringLiteral("&Rename »"));

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Customise Filename:"), cmbFilename);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    for (QWidget* w : {chkUseID3v2, chkAddNumbers, chkSaveChanges, chkCloseWindow})
        layout->addWidget(w);
    addRunRows(layout, cmdRename);
    resize(480, 0);

    connect(cmdRename, &QPushButton::clicked, this, [this] { cmdRename_Click(); });
}

bool FrmMassRenamer::cmdRename_Click() {
    if (running()) return false;
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
    startRun(new MassRename(m_ctx, options, this),
             {cmbFilename, chkUseID3v2, chkAddNumbers, chkSaveChanges, chkCloseWindow});
    return true;
}

void FrmMassRenamer::runEnded() {
    tags_SavePlaylistIfAsked(m_ctx, chkSaveChanges->isChecked());
}
