#include "playlists/FrmJump.h"

#include "core/Commands.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/modControls.h"
#include "tags/clsID3v1.h"
#include "ui/ListView.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {
const QString kSection = QStringLiteral("JumpToMedia");
const QStringList kSearchBy = {QStringLiteral("SearchByAll"),     QStringLiteral("SearchByArtist"),
                               QStringLiteral("SearchByTitle"),   QStringLiteral("SearchByAlbum"),
                               QStringLiteral("SearchByYear"),    QStringLiteral("SearchByGenre"),
                               QStringLiteral("SearchByFilename")};
const QStringList kModes = {QStringLiteral("ModeWholeWord"), QStringLiteral("ModeStartsWith"),
                            QStringLiteral("ModeEndsWith"), QStringLiteral("ModeContains")};
const QStringList kFurther = {
    QStringLiteral("OptionSelectSong"), QStringLiteral("OptionSelectSongAndPlayIt"),
    QStringLiteral("OptionSelectSongAndSetItToNext"), QStringLiteral("OptionDoNothing")};
const QString kSearchTitle = QStringLiteral("Search For Song Error");

QList<QAbstractButton*> group(QRadioButton* const* options, int n) {
    QList<QAbstractButton*> out;
    for (int i = 0; i < n; ++i)
        out << options[i];
    return out;
}
} // namespace

FrmJump* FrmJump::open(MainContext& ctx) {
    auto* w = new FrmJump(ctx);
    w->show();
    w->cmbSearch->setFocus();
    w->readFields();
    return w;
}

FrmJump::~FrmJump() {
    if (m_waiting) QApplication::restoreOverrideCursor();
}

