#include "playlists/FrmRenamePlaylist.h"

#include "core/modFiles.h"
#include "playlists/ManagePlaylists.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

FrmRenamePlaylist* FrmRenamePlaylist::open(MainContext& ctx, const QString& path, int row,
                                           QWidget* owner) {
    auto* w = new FrmRenamePlaylist(ctx, owner);
    w->Get_Filename(path, row);
    w->show();
    w->txtName->setFocus();
    return w;
}

FrmRenamePlaylist::FrmRenamePlaylist(MainContext& ctx, QWidget* owner)
    : ToolDialog(ctx, QStringLiteral("FrmRenamePlaylist"), QStringLiteral("Rename Playlist"),
                 owner) {
    lblDirectory = new QLabel(this);
    lblDirectory->setObjectName(QStringLiteral("lblDirectory"));
    lblFilename = new QLabel(this);
    lblFilename->setObjectName(QStringLiteral("lblFilename"));
    txtName = textBox("txtName", QStringLiteral("New name"));
    txtName->setMaxLength(200);
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Folder:"), lblDirectory);
    form->addRow(QStringLiteral("Playlist:"), lblFilename);
    form->addRow(QStringLiteral("&New name:"), txtName);
    cmdRename = button("cmdRename", QStringLiteral("&Rename"));
    cmdRename->setDefault(true);
    auto* cancel = button("cmdCancel", QStringLiteral("&Cancel"));
    connect(cmdRename, &QPushButton::clicked, this, &FrmRenamePlaylist::cmdRename_Click);
    connect(cancel, &QPushButton::clicked, this, &QWidget::close);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdRename);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);
    resize(420, 150);
}

void FrmRenamePlaylist::Get_Filename(const QString& filename, int position) {
    m_path = filename;
    RenameRow = position;
    lblDirectory->setText(modFiles::file_GetDirectory(filename));
    lblFilename->setText(modFiles::file_GetName(filename));
    txtName->setText(modFiles::file_GetTitle(filename));
}

void FrmRenamePlaylist::cmdRename_Click() {
    const QString name = txtName->text();
    const RenameResult result = playlist_Rename(m_ctx, m_path, name);
    if (result != RenameResult::Renamed) {
        txtName->setFocus(); // the window stays for another name
        return;
    }
    const QString old = modFiles::file_GetTitle(m_path);
    if (RenameRow == -1)
        manage_Refresh(m_ctx, {{old, name}});
    else
        Q_EMIT renamed(RenameRow, old, name);
    close();
}
