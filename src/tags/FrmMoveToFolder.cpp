#include "tags/FrmMoveToFolder.h"

#include "core/Commands.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/modControls.h"
#include "playlists/DirectoryAdd.h"
#include "playlists/PlaylistRows.h"
#include "tags/FrmMassRenamer.h"
#include "tags/MoveToFolder.h"
#include "tags/ToolWidgets.h"
#include "ui/ListView.h"

#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>
#include <QVBoxLayout>

using namespace ToolWidgets;

void mnuPlaylistMoveMusicToFolder_Click(MainContext& ctx) {
    if (tags_MassToolMayOpen(ctx, MoveToFolder::title())) FrmMoveToFolder::open(ctx);
}

FrmMoveToFolder* FrmMoveToFolder::open(MainContext& ctx) {
    auto* window = new FrmMoveToFolder(ctx, mainWindow());
    showModal(window);
    return window;
}

FrmMoveToFolder::FrmMoveToFolder(MainContext& ctx, QWidget* parent)
    : FrmMassTool(ctx, parent, QStringLiteral("FrmMoveToFolder"),
                  QStringLiteral("Move Music To Folder")),
      m_items(new ListModel(
          {QStringLiteral("Number:"), QStringLiteral("Artist"), QStringLiteral("Title:")}, this)) {
    m_items->setObjectName(QStringLiteral("lstvItems"));

    const QString captions[3] = {QStringLiteral("Search by Artist..."),
                                 QStringLiteral("Search by Album..."),
                                 QStringLiteral("Search by Year...")};
    auto* options = new QHBoxLayout;
    for (int i = 0; i < 3; ++i) {
        opOptions[i] = new QRadioButton(captions[i], this);
        opOptions[i]->setObjectName(QStringLiteral("opOptions(%1)").arg(i));
        opOptions[i]->setAccessibleName(accessibleText(captions[i]));
        connect(opOptions[i], &QRadioButton::clicked, this, [this, i] { opOptions_Click(i); });
        options->addWidget(opOptions[i]);
    }
    txtSearch = edit(this, QStringLiteral("txtSearch"),
                     QStringLiteral("Move music matching this criteria:"));
    txtDestination =
        edit(this, QStringLiteral("txtDestination"), QStringLiteral("Specify destination folder:"));
    cmbBrowse = button(this, QStringLiteral("cmbBrowse"), QStringLiteral("&Browse..."));
    chkSearchID3v2 = check(this, QStringLiteral("chkSearchID3v2"),
                           QStringLiteral("Search ID3v2 Tags over the ID3v1 Tags (slower)..."));
    chkCopyFiles = check(this, QStringLiteral("chkCopyFiles"),
                         QStringLiteral("Only copy the files, do not move them..."));
    chkShowFiles = check(this, QStringLiteral("chkShowFiles"),
                         QStringLiteral("Show moved files on the main window once completed..."));
    chkCloseWindow =
        check(this, QStringLiteral("chkCloseWindow"),
              QStringLiteral("Close this window once the files have been moved/copied..."));
    cmdMove = button(this, QStringLiteral("cmdMove"), QStringLiteral("&Move »"));
    for (const char* name : {"lblTitle", "lblYear", "lblAlbum", "lblArtist", "lblFilename"})
        hiddenLabel(this, QLatin1String(name));
    auto* view = new ListView(m_items, this);
    view->setObjectName(QStringLiteral("lstvItems"));
    view->setAccessibleName(QStringLiteral("Music moved"));
    lblMusicMoved = new QLabel(QStringLiteral("Music Moved To Folder:  None"), this);
    lblMusicMoved->setObjectName(QStringLiteral("lblMusicMoved"));

    auto* form = new QFormLayout;
    form->addRow(options);
    form->addRow(QStringLiteral("Move music matching this criteria:"), txtSearch);
    auto* dest = new QHBoxLayout;
    dest->addWidget(txtDestination, 1);
    dest->addWidget(cmbBrowse);
    form->addRow(QStringLiteral("Specify destination folder:"), dest);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    for (QWidget* w : {chkSearchID3v2, chkCopyFiles, chkShowFiles, chkCloseWindow})
        layout->addWidget(w);
    layout->addWidget(lblMusicMoved);
    layout->addWidget(view, 1);
    addRunRows(layout, cmdMove);
    resize(560, 520);

    connect(cmbBrowse, &QPushButton::clicked, this, &FrmMoveToFolder::cmbBrowse_Click);
    connect(cmdMove, &QPushButton::clicked, this, [this] { cmdMove_Click(); });
    opOptions[0]->setChecked(true);
    SearchOption = 0;
}

