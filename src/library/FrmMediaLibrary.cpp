#include "library/FrmMediaLibrary.h"

#include "core/App.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "library/MediaLibrary.h"
#include "playlists/FrmAddLocation.h"
#include "playlists/MenuArray.h"
#include "playlists/Moods.h"
#include "playlists/modRecentMedia.h"
#include "playlists/modRecentPlaylists.h"
#include "system/modWindows.h"
#include "ui/CommandBinding.h"
#include "ui/FocusColour.h"
#include "ui/ListView.h"
#include "ui/MenuArrayMenu.h"

#include <QCloseEvent>
#include <QDateTime>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPointer>
#include <QProgressBar>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

QPointer<FrmMediaLibrary> g_window;

const QString kSection = QStringLiteral("MediaLibrarySettings");
const QString kColumns = QStringLiteral("ColumnHeaders_MediaLibrary");
constexpr int kMargin = 1800;
constexpr int KeyRole = Qt::UserRole + 1;

// Commands of the main window that this window's menus offer too.
const char* const kForwarded[] = {"mnuPreferences",  "mnuExit",     "mnuEditMoods",
                                  "mnuConsole",      "mnuTracking", "mnuVolumes",
                                  "mnuForum",        "mnuWebsite",  "mnuCheckForUpdates",
                                  "mnuAboutWindows", "mnuAbout"};

const QHash<QString, QString>& hints() {
    static const QHash<QString, QString> h = {
        {"mnuNew", "Clear the media library and all of the entries."},
        {"mnuAddFiles", "Add files to the current list."},
        {"mnuAddPlaylist", "Add an existing playlist to the current list."},
        {"mnuAddLocation", "Add a saved/selected location to the current list."},
        {"mnuAddDirectory", "Add a directory of audio files to the current list."},
        {"mnuOpen", "Open an existing playlist."},
        {"mnuSaveAs", "Save the current list to a playlist file."},
        {"mnuPreferences", "Show the preferences available in VELDOR."},
        {"mnuExit", "Exit VELDOR."},
        {"mnuEditMoods", "Edit the moods available within VELDOR."},
        {"mnuAlwaysOnTop", "Make this window stay on top of all other open windows/programs."},
        {"mnuShowSearchBar", "Show the search toolbar on the window."},
        {"mnuShowPlaylistHeaders",
         "Show the headers for each section in the playlist on the window."},
        {"mnuShowStatusBar", "Show the status bar at the bottom of the window."},
        {"mnuReCenterWindow", "Center the Media Library within the screen."},
        {"mnuConsole", "Show all of the logs about the use of VELDOR."},
        {"mnuTracking", "Show information about all of the media files that have been played."},
        {"mnuVolumes", "Show the media files that have specific volume settings saved for them."},
        {"mnuForum",
         "Go to the main Kelmora Forum page, where you can post comments, read news, etc."},
        {"mnuWebsite", "Go to the main Kelmora website, where you can check for updates, etc."},
        {"mnuCheckForUpdates", "Check for the lastest updates available online."},
        {"mnuAboutWindows", "Show information about this version of Microsoft Windows."},
        {"mnuAbout", "Show information about this version of VELDOR."},
    };
    return h;
}

ListView* sideList(ListModel* model, const char* name, const char* accessible, QWidget* parent) {
    auto* view = ui_Named(new ListView(model, parent), name, accessible);
    view->setHeadersVisible(false);
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->setDragEnabled(false);
    view->setAcceptDrops(false);
    return view;
}

QWidget* panel(const QString& caption, QWidget* body, QWidget* parent) {
    auto* w = new QWidget(parent);
    auto* l = new QVBoxLayout(w);
    l->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel(caption, w);
    label->setBuddy(body);
    l->addWidget(label);
    l->addWidget(body, 1);
    return w;
}

} // namespace

FrmMediaLibrary* FrmMediaLibrary::instance() {
    return g_window.data();
}