FrmJump::FrmJump(MainContext& ctx)
    : ToolDialog(ctx, QStringLiteral("FrmJump"), QStringLiteral("Jump To Media")) {
    cmbSearch = new QComboBox(this);
    cmbSearch->setObjectName(QStringLiteral("cmbSearch"));
    cmbSearch->setAccessibleName(QStringLiteral("Search criteria"));
    cmbSearch->setEditable(true);
    cmbSearch->setInsertPolicy(QComboBox::NoInsert);
    cmbSearch->addItems(clsID3v1::genres());
    cmbSearch->setCurrentIndex(-1);
    cmbSearch->setEditText(QString());
    cmbOp = new QComboBox(this);
    cmbOp->setObjectName(QStringLiteral("cmbOp"));
    cmbOp->setAccessibleName(QStringLiteral("Operator"));
    cmbOp->addItems({QStringLiteral("="), QStringLiteral("<>")});
    cmdFind = button("cmdFind", QStringLiteral("&Find"));
    cmdFind->setDefault(true);
    auto* top = new QHBoxLayout;
    auto* label = new QLabel(QStringLiteral("&Search for:"), this);
    label->setBuddy(cmbSearch);
    top->addWidget(label);
    top->addWidget(cmbOp);
    top->addWidget(cmbSearch, 1);
    top->addWidget(cmdFind);

    const auto options = [this](QRadioButton** out, const char* name, const QStringList& captions,
                                const QString& title) {
        auto* box = new QGroupBox(title, this);
        auto* l = new QVBoxLayout(box);
        for (int i = 0; i < captions.size(); ++i) {
            out[i] = new QRadioButton(captions[i], box);
            out[i]->setObjectName(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i));
            out[i]->setAccessibleName(QString(captions[i]).remove(QStringLiteral("...")));
            l->addWidget(out[i]);
        }
        return box;
    };
    auto* searchBy =
        options(opOptions, "opOptions",
                {QStringLiteral("Search by:  All..."), QStringLiteral("Search by:  Artist..."),
                 QStringLiteral("Search by:  Title..."), QStringLiteral("Search by:  Album..."),
                 QStringLiteral("Search by:  Year..."), QStringLiteral("Search by:  Genre..."),
                 QStringLiteral("Search by:  Filename...")},
                QStringLiteral("Search by"));
    auto* modes =
        options(opSearchMode, "opSearchMode",
                {QStringLiteral("Mode:  Whole Word..."), QStringLiteral("Mode:  Starts With..."),
                 QStringLiteral("Mode:  Ends With..."), QStringLiteral("Mode:  Contains...")},
                QStringLiteral("Mode"));
    chkNotToInclude = new QCheckBox(QStringLiteral("&Not to include:"), this);
    chkNotToInclude->setObjectName(QStringLiteral("chkNotToInclude"));
    chkNotToInclude->setAccessibleName(QStringLiteral("Not to include"));
    txtNotInclude = textBox("txtNotInclude", QStringLiteral("Words not to include"));
    txtNotInclude->setEnabled(false);
    chkSearchID3v2 = new QCheckBox(QStringLiteral("Search the ID3v2 Tags (slower)..."), this);
    chkSearchID3v2->setObjectName(QStringLiteral("chkSearchID3v2"));
    chkSearchID3v2->setAccessibleName(QStringLiteral("Search the ID3v2 Tags"));
    auto* further = options(opFurther, "opFurther",
                            {QStringLiteral("Option:  Select song above..."),
                             QStringLiteral("Option:  Select song above and play it..."),
                             QStringLiteral("Option:  Select song above and set it to be played "
                                            "next..."),
                             QStringLiteral("Option:  Close this window, do nothing else...")},
                            QStringLiteral("Then"));

    items = new ListModel(
        {QStringLiteral("Number:"), QStringLiteral("Artist:"), QStringLiteral("Title:")}, this);
    items->setMultiSelect(false);
    lstvItems = new ListView(items, this);
    lstvItems->setObjectName(QStringLiteral("lstvItems"));
    lstvItems->setAccessibleName(QStringLiteral("Search results"));
    lstvItems->setColumnWidths({60, 200, 240});
    lblSearchResults = new QLabel(QStringLiteral("Search Results:  None"), this);
    lblSearchResults->setObjectName(QStringLiteral("lblSearchResults"));
    cmdSelect = button("cmdSelect", QStringLiteral("&Select"));
    cmdSelect->setEnabled(false);
    auto* close = button("cmdClose", QStringLiteral("&Close"));

    auto* grid = new QGridLayout;
    grid->addWidget(searchBy, 0, 0, 2, 1);
    grid->addWidget(modes, 0, 1);
    auto* exclude = new QHBoxLayout;
    exclude->addWidget(chkNotToInclude);
    exclude->addWidget(txtNotInclude, 1);
    auto* right = new QVBoxLayout;
    right->addLayout(exclude);
    right->addWidget(chkSearchID3v2);
    right->addStretch();
    grid->addLayout(right, 1, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(lblSearchResults, 1);
    bottom->addWidget(cmdSelect);
    bottom->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(grid);
    layout->addWidget(lstvItems, 1);
    layout->addWidget(further);
    layout->addLayout(bottom);
    resize(620, 620);

    opOptions[settings_ReadOption(kSection, kSearchBy, 0)]->setChecked(true);
    opSearchMode[settings_ReadOption(kSection, kModes, 0)]->setChecked(true);
    opFurther[settings_ReadOption(kSection, kFurther, 0)]->setChecked(true);
    for (QRadioButton* b : opFurther)
        b->setEnabled(false);

    connect(cmdFind, &QPushButton::clicked, this, &FrmJump::cmdFind_Click);
    connect(cmdSelect, &QPushButton::clicked, this, &FrmJump::cmdSelect_Click);
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    connect(chkNotToInclude, &QCheckBox::clicked, this, &FrmJump::chkNotToInclude_Click);
    connect(chkSearchID3v2, &QCheckBox::clicked, this, [this] { m_stale = true; });
    connect(cmbSearch, &QComboBox::editTextChanged, this, &FrmJump::searchAsTyped);
    connect(cmbOp, &QComboBox::currentIndexChanged, this, &FrmJump::searchAsTyped);
    connect(txtNotInclude, &QLineEdit::textChanged, this, &FrmJump::searchAsTyped);
    for (QRadioButton* b : opOptions)
        connect(b, &QRadioButton::toggled, this, [this](bool on) {
            if (on) searchAsTyped();
        });
    for (QRadioButton* b : opSearchMode)
        connect(b, &QRadioButton::toggled, this, [this](bool on) {
            if (on) searchAsTyped();
        });
    connect(lstvItems, &ListView::rowDoubleClicked, this, &FrmJump::cmdSelect_Click);
    connect(lstvItems, &ListView::keyCodePressed, this,
            [this](int key, Qt::KeyboardModifiers, bool* handled) {
                if (key != 13) return;
                *handled = true;
                cmdSelect_Click();
            });
    // Rows that change under the window are read again before the next search.
    ListModel* playlist = &ctx.lstvPlaylist();
    const auto stale = [this] { m_stale = true; };
    connect(playlist, &QAbstractItemModel::rowsInserted, this, stale);
    connect(playlist, &QAbstractItemModel::rowsRemoved, this, stale);
    connect(playlist, &QAbstractItemModel::modelReset, this, stale);
    connect(playlist, &QAbstractItemModel::layoutChanged, this, stale);
    // The playing row's colour and bold, and renumbering, change no field.
    connect(playlist, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& from, const QModelIndex& to, const QList<int>& roles) {
                if (to.column() == 0 && from.column() == 0) return; // numbers only
                if (roles.isEmpty() || roles.contains(Qt::DisplayRole)) m_stale = true;
            });
}