FrmMoveToFolder::~FrmMoveToFolder() = default;

void FrmMoveToFolder::opOptions_Click(int index) {
    SearchOption = index;
    opOptions[index]->setChecked(true);
}

void FrmMoveToFolder::cmbBrowse_Click() {
    QString start = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    if (start.isEmpty() || !QFileInfo(start).isDir()) start = QDir::homePath();
    const QString folder =
        Dialogs::browseFolder(QStringLiteral("Specify destination folder:"), start);
    if (!folder.isEmpty()) txtDestination->setText(folder);
}

bool FrmMoveToFolder::cmdMove_Click() {
    if (running()) return false;
    const QString title = MoveToFolder::title();
    if (txtDestination->text().isEmpty()) {
        Dialogs::msgBox(QStringLiteral("It has been detected that you have not entered/selected "
                                       "a destination folder.\n\nPlease enter/select a folder "
                                       "destination folder before continuing."),
                        Dialogs::vbExclamation, title);
        txtDestination->setFocus();
        return false;
    }
    if (txtSearch->text().isEmpty()) {
        Dialogs::msgBox(QStringLiteral("It has been detected that you have not entered a search "
                                       "criteria.\n\nPlease enter a search criteria before "
                                       "continuing."),
                        Dialogs::vbExclamation, title);
        txtSearch->setFocus();
        return false;
    }
    m_destination = QDir::cleanPath(txtDestination->text());
    if (!QFileInfo(m_destination).isDir()) {
        if (Dialogs::msgBox(QStringLiteral("The destination folder that you have specified does "
                                           "not exist.\n\nDo you want to create it?"),
                            Dialogs::vbQuestion | Dialogs::vbYesNo,
                            QStringLiteral("Create Destination Folder Confirmation")) !=
            Dialogs::vbYes)
            return false;
        if (!QDir().mkpath(m_destination)) {
            Dialogs::msgBox(QStringLiteral("The destination folder could not be created:\n\n%1"
                                           "\n\nThis function will not be proformed.")
                                .arg(m_destination),
                            Dialogs::vbExclamation, title);
            return false;
        }
    }
    MoveToFolder::Options options;
    options.searchOption = SearchOption;
    options.search = txtSearch->text();
    options.destination = m_destination;
    options.searchID3v2 = chkSearchID3v2->isChecked();
    options.copyFiles = chkCopyFiles->isChecked();
    listview_Clear(*m_items);
    startRun(new MoveToFolder(m_ctx, options, *m_items, this),
             {opOptions[0], opOptions[1], opOptions[2], txtSearch, txtDestination, cmbBrowse,
              chkSearchID3v2, chkCopyFiles, chkShowFiles, chkCloseWindow});
    return true;
}

void FrmMoveToFolder::runEnded() {
    lblMusicMoved->setText(QStringLiteral("Music Moved To Folder:  ") +
                           QStringLiteral("%1").arg(m_items->count(), 2, 10, QLatin1Char('0')));
    listview_Renumber(*m_items);
    if (chkShowFiles->isChecked()) {
        m_ctx.commands().run(QStringLiteral("mnuNew"));
        playlist_AddDirectory(m_ctx, m_destination, QStringLiteral("mp3"));
        playlist_ShowMP3Data(m_ctx, false);
        listview_Renumber(m_ctx.lstvPlaylist());
    }
}