FrmMediaLibrary::FrmMediaLibrary(MainContext& ctx, QWidget* parent)
    : QWidget(parent, Qt::Window), m_ctx(ctx), m_library(new MediaLibrary(ctx, this)) {
    g_window = this;
    setObjectName(QStringLiteral("FrmMediaLibrary"));
    setAccessibleName(QStringLiteral("Media Library"));
    setWindowTitle(QStringLiteral("Media Library"));
    setAttribute(Qt::WA_DeleteOnClose);
    MediaLibrary& lib = *m_library;

    auto* menuBar = new QMenuBar(this);
    buildMenus(menuBar);

    // Left: what to load.
    auto* left = new QWidget(this);
    auto* leftLayout = new QVBoxLayout(left);
    leftLayout->setContentsMargins(0, 0, 0, 0);
    tvOptions = ui_Named(new QTreeWidget(left), "tvOptions", "Search Options");
    tvOptions->setHeaderHidden(true);
    tvOptions->installEventFilter(this);
    leftLayout->addWidget(panel(QStringLiteral("Search &Options:"), tvOptions, left), 1);
    nfpSearch = new QWidget(left);
    nfpSearch->setObjectName(QStringLiteral("nfpSearch"));
    auto* optionRow = new QHBoxLayout(nfpSearch);
    optionRow->setContentsMargins(0, 0, 0, 0);
    txtOptionSearch = ui_Named(new QLineEdit(nfpSearch), "txtOptionSearch", "Search options");
    auto* optionLabel = new QLabel(QStringLiteral("Search:"), nfpSearch);
    optionLabel->setBuddy(txtOptionSearch);
    optionRow->addWidget(optionLabel);
    optionRow->addWidget(txtOptionSearch, 1);
    ui_HighlightOnFocus(txtOptionSearch);
    leftLayout->addWidget(nfpSearch);

    // Right: the search box, the side lists, the results.
    auto* right = new QWidget(this);
    auto* rightLayout = new QVBoxLayout(right);
    rightLayout->setContentsMargins(0, 0, 0, 0);
    auto* searchRow = new QHBoxLayout;
    txtSearch = ui_Named(new QLineEdit(right), "txtSearch", "Search");
    auto* searchLabel = new QLabel(QStringLiteral("&Search:"), right);
    searchLabel->setBuddy(txtSearch);
    searchRow->addWidget(searchLabel);
    searchRow->addWidget(txtSearch, 1);
    ui_HighlightOnFocus(txtSearch);
    rightLayout->addLayout(searchRow);
    lstArtist = sideList(&lib.lstArtist(), "lstArtist", "Artists", right);
    lstAlbum = sideList(&lib.lstAlbum(), "lstAlbum", "Albums", right);
    lstYear = sideList(&lib.lstYear(), "lstYear", "Years", right);
    auto* sides = new QSplitter(Qt::Horizontal, right);
    sides->addWidget(panel(QStringLiteral("&Artists:"), lstArtist, sides));
    sides->addWidget(panel(QStringLiteral("A&lbums:"), lstAlbum, sides));
    sides->addWidget(panel(QStringLiteral("&Year:"), lstYear, sides));
    lstvResults = ui_Named(new ListView(&lib.lstvResults(), right), "lstvResults", "Songs");
    lstvResults->setDragEnabled(false);
    lstvResults->setAcceptDrops(false);
    auto* vertical = new QSplitter(Qt::Vertical, right);
    vertical->addWidget(sides);
    vertical->addWidget(lstvResults);
    vertical->setStretchFactor(1, 2);
    rightLayout->addWidget(vertical, 1);

    auto* split = new QSplitter(Qt::Horizontal, this);
    split->addWidget(left);
    split->addWidget(right);
    split->setStretchFactor(1, 3);

    sbStatusBar = new QStatusBar(this);
    sbStatusBar->setObjectName(QStringLiteral("sbStatusBar"));
    sbStatusBar->setSizeGripEnabled(true);
    m_songs = new QLabel(lib.songsText(), sbStatusBar);
    m_status = new QLabel(lib.statusText(), sbStatusBar);
    m_progress = new QProgressBar(sbStatusBar);
    m_progress->setAccessibleName(QStringLiteral("Progress"));
    m_progress->setMaximumWidth(160);
    m_progress->hide();
    sbStatusBar->addWidget(m_songs);
    sbStatusBar->addWidget(m_status, 1);
    sbStatusBar->addPermanentWidget(m_progress);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 0, 4, 0);
    layout->setMenuBar(menuBar);
    layout->addWidget(split, 1);
    layout->addWidget(sbStatusBar);

    setTabOrder(tvOptions, lstArtist);
    setTabOrder(lstArtist, lstAlbum);
    setTabOrder(lstAlbum, lstYear);
    setTabOrder(lstYear, lstvResults);
    setTabOrder(lstvResults, txtSearch);
    setTabOrder(txtSearch, txtOptionSearch);

    // A side list reacts to the user's choice; one chosen in code is only shown.
    for (ListView* view : {lstArtist, lstAlbum, lstYear}) {
        view->installEventFilter(this);
        ListModel* model = view->listModel();
        connect(model->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
                [this, model](const QModelIndex& now) {
                    if (!now.isValid() || m_library->selectingInCode()) return;
                    if (!model->isSelected(now.row())) model->setSelected(now.row(), true);
                    m_sideClicked = {model, now.row()};
                    m_library->sideList_Click(*model);
                });
        // A click on the entry already current: the press changed nothing, the click counts.
        connect(view, &QAbstractItemView::clicked, this, [this, model](const QModelIndex& i) {
            const std::pair<ListModel*, int> last = std::exchange(m_sideClicked, {nullptr, -1});
            if (!i.isValid() || last == std::pair{model, i.row()}) return;
            if (!model->isSelected(i.row())) model->setSelected(i.row(), true);
            m_library->sideList_Click(*model);
        });
    }
    connect(tvOptions, &QTreeWidget::itemClicked, this,
            [this](QTreeWidgetItem* node) { tvOptions_NodeClick(node); });
    connect(txtSearch, &QLineEdit::textEdited, this,
            [this](const QString& text) { m_library->txtSearch_Change(text); });
    connect(txtOptionSearch, &QLineEdit::textEdited, this,
            &FrmMediaLibrary::txtOptionSearch_Change);
    connect(lstvResults, &ListView::contextMenuAt, this, [this](const QPoint& at) {
        if (m_library->lstvResults().hasSelection()) mnuSelected->popup(at);
    });
    connect(&lib, &MediaLibrary::statusTextChanged, this, [this](const QString& text) {
        if (!m_menuOpen) m_status->setText(text);
    });
    connect(&lib, &MediaLibrary::songsTextChanged, m_songs, &QLabel::setText);
    connect(&lib, &MediaLibrary::progress, this, [this](int done, int total) {
        m_progress->setVisible(total > 0);
        if (total > 0) {
            m_progress->setMaximum(total);
            m_progress->setValue(done);
        }
    });
    // The tree lists the moods of the main window: it follows their changes.
    connect(&MenuArray::of(ctx, QStringLiteral("mnuSendToMood"), QStringLiteral("[None]")),
            &MenuArray::changed, this, &FrmMediaLibrary::library_Setup);

    // Form_Load
    const QDateTime now = QDateTime::currentDateTime();
    window_WriteLog(QStringLiteral("Media Library opened at %1.")
                        .arg(now.toString(QStringLiteral("HH:mm:ss"))));
    modWindows::window_RestorePosition(this, QStringLiteral("MediaLibrary"), kMargin);
    restoreColumns();
    library_Setup();
    recent_UpdateMediaMenu(lib);
    recent_UpdatePlaylistMenu(lib);
    applyModes();
    tvOptions->setFocus();
}

