#include "tags/FrmRename.h"

#include "core/App.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/modControls.h"
#include "core/modFiles.h"
#include "playlists/PlaylistRows.h"
#include "tags/RenameRules.h"
#include "tags/SafeFiles.h"
#include "tags/ToolWidgets.h"
#include "tags/clsID3v1.h"
#include "tags/clsID3v2.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace ToolWidgets;

namespace {

const QString kRefusal = QStringLiteral("\n\nThis function will not be proformed.");

void refuse(const QString& text) {
    Dialogs::msgBox(text + kRefusal, Dialogs::vbExclamation,
                    QStringLiteral("Renaming Song Filename Error"));
}

} // namespace

FrmRename* FrmRename::open(MainContext& ctx, const QString& filename, int position) {
    QWidget* owner = QApplication::activeModalWidget();
    if (!owner) owner = mainWindow();
    auto* window = new FrmRename(ctx, owner);
    window->Get_Filename(filename, position);
    showModal(window);
    window->txtNewFilename->setFocus();
    return window;
}

FrmRename::FrmRename(MainContext& ctx, QWidget* parent) : QWidget(parent, Qt::Dialog), m_ctx(ctx) {
    setObjectName(QStringLiteral("FrmRename"));
    setWindowTitle(QStringLiteral("Rename Filename"));
    setAccessibleName(QStringLiteral("Rename Filename"));
    setAttribute(Qt::WA_DeleteOnClose);

    txtDirectory = edit(this, QStringLiteral("txtDirectory"), QStringLiteral("Directory:"));
    txtDirectory->setReadOnly(true);
    txtFilename = edit(this, QStringLiteral("txtFilename"), QStringLiteral("Filename:"));
    txtFilename->setReadOnly(true);
    txtNewFilename = edit(this, QStringLiteral("txtNewFilename"), QStringLiteral("New Filename:"));
    cmbFilename = new QComboBox(this);
    cmbFilename->setObjectName(QStringLiteral("cmbFilename"));
    cmbFilename->setAccessibleName(QStringLiteral("Customise Filename"));
    cmbFilename->addItems(rename_Patterns());
    cmdUseID3 = button(this, QStringLiteral("cmdUseID3"), QStringLiteral("Use ID3 Information"));
    chkUseID3v2 = check(this, QStringLiteral("chkUseID3v2"),
                        QStringLiteral("Use ID3v2 Tag over the ID3v1 Tag..."));
    chkMaintain = check(this, QStringLiteral("chkMaintain"),
                        QStringLiteral("Keep the playlist position in the filename..."));
    chkSaveChanges = check(this, QStringLiteral("chkSaveChanges"),
                           QStringLiteral("Save current playlist after changes are made..."));
    lblArtist = hiddenLabel(this, QStringLiteral("lblArtist"));
    lblTitle = hiddenLabel(this, QStringLiteral("lblTitle"));
    lblAlbum = hiddenLabel(this, QStringLiteral("lblAlbum"));
    auto* back = button(this, QStringLiteral("cmdBack"), QStringLiteral("« &Back"));
    cmdUpdate = button(this, QStringLiteral("cmdUpdate"), QStringLiteral("&Update »"));
    cmdUpdate->setDefault(true);
    auto* close = button(this, QStringLiteral("cmdClose"), QStringLiteral("&Close"));

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Directory:"), txtDirectory);
    form->addRow(QStringLiteral("Filename:"), txtFilename);
    form->addRow(QStringLiteral("New Filename:"), txtNewFilename);
    auto* pattern = new QHBoxLayout;
    pattern->addWidget(cmbFilename, 1);
    pattern->addWidget(cmdUseID3);
    form->addRow(QStringLiteral("Customise Filename:"), pattern);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(back);
    buttons->addStretch();
    buttons->addWidget(cmdUpdate);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(chkUseID3v2);
    layout->addWidget(chkMaintain);
    layout->addWidget(chkSaveChanges);
    layout->addLayout(buttons);
    resize(520, 0);

    connect(cmdUseID3, &QPushButton::clicked, this, &FrmRename::cmdUseID3_Click);
    connect(cmdUpdate, &QPushButton::clicked, this, [this] { cmdUpdate_Click(); });
    connect(back, &QPushButton::clicked, this, &QWidget::close);
    connect(close, &QPushButton::clicked, this, &QWidget::close);
}

