#include "playlists/FrmGeneratePlaylist.h"

#include "core/App.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/PlaylistCombo.h"
#include "core/modControls.h"
#include "core/modFiles.h"
#include "playlists/ListFiles.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/PlaylistGenerators.h"
#include "ui/ListView.h"

#include <QCheckBox>
#include <QDir>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>
#include <QValidator>

namespace {
const QString kTitle = QStringLiteral("Generating Playlist Error");

// The width of the field the criterion is compared with; a longer text already in the box (from
// another option) stays and may only shrink.
class LengthLimit : public QValidator {
public:
    LengthLimit(QLineEdit* box) : QValidator(box), m_box(box) {}
    int limit = 30;
    State validate(QString& input, int&) const override {
        return input.size() <= limit || input.size() < m_box->text().size() ? Acceptable : Invalid;
    }

private:
    QLineEdit* m_box;
};
} // namespace

FrmGeneratePlaylist* FrmGeneratePlaylist::open(MainContext& ctx) {
    auto* w = new FrmGeneratePlaylist(ctx);
    w->show();
    w->txtCriteria->setFocus();
    return w;
}

FrmGeneratePlaylist::~FrmGeneratePlaylist() = default;

FrmGeneratePlaylist::FrmGeneratePlaylist(MainContext& ctx)
    : ToolDialog(ctx, QStringLiteral("FrmGeneratePlaylist"), QStringLiteral("Generate Playlist")) {
    auto* options = new QGroupBox(QStringLiteral("Create the playlist from"), this);
    auto* optionsLayout = new QVBoxLayout(options);
    const QString captions[3] = {QStringLiteral("Create the playlist from:  Artist Name..."),
                                 QStringLiteral("Create the playlist from:  Album Name..."),
                                 QStringLiteral("Create the playlist from:  Year Produced...")};
    for (int i = 0; i < 3; ++i) {
        opOptions[i] = new QRadioButton(captions[i], options);
        opOptions[i]->setObjectName(QStringLiteral("opOptions(%1)").arg(i));
        opOptions[i]->setAccessibleName(captions[i].chopped(3));
        optionsLayout->addWidget(opOptions[i]);
        connect(opOptions[i], &QRadioButton::clicked, this, [this, i] { opOptions_Click(i); });
    }
    txtCriteria = textBox("txtCriteria", QStringLiteral("Criteria"));
    txtCriteria->setValidator(new LengthLimit(txtCriteria));
    auto* label = new QLabel(QStringLiteral("C&riteria:"), this);
    label->setBuddy(txtCriteria);
    chkUseID3v2 =
        new QCheckBox(QStringLiteral("Use ID3v2 Tags over the ID3v1 Tags (slower)..."), this);
    chkUseID3v2->setObjectName(QStringLiteral("chkUseID3v2"));
    chkUseID3v2->setAccessibleName(QStringLiteral("Use ID3v2 Tags over the ID3v1 Tags"));
    chkOpenPlaylist = new QCheckBox(QStringLiteral("Open the playlist once its created..."), this);
    chkOpenPlaylist->setObjectName(QStringLiteral("chkOpenPlaylist"));
    chkOpenPlaylist->setAccessibleName(QStringLiteral("Open the playlist once its created"));
    pbBar = new QProgressBar(this);
    pbBar->setObjectName(QStringLiteral("pbBar"));
    pbBar->setAccessibleName(QStringLiteral("Progress"));
    pbBar->hide();
    items = new ListModel(
        {QStringLiteral("Number:"), QStringLiteral("Artist"), QStringLiteral("Title:")}, this);
    lstvItems = new ListView(items, this);
    lstvItems->setObjectName(QStringLiteral("lstvItems"));
    lstvItems->setAccessibleName(QStringLiteral("Songs added"));
    lstvItems->setColumnWidths({60, 180, 220});
    lblSearchResults = new QLabel(QStringLiteral("Songs Added To Playlist:  None"), this);
    lblSearchResults->setObjectName(QStringLiteral("lblSearchResults"));
    cmdCreate = button("cmdCreate", QStringLiteral("C&reate"));
    cmdCreate->setDefault(true);
    cmdClose = button("cmdClose", QStringLiteral("&Close"));
    connect(cmdCreate, &QPushButton::clicked, this, &FrmGeneratePlaylist::cmdCreate_Click);
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);

    auto* criteria = new QHBoxLayout;
    criteria->addWidget(label);
    criteria->addWidget(txtCriteria, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(lblSearchResults, 1);
    buttons->addWidget(cmdCreate);
    buttons->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(options);
    layout->addLayout(criteria);
    layout->addWidget(chkUseID3v2);
    layout->addWidget(chkOpenPlaylist);
    layout->addWidget(pbBar);
    layout->addWidget(lstvItems, 1);
    layout->addLayout(buttons);
    resize(520, 520);
    opOptions[0]->setChecked(true);
    opOptions_Click(0);
}