FrmMediaLibrary::~FrmMediaLibrary() {
    m_library->stopWork();
}

void FrmMediaLibrary::buildMenus(QMenuBar* bar) {
    MediaLibrary& lib = *m_library;
    Commands& c = lib.commands();
    const auto act = [&c](const char* name) { return c.action(QString::fromLatin1(name)); };
    for (const char* name : kForwarded) {
        const QString n = QString::fromLatin1(name);
        QAction* mine = c.add(n, m_ctx.commands().caption(n));
        QAction* theirs = m_ctx.commands().action(n);
        const auto follow = [mine, theirs] {
            mine->setEnabled(theirs->isEnabled());
            if (!theirs->text().isEmpty()) mine->setText(theirs->text());
        };
        follow();
        connect(theirs, &QAction::changed, mine, follow);
        c.setHandler(n, [this, n] { m_ctx.commands().runIfEnabled(n); });
    }
    // Captions where the main window has none yet (it is built elsewhere).
    const QHash<QString, QString> captions = {{"mnuPreferences", "&Preferences..."},
                                              {"mnuExit", "E&xit"},
                                              {"mnuEditMoods", "&Edit Moods..."},
                                              {"mnuConsole", "&Console..."},
                                              {"mnuTracking", "&Tracking..."},
                                              {"mnuVolumes", "&Volumes..."},
                                              {"mnuForum", "&Forum"},
                                              {"mnuWebsite", "&Website"},
                                              {"mnuCheckForUpdates", "Check For &Updates..."},
                                              {"mnuAboutWindows", "About &System..."},
                                              {"mnuAbout", "&About..."}};
    for (auto it = captions.begin(); it != captions.end(); ++it)
        if (c.caption(it.key()).isEmpty()) c.setCaption(it.key(), it.value());

    c.setHandler(QStringLiteral("mnuAddLocation"), [this] { FrmAddLocation::open(m_ctx, 1); });
    c.setHandler(QStringLiteral("mnuClose"), [this] { close(); });
    c.setHandler(QStringLiteral("mnuAlwaysOnTop"),
                 [this] { toggle("mnuAlwaysOnTop", "AlwaysOnTop"); });
    c.setHandler(QStringLiteral("mnuShowSearchBar"),
                 [this] { toggle("mnuShowSearchBar", "ShowSearchBar"); });
    c.setHandler(QStringLiteral("mnuShowStatusBar"),
                 [this] { toggle("mnuShowStatusBar", "ShowStatusBar"); });
    c.setHandler(QStringLiteral("mnuShowPlaylistHeaders"),
                 [this] { toggle("mnuShowPlaylistHeaders", "ShowPlaylistHeaders"); });
    c.setHandler(QStringLiteral("mnuReCenterWindow"), [this] {
        const QRect screen = this->screen() ? this->screen()->availableGeometry() : QRect();
        QRect g = frameGeometry();
        g.moveCenter(screen.center());
        move(g.topLeft());
    });

    QMenu* file = bar->addMenu(QStringLiteral("&File"));
    file->addAction(act("mnuNew"));
    file->addAction(act("mnuOpen"));
    file->addSeparator();
    for (const char* n : {"mnuAddFiles", "mnuAddPlaylist", "mnuAddLocation", "mnuAddDirectory"})
        file->addAction(act(n));
    file->addSeparator();
    file->addAction(act("mnuImportCurrentPlaylist"));
    file->addAction(act("mnuExportToVELDOR"));
    file->addAction(act("mnuSaveAs"));
    file->addSeparator();
    QMenu* recentMedia = file->addMenu(QStringLiteral("Recent &Media Files"));
    recentMedia->setObjectName(QStringLiteral("mnuRecentMediaFiles"));
    menuArray_Bind(MenuArray::of(lib, QStringLiteral("mnuRecentMedia"), QStringLiteral("<Empty>")),
                   recentMedia, [this](int i) { m_library->mnuRecentMedia_Click(i); });
    QMenu* recentLists = file->addMenu(QStringLiteral("Recent Play&lists"));
    recentLists->setObjectName(QStringLiteral("mnuRecentPlaylists"));
    menuArray_Bind(
        MenuArray::of(lib, QStringLiteral("mnuRecentPlaylist"), QStringLiteral("<Empty>")),
        recentLists, [this](int i) { m_library->mnuRecentPlaylist_Click(i); });
    file->addSeparator();
    file->addAction(act("mnuPreferences"));
    file->addSeparator();
    file->addAction(act("mnuClose"));
    file->addAction(act("mnuExit"));

    QMenu* arrange = bar->addMenu(QStringLiteral("&Arrange"));
    for (const char* n :
         {"mnuRemoveAlDeadFilenames", "mnuRemoveDuplicateFilenames", "mnuRemoveSelected"})
        arrange->addAction(act(n));

    // The pop-up of the results, also the Moods menu of the bar.
    mnuSelected = new QMenu(this);
    mnuSelected->setObjectName(QStringLiteral("mnuSelected"));
    QMenu* sendTo = mnuSelected->addMenu(act("mnuSendTo")->text());
    sendTo->setObjectName(QStringLiteral("mnuSendTo"));
    sendTo->menuAction()->setEnabled(act("mnuSendTo")->isEnabled());
    connect(act("mnuSendTo"), &QAction::changed, sendTo,
            [sendTo, a = act("mnuSendTo")] { sendTo->menuAction()->setEnabled(a->isEnabled()); });
    menuArray_Bind(MenuArray::of(lib, QStringLiteral("mnuSendToOp")), sendTo,
                   [this](int i) { m_library->mnuSendToOp_Click(i); });
    mnuSelected->addAction(act("mnuRemoveSelected"));
    QMenu* moods = bar->addMenu(QStringLiteral("&Moods"));
    moods->addMenu(sendTo);
    moods->addAction(act("mnuEditMoods"));

    QMenu* view = bar->addMenu(QStringLiteral("&View"));
    for (const char* n :
         {"mnuAlwaysOnTop", "mnuShowSearchBar", "mnuShowPlaylistHeaders", "mnuShowStatusBar"})
        view->addAction(act(n));
    view->addSeparator();
    view->addAction(act("mnuUseID3v2Tags"));
    view->addAction(act("mnuReCenterWindow"));

    QMenu* tools = bar->addMenu(QStringLiteral("&Tools"));
    for (const char* n : {"mnuConsole", "mnuTracking", "mnuVolumes"})
        tools->addAction(act(n));
    QMenu* help = bar->addMenu(QStringLiteral("&Help"));
    for (const char* n : {"mnuForum", "mnuWebsite", "mnuCheckForUpdates"})
        help->addAction(act(n));
    help->addSeparator();
    help->addAction(act("mnuAboutWindows"));
    help->addAction(act("mnuAbout"));

    // The hint of the entry under the pointer, and the status back when the menu closes.
    for (QAction* a : c.all()) {
        const QString hint = hints().value(a->objectName());
        connect(a, &QAction::hovered, this, [this, hint] { showHint(hint); });
    }
    for (QMenu* m : bar->findChildren<QMenu*>()) {
        connect(m, &QMenu::aboutToShow, this, [this] { m_menuOpen = true; });
        connect(m, &QMenu::aboutToHide, this, [this] {
            m_menuOpen = false;
            m_status->setText(m_library->statusText());
        });
    }
}

