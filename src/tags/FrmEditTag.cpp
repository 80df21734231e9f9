#include "tags/FrmEditTag.h"

#include "core/App.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/modControls.h"
#include "core/modFiles.h"
#include "playlists/FrmEditEntry.h"
#include "playlists/PlaylistRows.h"
#include "tags/FrmRename.h"
#include "tags/RenameRules.h"
#include "tags/SafeFiles.h"
#include "tags/ToolWidgets.h"
#include "tags/clsID3v1.h"
#include "tags/clsID3v2.h"
#include "tags/modMedia.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTime>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace ToolWidgets;

namespace {

const QString kUpdateTitle = QStringLiteral("Updating Song ID3 Error");

QString boolText(bool b) {
    return b ? QStringLiteral("True") : QStringLiteral("False");
}

} // namespace

const QStringList& FrmEditTag::sectionCaptions() {
    static const QStringList captions{
        QStringLiteral("View ID3v1 »"), QStringLiteral("View ID3v2 »"),
        QStringLiteral("View Lyrics »"), QStringLiteral("View Properties »")};
    return captions;
}

FrmEditTag* FrmEditTag::open(MainContext& ctx, const QString& filename, int rowIndex, int section) {
    auto* window = new FrmEditTag(ctx, mainWindow());
    window->window_ShowSection(section);
    window->window_GetID3Data(filename, rowIndex);
    showModal(window);
    window->window_ShowSection(section); // now visible: its first box takes the focus
    return window;
}

FrmEditTag::FrmEditTag(MainContext& ctx, QWidget* parent)
    : QWidget(parent, Qt::Dialog), m_ctx(ctx) {
    setObjectName(QStringLiteral("FrmEditTag"));
    setWindowTitle(QStringLiteral("Edit ID3 Tag"));
    setAccessibleName(QStringLiteral("Edit ID3 Tag"));
    setAttribute(Qt::WA_DeleteOnClose);

    cmbGenre = new QComboBox(this);
    cmbGenre->setObjectName(QStringLiteral("cmbGenre"));
    cmbGenre->setAccessibleName(QStringLiteral("Genre"));
    cmbGenre->addItems(clsID3v1::genres());
    cmbGenre->setCurrentIndex(-1);

    auto* sections = new QVBoxLayout;
    for (int i = 0; i < 4; ++i) {
        // Links in look, buttons for the keyboard and screen readers.
        lblSection[i] =
            button(this, QStringLiteral("lblSection(%1)").arg(i), sectionCaptions().at(i));
        lblSection[i]->setFlat(true);
        lblSection[i]->setStyleSheet(QStringLiteral("text-align: left"));
        connect(lblSection[i], &QPushButton::clicked, this, [this, i] { window_ShowSection(i); });
        sections->addWidget(lblSection[i]);
    }
    sections->addStretch();
    auto* toV2 =
        button(this, QStringLiteral("cmdCopyID31ToID32"), QStringLiteral("ID3v1 To ID3v2"));
    auto* toV1 =
        button(this, QStringLiteral("cmdCopyID32ToID31"), QStringLiteral("ID3v2 To ID3v1"));
    auto* rename = button(this, QStringLiteral("cmdRename"), QStringLiteral("Rename"));
    sections->addWidget(toV2);
    sections->addWidget(toV1);
    sections->addWidget(rename);

    lblTitle = new QLabel(this);
    lblTitle->setObjectName(QStringLiteral("lblTitle"));
    QFont bold = lblTitle->font();
    bold.setBold(true);
    lblTitle->setFont(bold);

    panels[0] = makeTagPanel(0);
    panels[1] = makeTagPanel(1);
    panels[2] = makeLyricsPanel();
    panels[3] = makePropertiesPanel();
    panels[0]->setObjectName(QStringLiteral("nfpIDv1TAG"));
    panels[1]->setObjectName(QStringLiteral("nfpIDv2TAG"));
    panels[2]->setObjectName(QStringLiteral("nfpLyrics"));
    panels[3]->setObjectName(QStringLiteral("nfpProperties"));

    txtFilename = edit(this, QStringLiteral("txtFilename"), QStringLiteral("Filename:"));
    txtFilename->setReadOnly(true);
    chkSaveChanges = check(this, QStringLiteral("chkSaveChanges"),
                           QStringLiteral("Save current playlist after changes are made..."));
    auto* reload = button(this, QStringLiteral("cmdReload"), QStringLiteral("« &Reload"));
    auto* update = button(this, QStringLiteral("cmdUpdate"), QStringLiteral("&Update »"));
    update->setDefault(true);
    auto* close = button(this, QStringLiteral("cmdClose"), QStringLiteral("&Close"));

    // The genre belongs to both tag panels (it is written to ID3v1 only).
    m_genreRow = new QWidget(this);
    auto* genre = new QFormLayout(m_genreRow);
    genre->setContentsMargins(0, 0, 0, 0);
    genre->addRow(QStringLiteral("Genre:"), cmbGenre);
    auto* right = new QVBoxLayout;
    right->addWidget(lblTitle);
    for (QWidget* p : panels)
        right->addWidget(p);
    right->addWidget(m_genreRow);
    right->addStretch();
    auto* top = new QHBoxLayout;
    top->addLayout(sections);
    top->addLayout(right, 1);
    auto* fileRow = new QFormLayout;
    fileRow->addRow(QStringLiteral("Filename:"), txtFilename);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(chkSaveChanges);
    buttons->addStretch();
    buttons->addWidget(reload);
    buttons->addWidget(update);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(fileRow);
    layout->addLayout(buttons);
    resize(640, 420);

    connect(toV2, &QPushButton::clicked, this, &FrmEditTag::cmdCopyID31ToID32_Click);
    connect(toV1, &QPushButton::clicked, this, &FrmEditTag::cmdCopyID32ToID31_Click);
    connect(rename, &QPushButton::clicked, this, &FrmEditTag::cmdRename_Click);
    connect(reload, &QPushButton::clicked, this, &FrmEditTag::cmdReload_Click);
    connect(update, &QPushButton::clicked, this, [this] { cmdUpdate_Click(); });
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    window_ShowSection(0);
}