void FrmJump::chkNotToInclude_Click() {
    txtNotInclude->setEnabled(chkNotToInclude->isChecked());
    searchAsTyped();
}

void FrmJump::setSearchEnabled(bool on) {
    for (QWidget* w : std::initializer_list<QWidget*>{cmbSearch, cmbOp, cmdFind, chkNotToInclude,
                                                      chkSearchID3v2})
        w->setEnabled(on);
    txtNotInclude->setEnabled(on && chkNotToInclude->isChecked());
    for (QRadioButton* b : opOptions)
        b->setEnabled(on);
    for (QRadioButton* b : opSearchMode)
        b->setEnabled(on);
}

void FrmJump::readFields() {
    m_index.reset(chkSearchID3v2->isChecked());
    m_shown.clear();
    m_stale = false;
    m_reading = true;
    cmdSelect->setEnabled(false);
    readSlice();
}

// A slice of rows at a time: MPEG files are opened for their tags, which takes long on a big
// list. Only a read that outlasts its first slice locks the search and shows the hourglass, so
// that a short one never takes the focus away from the text being typed.
void FrmJump::readSlice() {
    const ListModel& playlist = m_ctx.lstvPlaylist();
    QElapsedTimer clock;
    clock.start();
    bool done = m_index.complete(playlist);
    while (!done && clock.elapsed() < 40)
        done = m_index.readMore(playlist, 64);
    if (!done) {
        if (!m_waiting) {
            m_waiting = true;
            QApplication::setOverrideCursor(Qt::WaitCursor);
            setSearchEnabled(false);
        }
        lblSearchResults->setText(QStringLiteral("Reading the tags:  %1 of %2")
                                      .arg(m_index.size())
                                      .arg(playlist.count()));
        QTimer::singleShot(0, this, &FrmJump::readSlice);
        return;
    }
    m_reading = false;
    if (m_waiting) {
        m_waiting = false;
        QApplication::restoreOverrideCursor();
        setSearchEnabled(true);
        lblSearchResults->setText(QStringLiteral("Search Results:  None"));
    }
    if (m_findPending) {
        m_findPending = false;
        showSearch(false);
        // After Find the results take the keys: Enter selects the first one.
        if (items->count() > 0) lstvItems->setFocus();
    } else {
        searchAsTyped();
    }
}