void FrmMediaLibrary::showHint(const QString& text) {
    m_status->setText(text.isEmpty() ? QStringLiteral("Status:  Waiting...") : text);
}

void FrmMediaLibrary::toggle(const char* command, const char* key) {
    Commands& c = m_library->commands();
    const QString name = QString::fromLatin1(command);
    const bool on = !c.isChecked(name);
    c.setChecked(name, on);
    settings_Write(kSection, QString::fromLatin1(key),
                   on ? QStringLiteral("1") : QStringLiteral("0"));
    applyModes();
}

void FrmMediaLibrary::applyModes() {
    Commands& c = m_library->commands();
    nfpSearch->setVisible(c.isChecked(QStringLiteral("mnuShowSearchBar")));
    sbStatusBar->setVisible(c.isChecked(QStringLiteral("mnuShowStatusBar")));
    lstvResults->setHeadersVisible(c.isChecked(QStringLiteral("mnuShowPlaylistHeaders")));
    const bool top = c.isChecked(QStringLiteral("mnuAlwaysOnTop"));
    if (bool(windowFlags() & Qt::WindowStaysOnTopHint) != top)
        modWindows::window_SetAlwaysOnTop(this, top);
}

void FrmMediaLibrary::restoreColumns() {
    const int widths[] = {
        int(settings_Number(kColumns, QStringLiteral("Artist"), QStringLiteral("3000"))),
        int(settings_Number(kColumns, QStringLiteral("Title"), QStringLiteral("3000"))),
        int(settings_Number(kColumns, QStringLiteral("Year"), QStringLiteral("1000"))),
        int(settings_Number(kColumns, QStringLiteral("Length"), QStringLiteral("1000")))};
    QList<int> px;
    for (int w : widths)
        px << qBound(0, modWindows::twipsToPixels(w, this), 4000);
    px << 400; // the path takes the rest
    lstvResults->setColumnWidths(px);
    lstvResults->header()->setStretchLastSection(true);
}