void FrmGeneratePlaylist::opOptions_Click(int index) {
    m_option = index;
    static_cast<LengthLimit*>(const_cast<QValidator*>(txtCriteria->validator()))->limit =
        index == 2 ? 4 : 30;
}

void FrmGeneratePlaylist::setInputsEnabled(bool on) {
    for (QRadioButton* b : opOptions)
        b->setEnabled(on);
    for (QWidget* w :
         std::initializer_list<QWidget*>{cmdClose, cmdCreate, txtCriteria, chkOpenPlaylist})
        w->setEnabled(on);
}

void FrmGeneratePlaylist::cmdCreate_Click() {
    if (generating()) return;
    if (txtCriteria->text().isEmpty()) {
        Dialogs::msgBox(QStringLiteral("It has been detected that you have not entered anything "
                                       "into the criteria section.\n\nPlease enter a creation "
                                       "criteria before continuing with this function.\n"),
                        Dialogs::vbExclamation, kTitle);
        txtCriteria->setFocus();
        return;
    }
    const QString name = generate_ProperCase(txtCriteria->text());
    // A name that cannot be a file of the Playlists folder could land elsewhere: refused.
    if (!generate_IsFileName(name)) {
        Dialogs::msgBox(QStringLiteral("The search critera that you entered was not valid.\n\nNo "
                                       "playlist was created.\n"),
                        Dialogs::vbExclamation, kTitle);
        txtCriteria->setFocus();
        return;
    }
    m_path = playlist_PathOf(name);
    if (modFiles::file_Exists(m_path) &&
        Dialogs::msgBox(QStringLiteral("It has been detected that the playlist you wish to create "
                                       "already exists.\n\nDo you want to overwrite this "
                                       "playlist?\n"),
                        Dialogs::vbQuestion | Dialogs::vbYesNo,
                        QStringLiteral("Overwrite Existing Playlist Confirmation")) !=
            Dialogs::vbYes)
        return;
    setInputsEnabled(false);
    listview_Clear(*items);
    txtCriteria->setText(name);
    const ListModel& playlist = m_ctx.lstvPlaylist();
    pbBar->setMaximum(qMax(1, playlist.count()));
    pbBar->setValue(0);
    pbBar->show();
    m_generator =
        std::make_unique<PlaylistGenerator>(playlist, m_option, name, chkUseID3v2->isChecked());
    generateSlice();
}

// Rows are tested a slice at a time so that the window stays alive while tags are read.
void FrmGeneratePlaylist::generateSlice() {
    QElapsedTimer clock;
    clock.start();
    bool done = false;
    while (!done && clock.elapsed() < 40)
        done = m_generator->step(m_option == 1 ? 32 : 20000);
    pbBar->setValue(m_generator->done());
    if (!done) {
        QTimer::singleShot(0, this, &FrmGeneratePlaylist::generateSlice);
        return;
    }
    finish();
}

void FrmGeneratePlaylist::finish() {
    const auto generator = std::move(m_generator);
    const std::vector<QStringList>& rows = generator->matches();
    QDir().mkpath(App::file(QStringLiteral("Playlists")));
    const bool written = !rows.empty() && generate_WriteList(m_path, rows);
    if (written) {
        std::vector<QStringList> shown;
        shown.reserve(rows.size());
        for (const QStringList& r : rows)
            shown.push_back({r[0], r[1], r[2]});
        items->appendRows(std::move(shown));
        lblSearchResults->setText(QStringLiteral("Songs Added To Playlist:  %1").arg(rows.size()));
        window_WriteLog(modFiles::file_GetName(m_path) + QStringLiteral(" saved as playlist."));
        if (chkOpenPlaylist->isChecked()) {
            ListModel& playlist = m_ctx.lstvPlaylist();
            listview_Clear(playlist);
            m_ctx.cmbPlaylists().clear();
            window_InstallPlaylists(m_ctx);
            listview_LoadFromFile(playlist, m_path);
            if (m_ctx.recentPlaylists_Add) m_ctx.recentPlaylists_Add(m_path);
            playlist_Select(m_ctx, m_path);
        } else {
            // The new file joins the combo and the "Send To" menu.
            mnuUpdate_Click(m_ctx);
        }
        listview_Renumber(*items);
        // The window shows its results and is left by its close box.
    } else {
        if (rows.empty())
            Dialogs::msgBox(QStringLiteral("The search critera that you entered was not "
                                           "valid.\n\nNo playlist was created.\n"),
                            Dialogs::vbExclamation, kTitle);
        setInputsEnabled(true);
        opOptions[m_option]->setChecked(true);
        txtCriteria->setFocus();
        lblSearchResults->setText(QStringLiteral("Songs Added To Playlist:  None"));
    }
    modFiles::file_AddToRecentDocuments(m_path);
    Q_EMIT finished();
}