void FrmRename::Get_Filename(const QString& filename, int position) {
    m_position = position;
    QString dir = modFiles::file_GetDirectory(filename);
    if (!dir.endsWith(QLatin1Char('/'))) dir += QLatin1Char('/');
    txtDirectory->setText(dir);
    const QString name = QFileInfo(filename).fileName();
    txtFilename->setText(name);
    txtNewFilename->setText(name);
    const bool tagged = tags_IsTagged(filename);
    for (QWidget* w : {static_cast<QWidget*>(cmdUseID3), static_cast<QWidget*>(cmbFilename),
                       static_cast<QWidget*>(chkUseID3v2), static_cast<QWidget*>(chkMaintain)})
        w->setEnabled(tagged);
    cmbFilename->setCurrentIndex(0);
}

void FrmRename::cmdUseID3_Click() {
    const QString path = txtDirectory->text() + txtFilename->text();
    if (!QFileInfo::exists(path)) {
        Dialogs::msgBox(QStringLiteral("It has been detected that the filename you are trying to "
                                       "get the ID3 information from does not exist.") +
                            kRefusal,
                        Dialogs::vbExclamation, QStringLiteral("Getting ID3 Information Error"));
        return;
    }
    if (chkUseID3v2->isChecked()) {
        clsID3v2 tag;
        tag.setFilename(path);
        lblArtist->setText(tag.Artist());
        lblTitle->setText(tag.Title());
        lblAlbum->setText(tag.Album());
    } else {
        clsID3v1 tag;
        tag.setFilename(path);
        lblArtist->setText(tag.Artist());
        lblTitle->setText(tag.Title());
        lblAlbum->setText(tag.Album());
    }
    const QString name = rename_BuildName(
        cmbFilename->currentIndex(), lblArtist->text(), lblTitle->text(), lblAlbum->text(),
        chkMaintain->isChecked() ? m_position : -1, modFiles::file_GetExtension(path));
    txtNewFilename->setText(rename_CleanName(name));
}

bool FrmRename::cmdUpdate_Click() {
    const QString newName = txtNewFilename->text();
    const QString oldPath = txtDirectory->text() + txtFilename->text();
    if (newName.isEmpty()) {
        refuse(QStringLiteral("It has been detected that you have not entered a new filename."));
        return false;
    }
    if (!QFileInfo::exists(oldPath)) {
        refuse(QStringLiteral("It has been detected that the filename you are trying to rename "
                              "does not exist."));
        return false;
    }
    if (tags_IsLoaded(m_ctx, oldPath)) {
        refuse(QStringLiteral("It has been detected that the song you are trying to rename is "
                              "being used by %1.")
                   .arg(App::Title()));
        return false;
    }
    // "." and ".." would leave the folder as surely as a slash.
    if (rename_HasForbidden(newName) || newName == QLatin1String(".") ||
        newName == QLatin1String("..") || newName.contains(QChar(0))) {
        refuse(QStringLiteral("It has been detected that you have entered a character that is not "
                              "supported.\n\nYou cannot use any of the following characters:\n\n"
                              "\\ / : * ? \" < > |"));
        return false;
    }
    if (!SafeFiles::isWritable(oldPath) &&
        Dialogs::msgBox(QStringLiteral("It has been detected that the song you are trying to "
                                       "rename is Read-Only.\n\nDo you wish to continue?"),
                        Dialogs::vbQuestion | Dialogs::vbYesNo,
                        QStringLiteral("Renaming Song Filename Confirmation")) != Dialogs::vbYes)
        return false;
    const QString newPath = txtDirectory->text() + newName;
    if (!rename_IsUsableName(newName) || !SafeFiles::renameNoReplace(oldPath, newPath).ok) {
        refuse(QStringLiteral("An error has occur while trying to rename the songs filename.  "
                              "Make sure that the file is not in use."));
        return false;
    }
    rename_Carry(m_ctx, oldPath, newPath);
    window_WriteLog(QStringLiteral("Filename %1 was renamed to %2.").arg(oldPath, newPath));
    tags_SavePlaylistIfAsked(m_ctx, chkSaveChanges->isChecked());
    Q_EMIT renamed(oldPath, newPath);
    close();
    return true;
}

void mnuSelectedRenameFilename_Click(MainContext& ctx) {
    ListModel& rows = ctx.lstvPlaylist();
    const int row = tags_SelectedFileRow(ctx, QStringLiteral("Rename Filename Error"));
    if (row < 0) return;
    const QString file = rows.text(row, PlaylistColumn::Filename);
    FrmRename::open(ctx, file, row + 1);
}