void FrmMediaLibrary::library_Setup() {
    tvOptions->clear();
    const auto root = [this](const QString& text, const QString& key) {
        auto* node = new QTreeWidgetItem(tvOptions, {text});
        node->setData(0, KeyRole, key);
        return node;
    };
    QTreeWidgetItem* now = root(QStringLiteral("Now Playing:"), QStringLiteral("NowPlaying"));
    new QTreeWidgetItem(now, {QStringLiteral("Import Current Playlist...")});
    new QTreeWidgetItem(now, {QStringLiteral("Export To ") + App::Title() + QStringLiteral("...")});
    QTreeWidgetItem* lists = root(QStringLiteral("Playlists:"), QStringLiteral("Playlists"));
    QTreeWidgetItem* moods = root(QStringLiteral("Moods:"), QStringLiteral("Moods"));
    for (const QString& mood : mood_List())
        if (!mood.isEmpty()) new QTreeWidgetItem(moods, {mood});
    for (const QString& name : MediaLibrary::library_PlaylistNames())
        new QTreeWidgetItem(lists, {name});
    tvOptions->expandAll();
}

void FrmMediaLibrary::tvOptions_NodeClick(QTreeWidgetItem* node) {
    if (!node) return;
    Commands& c = m_library->commands();
    const QString text = node->text(0);
    if (text == QLatin1String("Import Current Playlist...")) {
        c.runIfEnabled(QStringLiteral("mnuImportCurrentPlaylist"));
        return;
    }
    if (text == QStringLiteral("Export To ") + App::Title() + QStringLiteral("...")) {
        c.runIfEnabled(QStringLiteral("mnuExportToVELDOR"));
        return;
    }
    const QString parentKey = node->parent() ? node->parent()->data(0, KeyRole).toString() : "";
    m_library->window_SelectOption(parentKey, text);
}

