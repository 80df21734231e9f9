#include "tags/FrmMassTagEditor.h"

#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "tags/FrmMassRenamer.h"
#include "tags/MassTagEdit.h"
#include "tags/ToolWidgets.h"
#include "tags/clsID3v1.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

using namespace ToolWidgets;

void mnuPlaylistEditAllTags_Click(MainContext& ctx) {
    if (tags_MassToolMayOpen(ctx, QStringLiteral("Edit All ID3 Tags Error")))
        FrmMassTagEditor::open(ctx);
}

FrmMassTagEditor* FrmMassTagEditor::open(MainContext& ctx) {
    auto* window = new FrmMassTagEditor(ctx, mainWindow());
    showModal(window);
    return window;
}

FrmMassTagEditor::FrmMassTagEditor(MainContext& ctx, QWidget* parent)
    : FrmMassTool(ctx, parent, QStringLiteral("FrmMassTagEditor"),
                  QStringLiteral("Mass Tag Editor")) {

    txtArtist = edit(this, QStringLiteral("txtArtist"), QStringLiteral("Artist:"));
    txtAlbum = edit(this, QStringLiteral("txtAlbum"), QStringLiteral("Album:"));
    txtYear = edit(this, QStringLiteral("txtYear"), QStringLiteral("Year:"));
    txtComments = edit(this, QStringLiteral("txtComments"), QStringLiteral("Comments:"));
    lstGenre = new QListWidget(this);
    lstGenre->setObjectName(QStringLiteral("lstGenre"));
    lstGenre->setAccessibleName(QStringLiteral("Genre"));
    lstGenre->addItems(clsID3v1::genres());
    lstGenre->setCurrentRow(-1);
    chkEditID3v2 = check(this, QStringLiteral("chkEditID3v2"),
                         QStringLiteral("Edit the ID3v2 Tags as well as ID3v1 (slower)..."));
    chkClearTitle = check(this, QStringLiteral("chkClearTitle"),
                          QStringLiteral("Clear the 'Title' field of each song in the list..."));
    chkCloseWindow = check(this, QStringLiteral("chkCloseWindow"),
                           QStringLiteral("Close window once the tags have been edited..."));
    chkSaveChanges = check(this, QStringLiteral("chkSaveChanges"),
                           QStringLiteral("Save current playlist after changes are made..."));
    for (const char* name :
         {"lblArtist", "lblTitle", "lblAlbum", "lblYear", "lblComments", "lblGenre"})
        hiddenLabel(this, QLatin1String(name));
    cmdEditAll = button(this, QStringLiteral("cmdEditAll"), QStringLiteral("&Edit All »"));

    const auto note = [this](const QString& text) {
        auto* label = new QLabel(text, this);
        label->setWordWrap(true);
        return label;
    };
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Artist:"), txtArtist);
    form->addRow(QStringLiteral("Album:"), txtAlbum);
    form->addRow(QStringLiteral("Year:"), txtYear);
    form->addRow(QStringLiteral("Comments:"), txtComments);
    form->addRow(QStringLiteral("Genre:"), lstGenre);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(note(QStringLiteral(
        "The Title of each song will be left how it was, unless you specify that you want it "
        "cleared.  Fields that have nothing entered in them will result in each file having that "
        "specific field left the way it was.")));
    layout->addLayout(form);
    layout->addWidget(note(QStringLiteral(
        "If the ID3v1 Tag has a Title, it will be copied over to the ID3v2 Tag (unless you have "
        "specified to have the Titles cleared).")));
    for (QWidget* w : {chkEditID3v2, chkClearTitle, chkCloseWindow, chkSaveChanges})
        layout->addWidget(w);
    addRunRows(layout, cmdEditAll);
    resize(520, 560);

    connect(cmdEditAll, &QPushButton::clicked, this, [this] { cmdEditAll_Click(); });
}

bool FrmMassTagEditor::cmdEditAll_Click() {
    if (running()) return false;
    if (lstGenre->currentRow() < 0 || lstGenre->selectedItems().isEmpty()) {
        Dialogs::msgBox(QStringLiteral("It has been detected that you have not selected a Genre."
                                       "\n\nThis function will not be proformed."),
                        Dialogs::vbExclamation, MassTagEdit::title());
        lstGenre->setFocus();
        return false;
    }
    if (Dialogs::msgBox(QStringLiteral("All of the songs in the main window will have there tags "
                                       "updated to the details entered.\n\nDo you wish to "
                                       "continue?"),
                        Dialogs::vbQuestion | Dialogs::vbYesNo,
                        QStringLiteral("Mass Tag Editing Confirmation")) != Dialogs::vbYes)
        return false;
    MassTagEdit::Options options;
    options.artist = txtArtist->text();
    options.album = txtAlbum->text();
    options.year = txtYear->text();
    options.comments = txtComments->text();
    options.genre = lstGenre->currentRow();
    options.editID3v2 = chkEditID3v2->isChecked();
    options.clearTitle = chkClearTitle->isChecked();
    startRun(new MassTagEdit(m_ctx, options, this),
             {txtArtist, txtAlbum, txtYear, txtComments, lstGenre, chkEditID3v2, chkClearTitle,
              chkCloseWindow, chkSaveChanges});
    return true;
}

void FrmMassTagEditor::runEnded() {
    tags_SavePlaylistIfAsked(m_ctx, chkSaveChanges->isChecked());
}