QWidget* FrmEditTag::makeTagPanel(int i) {
    auto* panel = new QWidget(this);
    auto* form = new QFormLayout(panel);
    form->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const char* name, const QString& caption) {
        auto* box = edit(panel, QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i), caption);
        form->addRow(caption, box);
        return box;
    };
    if (i == 1) {
        txtTrack = edit(panel, QStringLiteral("txtTrack"), QStringLiteral("Track:"));
        form->addRow(QStringLiteral("Track:"), txtTrack);
    }
    txtArtist[i] = add("txtArtist", QStringLiteral("Artist:"));
    txtTitle[i] = add("txtTitle", QStringLiteral("Title:"));
    txtAlbum[i] = add("txtAlbum", QStringLiteral("Album:"));
    txtYear[i] = add("txtYear", QStringLiteral("Year:"));
    txtComments[i] = add("txtComments", QStringLiteral("Comments:"));
    if (i == 1) {
        txtOrgArtist =
            edit(panel, QStringLiteral("txtOrgArtist"), QStringLiteral("Original Artist:"));
        txtComposer = edit(panel, QStringLiteral("txtComposer"), QStringLiteral("Composer:"));
        txtCopyright = edit(panel, QStringLiteral("txtCopyright"), QStringLiteral("Copyright:"));
        form->addRow(QStringLiteral("Original Artist:"), txtOrgArtist);
        form->addRow(QStringLiteral("Composer:"), txtComposer);
        form->addRow(QStringLiteral("Copyright:"), txtCopyright);
    }
    return panel;
}

QWidget* FrmEditTag::makeLyricsPanel() {
    auto* panel = new QWidget(this);
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(QStringLiteral("Lyrics:"), panel));
    txtLyrics = new QPlainTextEdit(panel);
    txtLyrics->setObjectName(QStringLiteral("txtLyrics"));
    txtLyrics->setAccessibleName(QStringLiteral("Lyrics"));
    layout->addWidget(txtLyrics);
    return panel;
}