JumpSearch::Query FrmJump::query(bool typed) const {
    JumpSearch::Query q;
    q.searchBy = checkedIndex(group(opOptions, 7));
    q.mode = checkedIndex(group(opSearchMode, 4));
    q.notEqual = cmbOp->currentIndex() == 1;
    q.criteria = cmbSearch->currentText();
    // While typing, an empty box excludes nothing; Find refuses it instead.
    if (chkNotToInclude->isChecked() && !(typed && txtNotInclude->text().isEmpty()))
        q.excluded = JumpSearch::excludeList(txtNotInclude->text());
    return q;
}

void FrmJump::showSearch(bool typed) {
    auto hits = JumpSearch::search(m_index, query(typed));
    // A letter more often finds the same rows: the list stays as it is then.
    if (hits != m_shown || items->count() != int(hits.size())) {
        JumpSearch::showResults(*items, m_index, hits);
        m_shown = std::move(hits);
    }
    const auto& shown = m_shown;
    lblSearchResults->setText(shown.empty()
                                  ? QStringLiteral("Search Results:  None")
                                  : QStringLiteral("Search Results:  %1").arg(shown.size()));
    for (QRadioButton* b : opFurther)
        b->setEnabled(true);
    cmdSelect->setEnabled(!shown.empty());
}

void FrmJump::searchAsTyped() {
    if (m_reading || cmbSearch->currentText().isEmpty()) return;
    if (m_stale) return readFields(); // searches again once read
    showSearch(true);
}

void FrmJump::cmdFind_Click() {
    if (m_reading) return;
    if (cmbSearch->currentText().isEmpty()) {
        Dialogs::msgBox(QStringLiteral("It has been detected that you have not entered anything "
                                       "into the search criteria section.\n\nPlease enter a search "
                                       "criteria before continuing with this function.\n"),
                        Dialogs::vbExclamation, kSearchTitle);
        cmbSearch->setFocus();
        return;
    }
    if (chkNotToInclude->isChecked() && txtNotInclude->text().isEmpty()) {
        Dialogs::msgBox(QStringLiteral("You have not entered any data into the 'Not To Include' "
                                       "text field.\n\nPlease enter some criteria before "
                                       "continuing with this function.\n"),
                        Dialogs::vbExclamation, kSearchTitle);
        txtNotInclude->setFocus();
        return;
    }
    // Find reads the tags afresh: they may have been changed since the window opened.
    m_findPending = true;
    readFields();
}

void FrmJump::cmdSelect_Click() {
    const int chosen = items->selectedItem();
    if (chosen < 0) {
        Dialogs::msgBox(QStringLiteral("It has been detected that you have not selected a song "
                                       "from the list.\n\nPlease select a song from the list "
                                       "before continuing.\n"),
                        Dialogs::vbExclamation, QStringLiteral("Jumping To Song Error"));
        lstvItems->setFocus();
        return;
    }
    const int option = checkedIndex(group(opFurther, 4));
    if (option != 3) {
        const QString artist = items->text(chosen, 1).toLower();
        const QString title = items->text(chosen, 2).toLower();
        ListModel& playlist = m_ctx.lstvPlaylist();
        for (int i = 0; i < playlist.count(); ++i) {
            if (playlist.text(i, 1).toLower() == artist && playlist.text(i, 2).toLower() == title) {
                listview_SelectItem(playlist, i + 1);
                break;
            }
        }
        if (option == 1) {
            if (m_ctx.PlayerPaused) m_ctx.commands().run(QStringLiteral("mnuStop"));
            if (m_ctx.player_Play) m_ctx.player_Play(1);
        } else if (option == 2) {
            m_ctx.commands().run(QStringLiteral("mnuPlayNext"));
        }
    }
    settings_WriteOption(kSection, kSearchBy, checkedIndex(group(opOptions, 7)));
    settings_WriteOption(kSection, kModes, checkedIndex(group(opSearchMode, 4)));
    settings_WriteOption(kSection, kFurther, option);
    close();
}