void FrmMediaLibrary::txtOptionSearch_Change(const QString& text) {
    const QString wanted = text.toLower();
    if (wanted.isEmpty()) return;
    for (int i = 0; i < tvOptions->topLevelItemCount(); ++i)
        if (tvOptions->topLevelItem(i)->text(0).toLower() == wanted) return;
    for (QTreeWidgetItemIterator it(tvOptions); *it; ++it) {
        QTreeWidgetItem* node = *it;
        if (node->text(0).toLower() != wanted) continue;
        tvOptions->setCurrentItem(node);
        const QString parentKey =
            node->parent() ? node->parent()->data(0, KeyRole).toString() : QString();
        m_library->window_SelectOption(parentKey, node->text(0));
        return;
    }
}

bool FrmMediaLibrary::eventFilter(QObject* watched, QEvent* event) {
    if (watched == tvOptions && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
            tvOptions_NodeClick(tvOptions->currentItem());
            return true;
        }
    }
    if (event->type() == QEvent::FocusIn) {
        // One side list at most shows a choice.
        for (ListView* view : {lstArtist, lstAlbum, lstYear})
            if (view == watched)
                for (ListView* other : {lstArtist, lstAlbum, lstYear})
                    if (other != view) other->listModel()->clearSelection();
    }
    return QWidget::eventFilter(watched, event);
}

void FrmMediaLibrary::Form_QueryUnload() {
    if (m_unloaded) return;
    m_unloaded = true;
    if (g_window == this) g_window = nullptr;
    m_library->stopWork();
    const char* keys[] = {"Artist", "Title", "Year", "Length"};
    for (int i = 0; i < 4; ++i)
        settings_Write(kColumns, QString::fromLatin1(keys[i]),
                       modWindows::pixelsToTwips(lstvResults->columnWidth(i), this));
    modWindows::window_SavePosition(this, QStringLiteral("MediaLibrary"), kMargin);
    m_ctx.commands().setChecked(QStringLiteral("mnuOpenMediaLibrary"), false);
}

void FrmMediaLibrary::closeEvent(QCloseEvent* event) {
    Form_QueryUnload();
    event->accept();
}