QWidget* FrmEditTag::makePropertiesPanel() {
    auto* panel = new QWidget(this);
    auto* form = new QFormLayout(panel);
    form->setContentsMargins(0, 0, 0, 0);
    const auto label = [panel](const char* name, const QString& accessible) {
        auto* l = new QLabel(panel);
        l->setObjectName(QLatin1String(name));
        l->setAccessibleName(accessible);
        l->setTextInteractionFlags(Qt::TextSelectableByMouse);
        return l;
    };
    const auto add = [&](const char* name, const QString& caption) {
        QLabel* l = label(name, accessibleText(caption));
        form->addRow(caption, l);
        return l;
    };
    // The size with its unit, and beside it in bytes.
    lblSizeMB = label("lblSizeMB", QStringLiteral("File Size"));
    lblSize = label("lblSize", QStringLiteral("Size in bytes"));
    auto* sizeRow = new QHBoxLayout;
    sizeRow->addWidget(lblSizeMB);
    sizeRow->addWidget(lblSize, 1);
    form->addRow(QStringLiteral("File Size:"), sizeRow);
    lblLength = add("lblLength", QStringLiteral("Length:"));
    lblFileDateTime = add("lblFileDateTime", QStringLiteral("Date/Time:"));
    lblReadOnly = add("lblReadOnly", QStringLiteral("Read-Only:"));
    lblHidden = add("lblHidden", QStringLiteral("Hidden:"));
    return panel;
}

void FrmEditTag::window_ShowSection(int section) {
    if (section < 0 || section > 3) return;
    m_section = section;
    for (int i = 0; i < 4; ++i) {
        panels[i]->setVisible(i == section);
        QFont f = lblSection[i]->font();
        f.setBold(i == section);
        f.setUnderline(i != section);
        lblSection[i]->setFont(f);
        lblSection[i]->setCursor(i == section ? Qt::ArrowCursor : Qt::PointingHandCursor);
    }
    m_genreRow->setVisible(section < 2);
    const QString caption = sectionCaptions().at(section);
    lblTitle->setText(QStringLiteral("Section selected:  ") + caption.left(caption.size() - 2) +
                      QLatin1Char(':'));
    QWidget* first[] = {txtArtist[0], txtTrack, txtLyrics, nullptr};
    if (first[section] && isVisible()) first[section]->setFocus();
}

void FrmEditTag::window_GetID3Data(const QString& filename, int rowIndex) {
    txtFilename->setText(filename);
    m_rowIndex = rowIndex;
    const QFileInfo info(filename);
    if (!info.exists()) {
        for (int i = 0; i < 2; ++i)
            for (QLineEdit* box :
                 {txtArtist[i], txtTitle[i], txtAlbum[i], txtYear[i], txtComments[i]})
                box->clear();
        for (QLineEdit* box : {txtTrack, txtOrgArtist, txtComposer, txtCopyright})
            box->clear();
        txtLyrics->clear();
        txtArtist[0]->setText(QStringLiteral("[None]"));
        txtTitle[0]->setText(QStringLiteral("[None]"));
        return;
    }
    {
        clsID3v1 v1;
        v1.setFilename(filename);
        txtArtist[0]->setText(v1.Artist());
        txtTitle[0]->setText(v1.Title());
        txtAlbum[0]->setText(v1.Album());
        txtYear[0]->setText(v1.Year());
        txtComments[0]->setText(v1.Comment());
        cmbGenre->setCurrentIndex(int(clsID3v1::genres().indexOf(v1.Genre())));
    }
    {
        clsID3v2 v2;
        v2.setFilename(filename);
        txtArtist[1]->setText(v2.Artist());
        txtTitle[1]->setText(v2.Title());
        txtAlbum[1]->setText(v2.Album());
        txtYear[1]->setText(v2.Year());
        txtComments[1]->setText(v2.Comment());
        txtTrack->setText(v2.Track());
        txtOrgArtist->setText(v2.OriginalArtist());
        txtComposer->setText(v2.Composer());
        txtCopyright->setText(v2.Copyright());
        txtLyrics->setPlainText(v2.Lyrics());
    }
    lblSize->setText(modFiles::file_GetSizeText(filename));
    lblSizeMB->setText(modFiles::file_GetSizeFormatted(filename, true));
    lblFileDateTime->setText(QLocale().toString(info.lastModified(), QLocale::ShortFormat));
    lblReadOnly->setText(boolText(!SafeFiles::isWritable(filename)));
    lblHidden->setText(boolText(info.fileName().startsWith(QLatin1Char('.'))));
    media_ReadMP3Info(filename);
    lblLength->setText(media_LengthText());
    // A file without a tag opens on the first genre, and saving writes byte 0.
    if (cmbGenre->currentIndex() < 0) cmbGenre->setCurrentIndex(0);
}

void FrmEditTag::cmdCopyID31ToID32_Click() {
    for (auto* field : {txtArtist, txtTitle, txtAlbum, txtYear, txtComments})
        field[1]->setText(field[0]->text());
}

