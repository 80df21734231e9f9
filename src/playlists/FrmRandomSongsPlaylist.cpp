#include "playlists/FrmRandomSongsPlaylist.h"

#include "core/App.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/modFiles.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/PlaylistGenerators.h"

#include <QComboBox>
#include <QDir>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {
// A refusal: the reason, the closing line, and the focus back on the box named.
void refuse(const QString& reason, QLineEdit* box) {
    Dialogs::msgBox(reason + QStringLiteral("\n\nThis function will not be proformed.\n"),
                    Dialogs::vbExclamation, QStringLiteral("Creating Random Songs Playlist"));
    box->setFocus();
}
} // namespace

FrmRandomSongsPlaylist* FrmRandomSongsPlaylist::open(MainContext& ctx) {
    auto* w = new FrmRandomSongsPlaylist(ctx);
    w->show();
    w->txtPlaylistName->setFocus();
    return w;
}

FrmRandomSongsPlaylist::FrmRandomSongsPlaylist(MainContext& ctx)
    : ToolDialog(ctx, QStringLiteral("FrmRandomSongsPlaylist"),
                 QStringLiteral("Create Random Songs Playlist")) {
    txtPlaylistName = textBox("txtPlaylistName", QStringLiteral("New playlist name"));
    txtSongCount = textBox("txtSongCount", QStringLiteral("How many songs"));
    txtSongCount->setText(QStringLiteral("20"));
    cmbOptions = new QComboBox(this);
    cmbOptions->setObjectName(QStringLiteral("cmbOptions"));
    cmbOptions->setAccessibleName(QStringLiteral("Search option for how songs are picked"));
    cmbOptions->addItems({QStringLiteral("Use All The Songs Available"),
                          QStringLiteral("Don't Use Songs Set To Skip")});
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Enter the new playlist name:"), txtPlaylistName);
    form->addRow(QStringLiteral("How many songs:"), txtSongCount);
    form->addRow(QStringLiteral("Search option for how songs are picked:"), cmbOptions);
    const QString captions[2] = {
        QStringLiteral("Reset the window after creating the new playlist..."),
        QStringLiteral("Close this window after creating the new playlist...")};
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    for (int i = 0; i < 2; ++i) {
        opOptions[i] = new QRadioButton(captions[i], this);
        opOptions[i]->setObjectName(QStringLiteral("opOptions(%1)").arg(i));
        opOptions[i]->setAccessibleName(captions[i].chopped(3));
        layout->addWidget(opOptions[i]);
    }
    opOptions[0]->setChecked(true);
    cmdCreate = button("cmdCreate", QStringLiteral("C&reate"));
    cmdCreate->setDefault(true);
    cmdClose = button("cmdClose", QStringLiteral("&Close"));
    connect(cmdCreate, &QPushButton::clicked, this, &FrmRandomSongsPlaylist::cmdCreate_Click);
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdCreate);
    buttons->addWidget(cmdClose);
    layout->addLayout(buttons);
    resize(480, 220);
}

void FrmRandomSongsPlaylist::setInputsEnabled(bool on) {
    for (QWidget* w :
         std::initializer_list<QWidget*>{opOptions[0], opOptions[1], txtPlaylistName, txtSongCount,
                                         cmbOptions, cmdCreate, cmdClose})
        w->setEnabled(on);
}

void FrmRandomSongsPlaylist::cmdCreate_Click() {
    const QString name = txtPlaylistName->text();
    const QString countText = txtSongCount->text().trimmed();
    if (name.isEmpty())
        return refuse(QStringLiteral("It has been detected that you have not entered a playlist "
                                     "name."),
                      txtPlaylistName);
    if (txtSongCount->text().isEmpty())
        return refuse(QStringLiteral("It has been detected that you have not entered a number of "
                                     "songs to include in the playlist."),
                      txtSongCount);
    bool numeric = false;
    const qlonglong count = countText.toLongLong(&numeric);
    // A count below nothing could never be reached by the draw.
    if (!numeric || count < 0)
        return refuse(QStringLiteral("It has been detected that the song count you have entered "
                                     "is invalid."),
                      txtSongCount);
    const QString path = playlist_PathOf(name);
    if (modFiles::file_Exists(path))
        return refuse(QStringLiteral("It has been detected that the playlist name you have "
                                     "entered already exists."),
                      txtPlaylistName);
    const ListModel& playlist = m_ctx.lstvPlaylist();
    const bool noSkipped = cmbOptions->currentIndex() == 1;
    int eligible = playlist.count();
    if (noSkipped)
        for (int r = 0; r < playlist.count(); ++r)
            if (playlist.text(r, 4) == QLatin1String("Skip")) --eligible;
    // Rows set to skip cannot fill the count either: the draw would never end.
    if (count > eligible)
        return refuse(QStringLiteral("The song count you have entered is higher than the number "
                                     "of songs in the active playlist."),
                      txtSongCount);

    setInputsEnabled(false);
    if (count > 0) {
        const auto rows = random_DrawRows(playlist, int(count), noSkipped);
        QDir().mkpath(App::file(QStringLiteral("Playlists")));
        if (!generate_IsFileName(name) || !generate_WriteList(path, rows)) {
            setInputsEnabled(true);
            return refuse(QStringLiteral("An error occured while trying to create the new random "
                                         "songs playlist."),
                          txtPlaylistName);
        }
    }
    mnuUpdate_Click(m_ctx);
    setInputsEnabled(true);
    if (opOptions[1]->isChecked()) {
        close();
        return;
    }
    txtPlaylistName->clear();
    cmbOptions->setCurrentIndex(0);
    txtSongCount->setText(QStringLiteral("20"));
    txtPlaylistName->setFocus();
}