void FrmEditTag::cmdCopyID32ToID31_Click() {
    for (auto* field : {txtArtist, txtTitle, txtAlbum, txtYear, txtComments})
        field[0]->setText(field[1]->text());
}

void FrmEditTag::cmdReload_Click() {
    window_GetID3Data(txtFilename->text(), m_rowIndex);
}

void FrmEditTag::cmdRename_Click() {
    FrmRename* rename = FrmRename::open(m_ctx, txtFilename->text(), m_rowIndex);
    // The tags stay where they were typed; only the name under edit follows.
    connect(rename, &FrmRename::renamed, this,
            [this](const QString&, const QString& newPath) { txtFilename->setText(newPath); });
}

bool FrmEditTag::fail(const QString& text, QWidget* focus) {
    Dialogs::msgBox(text + QStringLiteral("\n\nThis function will not be proformed."),
                    Dialogs::vbExclamation, kUpdateTitle);
    if (focus) focus->setFocus();
    return false;
}

bool FrmEditTag::cmdUpdate_Click() {
    const QString file = txtFilename->text();
    if (txtArtist[0]->text().isEmpty())
        return fail(
            QStringLiteral("It has been detected that you have not entered an Artist name."),
            txtArtist[0]);
    if (txtTitle[0]->text().isEmpty())
        return fail(QStringLiteral("It has been detected that you have not entered a Title."),
                    txtTitle[0]);
    if (cmbGenre->currentIndex() < 0)
        return fail(QStringLiteral("It has been detected that you have not selected a Genre."),
                    cmbGenre);
    if (tags_IsLoaded(m_ctx, file))
        return fail(QStringLiteral("It has been detected that the song you are trying to edit is "
                                   "being used by %1.")
                        .arg(App::Title()));
    if (!SafeFiles::isWritable(file))
        return fail(QStringLiteral("It has been detected that the song you are trying to edit is "
                                   "Read-Only."));
    const QString writeError = QStringLiteral("An error has occur while trying to write the ID3 "
                                              "Tag.  Make sure that the file is not in use or "
                                              "read-only.");
    ID3v1Record record;
    record.Title = txtTitle[0]->text();
    record.Artist = txtArtist[0]->text();
    record.Album = txtAlbum[0]->text();
    record.Year = txtYear[0]->text();
    record.Comment = txtComments[0]->text();
    record.Genre = uint8_t(cmbGenre->currentIndex());
    if (!QFileInfo(file).isFile() || !media_WriteID3v1Record(file, record)) return fail(writeError);
    clsID3v2 v2;
    v2.setFilename(file);
    v2.setArtist(txtArtist[1]->text());
    v2.setTitle(txtTitle[1]->text());
    v2.setAlbum(txtAlbum[1]->text());
    v2.setYear(txtYear[1]->text());
    v2.setComment(txtComments[1]->text());
    v2.setTrack(txtTrack->text());
    v2.setOriginalArtist(txtOrgArtist->text());
    v2.setComposer(txtComposer->text());
    v2.setCopyright(txtCopyright->text());
    v2.setLyrics(txtLyrics->toPlainText());
    if (!v2.Save()) return fail(writeError);
    ListModel& rows = m_ctx.lstvPlaylist();
    // The row may have moved while the window was open; the one holding the file is updated.
    int row = m_rowIndex;
    if (row < 1 || row > rows.count() || rows.text(row - 1, PlaylistColumn::Filename) != file) {
        row = 0;
        for (int i = 0; i < rows.count() && row == 0; ++i)
            if (rows.text(i, PlaylistColumn::Filename) == file) row = i + 1;
    }
    if (row > 0) playlist_UpdateItem(m_ctx, row, false);
    tags_SavePlaylistIfAsked(m_ctx, chkSaveChanges->isChecked());
    window_WriteLog(file + QStringLiteral(" ID3 tag modified."));
    return true;
}

void mnuProperties_Click(MainContext& ctx) {
    ListModel& rows = ctx.lstvPlaylist();
    const int row = tags_SelectedFileRow(ctx, QStringLiteral("Edit ID3 Tag Error"));
    if (row < 0) return;
    const QString file = rows.text(row, PlaylistColumn::Filename);
    if (tags_IsTagged(file)) {
        const bool v2 = ctx.commands().isChecked(QStringLiteral("mnuTagsUseID3v2Tags"));
        FrmEditTag::open(ctx, file, row + 1, v2 ? 1 : 0);
        return;
    }
    FrmEditEntry::open(ctx, row + 1);
}
