#include "ui/FrmPreferences.h"

#include "core/App.h"
#include "core/Colors.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "playlists/RecentList.h"
#include "playlists/modRecentMedia.h"
#include "playlists/modRecentPlaylists.h"
#include "system/GlobalKeys.h"
#include "system/GlobalKeysEditor.h"
#include "system/modFileAssociations.h"
#include "system/modWindows.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

enum Panel {
    DisplayPanel,
    PlaybackPanel,
    SortingPanel,
    FilesPanel,
    AdvancedPanel,
    FileAssPanel,
    WindowSettingsPanel,
    GlobalHotKeysPanel,
    AppearancePanel,
    StartupPanel
};

const char* const kPanels[] = {
    "nfpDisplay", "nfpPlayback",       "nfpSorting",       "nfpFiles",      "nfpAdvanced",
    "nfpFileAss", "nfpWindowSettings", "nfpGlobalHotKeys", "nfpAppearance", "nfpStartup"};

struct CheckPlace {
    int index;
    Panel panel;
    const char* caption;
};
const CheckPlace kCheckPlaces[] = {
    {26, DisplayPanel, "Use the longer of the ID3v1 and ID3v2 texts when both are there..."},
    {27, DisplayPanel, "Pad the numbers of the playlist with zeros..."},
    {18, PlaybackPanel, "Start playing on Next and Previous, also when stopped..."},
    {19, PlaybackPanel, "Start playing when jumping to another playlist..."},
    {22, PlaybackPanel, "Use the volumes stored for single files..."},
    {29, PlaybackPanel, "Start videos in full screen..."},
    {9, AdvancedPanel, "Look for missing files whenever songs are added..."},
    {16, AdvancedPanel, "Include sub-folders when adding a folder..."},
    {17, AdvancedPanel, "Move deleted media files to the trash..."},
    {24, AdvancedPanel, "Ask before the open playlist's file is overwritten..."},
    {20, AdvancedPanel, "Write the console logs..."},
    {23, AdvancedPanel, "&Keep the console logs from one run to the next..."},
    {21, AdvancedPanel, "Keep track of the media files played..."},
    {8, FileAssPanel, "Register the checked file types every time VELDOR starts..."},
    {6, FileAssPanel, "Refresh the desktop's file icons after registering..."},
    {15, WindowSettingsPanel, "Use the system tray (closing the window keeps VELDOR there)..."},
    {12, WindowSettingsPanel, "Show Mini-Mode when the window is closed to the tray..."},
    {25, GlobalHotKeysPanel, "Disable the global hotkeys within windows..."},
    {13, StartupPanel, "Start VELDOR when the desktop session starts..."},
    {14, StartupPanel, "Show the options window when started with the session..."},
    {11, StartupPanel, "Play music when VELDOR starts..."},
    {28, StartupPanel, "Clear the playlist when files are given at start-up..."},
    {7, StartupPanel, "Allow more than one copy of VELDOR to run..."},
};

struct GroupPlace {
    const char* name;
    Panel panel;
    const char* title;
    QStringList captions; // in the order of the group's keys
};
const QList<GroupPlace>& groupPlaces() {
    static const QList<GroupPlace> places = {
        {"opTime",
         DisplayPanel,
         "Time shown on the status bar:",
         {"Time elapsed", "Time remaining"}},
        {"opPlayback",
         PlaybackPanel,
         "Play mode:",
         {"Go through the playlist normally", "Pick random songs", "Repeat", "Repeat once",
          "Stop after ending", "Introduction", "Shuffle by artist", "Shuffle by album",
          "Shuffle by year"}},
        {"opPlaylist",
         PlaybackPanel,
         "At the end of the playlist:",
         {"Stop", "Repeat", "Repeat once", "Switch to the next playlist",
          "Pick a random playlist"}},
        {"opDirection", PlaybackPanel, "Direction:", {"Forward through the list", "Backwards"}},
        {"opSortBy", SortingPanel, "Sort by:", {"Artist", "Title", "Year", "Length", "Filename"}},
        {"opSortIn",
         SortingPanel,
         "Sort via:",
         {"Ascending order", "Descending order", "Don't sort"}},
    };
    return places;
}

struct NumberPlace {
    const char* control;
    Panel panel;
    const char* caption;
};
const NumberPlace kNumberPlaces[] = {
    {"txtSkipRate", PlaybackPanel, "Seconds skipped by Rewind and Fast Forward:"},
    {"txtIntroduction", PlaybackPanel, "Seconds played of each song in Introduction mode:"},
    {"txtMaxPlaylists", FilesPanel, "Maximum number of recent playlists:"},
    {"txtMaxFiles", FilesPanel, "Maximum number of recent files:"},
};

const char* const kColourKeys[][2] = {{"BackgroundColour", "&Background Colour..."},
                                      {"FontColour", "Font Co&lour..."},
                                      {"PlayingFontColour", "Playin&g Song Colour..."},
                                      {"PlayNextFontColour", "Play &Next Colour..."}};

QString plain(const QString& caption) {
    return QString(caption).remove(QLatin1Char('&')).remove(QStringLiteral("...")).trimmed();
}

QPushButton* namedButton(const QString& caption, const QString& name, QWidget* parent) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setAccessibleName(plain(caption));
    // Enter in a box means OK, never the button last clicked.
    b->setAutoDefault(false);
    return b;
}

QVBoxLayout* column(QWidget* parent = nullptr) {
    auto* layout = new QVBoxLayout(parent);
    layout->setAlignment(Qt::AlignTop);
    return layout;
}

} // namespace

QStringList FrmPreferences::sectionCaptions() {
    return {QStringLiteral("Display Settings \u00bb"),  QStringLiteral("Playback Options \u00bb"),
            QStringLiteral("Playlist Sorting \u00bb"),  QStringLiteral("Recent Filenames \u00bb"),
            QStringLiteral("Advanced Settings \u00bb"), QStringLiteral("File Associations \u00bb"),
            QStringLiteral("Window Settings \u00bb"),   QStringLiteral("Global Hot Keys \u00bb"),
            QStringLiteral("Appearance \u00bb"),        QStringLiteral("Start-Up Settings \u00bb")};
}

FrmPreferences::FrmPreferences(MainContext& ctx, QWidget* parent) : QDialog(parent), m_ctx(ctx) {
    setObjectName(QStringLiteral("FrmPreferences"));
    setWindowTitle(QStringLiteral("Preferences"));
    setAccessibleName(windowTitle());

    auto* sections = new QVBoxLayout;
    const QStringList captions = sectionCaptions();
    // The same captions with a key each, so every section is one Alt key away.
    const char* const keyed[] = {"&Display Settings", "&Playback Options",  "Playlist &Sorting",
                                 "&Recent Filenames", "Ad&vanced Settings", "File Associa&tions",
                                 "&Window Settings",  "Global &Hot Keys",   "Appearanc&e",
                                 "Start-&Up Settings"};
    for (int i = 0; i < captions.size(); ++i) {
        auto* label =
            new QPushButton(QString::fromLatin1(keyed[i]) + QStringLiteral(" \u00bb"), this);
        label->setObjectName(QStringLiteral("lblSection_%1").arg(i));
        label->setAccessibleName(captions[i]);
        label->setFlat(true);
        label->setAutoDefault(false);
        // The section shown stays marked in the column.
        label->setCheckable(true);
        label->setAutoExclusive(true);
        label->setStyleSheet(QStringLiteral("text-align: left; padding: 2px 6px"));
        connect(label, &QPushButton::clicked, this, [this, i] { lblSection_Click(i); });
        sections->addWidget(label);
    }
    sections->addStretch();

    m_title = new QLabel(this);
    m_title->setObjectName(QStringLiteral("lblTitle"));
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    m_panels = new QStackedWidget(this);
    for (int i = 0; i < captions.size(); ++i) {
        // A panel scrolls rather than being cut when the screen or the font is large.
        auto* scroll = new QScrollArea(m_panels);
        scroll->setWidgetResizable(true);
        scroll->setFrameShape(QFrame::NoFrame);
        scroll->setWidget(buildPanel(i));
        m_panels->addWidget(scroll);
    }

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    m_ok = namedButton(QStringLiteral("&OK"), QStringLiteral("cmdOK"), this);
    auto* close = namedButton(QStringLiteral("&Close"), QStringLiteral("cmdClose"), this);
    m_apply = namedButton(QStringLiteral("&Apply"), QStringLiteral("cmdApply"), this);
    for (auto* b : {m_ok, close, m_apply})
        buttons->addWidget(b);
    m_ok->setDefault(true);
    connect(m_ok, &QPushButton::clicked, this, &FrmPreferences::cmdOK_Click);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_apply, &QPushButton::clicked, this, &FrmPreferences::cmdApply_Click);

    auto* right = new QVBoxLayout;
    right->addWidget(m_title);
    right->addWidget(m_panels, 1);
    auto* top = new QHBoxLayout;
    top->addLayout(sections);
    top->addLayout(right, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top, 1);
    layout->addLayout(buttons);

    showValues(PreferencesRules::load());
    lblSection_Click(0);
    // Room for the longest panels without scrolling, within the screen.
    const QFontMetrics fm = fontMetrics();
    QSize size(qMax(sizeHint().width(), fm.averageCharWidth() * 130),
               qMax(sizeHint().height(), fm.height() * 36));
    if (const QScreen* screen = this->screen())
        size = size.boundedTo(screen->availableGeometry().size() * 9 / 10);
    resize(size);
}

QWidget* FrmPreferences::buildPanel(int index) {
    auto* panel = new QWidget;
    panel->setObjectName(QString::fromLatin1(kPanels[index]));
    panel->setAccessibleName(plain(sectionCaptions()[index].chopped(2)));
    QVBoxLayout* layout = column(panel);
    if (index == GlobalHotKeysPanel) {
        m_keysPage = new GlobalKeysPage(m_ctx, panel, false);
        layout->addWidget(m_keysPage);
        connect(&m_keysPage->rules(), &GlobalKeysEditor::applyEnabledChanged, this,
                [this](bool on) {
                    if (on) changed();
                });
    }
    addOptionGroups(layout, index);
    addNumbers(layout, index);
    addChecks(layout, index);
    if (index == FilesPanel) buildFilesPanel(layout);
    if (index == FileAssPanel) buildTypesPanel(layout);
    if (index == AppearancePanel) buildAppearancePanel(layout);
    return panel;
}

void FrmPreferences::addChecks(QVBoxLayout* layout, int panel) {
    for (const CheckPlace& c : kCheckPlaces) {
        if (c.panel != panel) continue;
        auto* box = new QCheckBox(QString::fromUtf8(c.caption), layout->parentWidget());
        box->setObjectName(QStringLiteral("chkSetting_%1").arg(c.index));
        box->setAccessibleName(plain(box->text()));
        connect(box, &QCheckBox::toggled, this, &FrmPreferences::changed);
        m_checks[c.index] = box;
        layout->addWidget(box);
    }
}

void FrmPreferences::addOptionGroups(QVBoxLayout* layout, int panel) {
    for (const GroupPlace& place : groupPlaces()) {
        if (place.panel != panel) continue;
        const QString name = QString::fromLatin1(place.name);
        auto* box = new QGroupBox(QString::fromUtf8(place.title), layout->parentWidget());
        box->setAccessibleName(plain(box->title()).chopped(1));
        // Two columns for the long groups, so the panel stays on screen.
        auto* grid = new QGridLayout(box);
        auto* group = new QButtonGroup(box);
        group->setObjectName(name);
        const int rows = place.captions.size() > 4 ? (place.captions.size() + 1) / 2 : 99;
        for (int i = 0; i < place.captions.size(); ++i) {
            auto* option = new QRadioButton(place.captions[i], box);
            option->setObjectName(QStringLiteral("%1_%2").arg(name).arg(i));
            option->setAccessibleName(option->text());
            group->addButton(option, i);
            grid->addWidget(option, i % rows, i / rows);
        }
        connect(group, &QButtonGroup::idToggled, this, &FrmPreferences::changed);
        m_options[name] = group;
        layout->addWidget(box);
    }
}

void FrmPreferences::addNumbers(QVBoxLayout* layout, int panel) {
    QFormLayout* form = nullptr;
    for (const NumberPlace& n : kNumberPlaces) {
        if (n.panel != panel) continue;
        if (!form) {
            form = new QFormLayout;
            layout->addLayout(form);
        }
        auto* edit = new QLineEdit(layout->parentWidget());
        edit->setObjectName(QString::fromLatin1(n.control));
        edit->setAccessibleName(plain(QString::fromUtf8(n.caption)).chopped(1));
        edit->setMaximumWidth(edit->fontMetrics().horizontalAdvance(QStringLiteral("00000")) * 2);
        connect(edit, &QLineEdit::textEdited, this, &FrmPreferences::changed);
        m_numbers[QString::fromLatin1(n.control)] = edit;
        form->addRow(QString::fromUtf8(n.caption), edit);
    }
}

void FrmPreferences::buildFilesPanel(QVBoxLayout* layout) {
    QWidget* panel = layout->parentWidget();
    auto* files = namedButton(QStringLiteral("Reset Recent &Files"),
                              QStringLiteral("cmdResetRecentFiles"), panel);
    auto* lists = namedButton(QStringLiteral("Reset Recent Pla&ylists"),
                              QStringLiteral("cmdResetRecentPlaylists"), panel);
    connect(files, &QPushButton::clicked, this, &FrmPreferences::cmdResetRecentFiles_Click);
    connect(lists, &QPushButton::clicked, this, &FrmPreferences::cmdResetRecentPlaylists_Click);
    auto* row = new QHBoxLayout;
    row->addWidget(files);
    row->addWidget(lists);
    row->addStretch();
    layout->addLayout(row);
}

void FrmPreferences::buildTypesPanel(QVBoxLayout* layout) {
    QWidget* panel = layout->parentWidget();
    m_types = new QListWidget(panel);
    m_types->setObjectName(QStringLiteral("lstTypes"));
    m_types->setAccessibleName(QStringLiteral("File types"));
    m_types->setMinimumHeight(m_types->fontMetrics().height() * 8);
    connect(m_types, &QListWidget::itemChanged, this, &FrmPreferences::changed);
    layout->addWidget(m_types, 1);
    auto* all = namedButton(QStringLiteral("Select A&ll"), QStringLiteral("cmdSelectAll"), panel);
    auto* none =
        namedButton(QStringLiteral("U&nselect All"), QStringLiteral("cmdUnselectAll"), panel);
    auto* now =
        namedButton(QStringLiteral("Re&gister Now"), QStringLiteral("cmdRegisterNow"), panel);
    for (auto* b : {all, none}) {
        const Qt::CheckState state = b == all ? Qt::Checked : Qt::Unchecked;
        connect(b, &QPushButton::clicked, this, [this, state] {
            for (int i = 0; i < m_types->count(); ++i)
                m_types->item(i)->setCheckState(state);
        });
    }
    connect(now, &QPushButton::clicked, this, &FrmPreferences::cmdRegisterNow_Click);
    auto* row = new QHBoxLayout;
    for (auto* b : {all, none, now})
        row->addWidget(b);
    row->addStretch();
    layout->addLayout(row);
}

void FrmPreferences::buildAppearancePanel(QVBoxLayout* layout) {
    QWidget* panel = layout->parentWidget();
    auto* colours = new QGridLayout;
    int place = 0;
    for (const auto& [key, caption] : kColourKeys) {
        auto* b = namedButton(QString::fromUtf8(caption),
                              QStringLiteral("cmdColour_%1").arg(QLatin1String(key)), panel);
        const QString k = QString::fromLatin1(key);
        connect(b, &QPushButton::clicked, this, [this, k] { pickColour(k); });
        m_colours[k] = b;
        colours->addWidget(b, place / 2, place % 2);
        ++place;
    }
    colours->setColumnStretch(2, 1);
    layout->addLayout(colours);
    auto* form = new QFormLayout;
    auto* font =
        namedButton(QStringLiteral("Change &Font..."), QStringLiteral("cmdChangeFont"), panel);
    m_font = new QLabel(panel);
    m_font->setObjectName(QStringLiteral("lblFont"));
    m_font->setAccessibleName(QStringLiteral("Font"));
    connect(font, &QPushButton::clicked, this, [this] {
        QFont f(m_shown.appearance.value(QStringLiteral("Font")));
        f.setPointSizeF(m_shown.appearance.value(QStringLiteral("Fontsize")).toDouble());
        const auto chosen = Dialogs::chooseFont(QStringLiteral("Font"), f);
        if (!chosen) return;
        m_shown.appearance[QStringLiteral("Font")] = chosen->family();
        m_shown.appearance[QStringLiteral("Fontsize")] =
            QString::number(qBound(4, qRound(chosen->pointSizeF()), 72));
        showAppearance();
        changed();
    });
    form->addRow(font, m_font);

    auto* select =
        namedButton(QStringLiteral("Select &Image..."), QStringLiteral("cmdSelectImage"), panel);
    auto* remove =
        namedButton(QStringLiteral("Re&move Image"), QStringLiteral("cmdRemoveImage"), panel);
    connect(select, &QPushButton::clicked, this, &FrmPreferences::cmdSelectImage_Click);
    connect(remove, &QPushButton::clicked, this, &FrmPreferences::cmdRemoveImage_Click);
    auto* images = new QHBoxLayout;
    images->addWidget(select);
    images->addWidget(remove);
    images->addStretch();
    form->addRow(images);
    m_image = new QLabel(panel);
    m_image->setObjectName(QStringLiteral("lblImage"));
    m_image->setAccessibleName(QStringLiteral("Playlist image"));
    m_image->setWordWrap(true);
    m_image->setTextInteractionFlags(Qt::TextSelectableByMouse);
    form->addRow(m_image);
    layout->addLayout(form);
}

void FrmPreferences::pickColour(const QString& key) {
    const auto chosen =
        Dialogs::chooseColor(plain(m_colours.value(key)->text()),
                             Colors::fromColorRef(Colors::parse(m_shown.appearance.value(key), 0)));
    if (!chosen) return;
    const QColor c = *chosen;
    m_shown.appearance[key] = QString::number(c.red() | c.green() << 8 | c.blue() << 16);
    showAppearance();
    changed();
}

void FrmPreferences::showAppearance() {
    const int side = fontMetrics().height();
    for (auto it = m_colours.cbegin(); it != m_colours.cend(); ++it) {
        QPixmap swatch(side, side);
        swatch.fill(Colors::fromColorRef(Colors::parse(m_shown.appearance.value(it.key()), 0)));
        QPainter(&swatch).drawRect(0, 0, side - 1, side - 1);
        it.value()->setIcon(swatch);
    }
    m_font->setText(QStringLiteral("%1, %2 pt")
                        .arg(m_shown.appearance.value(QStringLiteral("Font")),
                             m_shown.appearance.value(QStringLiteral("Fontsize"))));
    const QString image = m_shown.appearance.value(QStringLiteral("PlaylistImage"));
    m_image->setText(image.isEmpty() ? QStringLiteral("No image behind the playlist.")
                                     : QStringLiteral("Image: %1").arg(image));
}

void FrmPreferences::showValues(const PreferencesRules::Values& v) {
    m_shown = v;
    for (auto it = m_checks.cbegin(); it != m_checks.cend(); ++it)
        it.value()->setChecked(v.checks.value(it.key()));
    for (auto it = m_options.cbegin(); it != m_options.cend(); ++it)
        if (QAbstractButton* b = it.value()->button(v.options.value(it.key()))) b->setChecked(true);
    for (auto it = m_numbers.cbegin(); it != m_numbers.cend(); ++it)
        it.value()->setText(v.numbers.value(it.key()));
    m_types->clear();
    for (auto it = v.fileTypes.cbegin(); it != v.fileTypes.cend(); ++it) {
        auto* item = new QListWidgetItem(it.key(), m_types);
        item->setCheckState(it.value() ? Qt::Checked : Qt::Unchecked);
    }
    showAppearance();
    m_apply->setEnabled(false);
}

PreferencesRules::Values FrmPreferences::values() const {
    PreferencesRules::Values v = m_shown;
    for (auto it = m_checks.cbegin(); it != m_checks.cend(); ++it)
        v.checks[it.key()] = it.value()->isChecked();
    for (auto it = m_options.cbegin(); it != m_options.cend(); ++it)
        v.options[it.key()] = it.value()->checkedId();
    for (auto it = m_numbers.cbegin(); it != m_numbers.cend(); ++it)
        v.numbers[it.key()] = it.value()->text();
    for (int i = 0; i < m_types->count(); ++i)
        v.fileTypes[m_types->item(i)->text()] = m_types->item(i)->checkState() == Qt::Checked;
    // The hotkey rows go to the file as they stand, "(None)" included.
    const GlobalKeysEditor& keys = m_keysPage->rules();
    for (int c = 0; c < GlobalKeys::CommandCount; ++c) {
        v.globalKeys[GlobalKeys::keyKey(c)] = keys.keyOf(c + 1);
        v.globalKeys[GlobalKeys::extKey(c)] = keys.extensionOf(c + 1);
    }
    return v;
}

void FrmPreferences::changed() {
    m_apply->setEnabled(true);
}

void FrmPreferences::lblSection_Click(int index) {
    const QStringList captions = sectionCaptions();
    if (index < 0 || index >= captions.size()) return;
    m_section = index;
    m_panels->setCurrentIndex(index);
    if (auto* label = findChild<QPushButton*>(QStringLiteral("lblSection_%1").arg(index)))
        label->setChecked(true);
    QString caption = captions[index];
    caption.chop(2);
    m_title->setText(QStringLiteral("Section selected:  %1:").arg(caption));
}

bool FrmPreferences::cmdApply_Click() {
    const PreferencesRules::Values v = values();
    if (!PreferencesRules::apply(v, m_ctx)) return false;
    m_shown = v;
    m_keysPage->rules().applied();
    // The recent lists take their new lengths at once.
    recent_Media().loadLimit();
    recent_Playlists().loadLimit();
    recent_UpdateMediaMenu(m_ctx);
    recent_UpdatePlaylistMenu(m_ctx);
    m_ctx.call(m_ctx.mediaLibrary_RefreshRecent);
    m_apply->setEnabled(false);
    m_ok->setFocus();
    return true;
}

void FrmPreferences::cmdOK_Click() {
    if (m_apply->isEnabled() && !cmdApply_Click()) return;
    accept();
}

void FrmPreferences::cmdResetRecentFiles_Click() {
    recent_ClearMedia();
    recent_UpdateMediaMenu(m_ctx);
    m_ctx.call(m_ctx.mediaLibrary_RefreshRecent);
    window_WriteLog(QStringLiteral("The recent media files were reset."));
}

void FrmPreferences::cmdResetRecentPlaylists_Click() {
    recent_ClearPlaylist();
    recent_UpdatePlaylistMenu(m_ctx);
    m_ctx.call(m_ctx.mediaLibrary_RefreshRecent);
    window_WriteLog(QStringLiteral("The recent playlists were reset."));
}

void FrmPreferences::cmdSelectImage_Click() {
    Dialogs::FileRequest request;
    request.title = QStringLiteral("Select Playlist Image");
    const QString current = m_shown.appearance.value(QStringLiteral("PlaylistImage"));
    request.initDir = Dialogs::startFolder(QFileInfo(current).absolutePath());
    request.filter = QStringLiteral("Pictures|*.png;*.jpg;*.jpeg;*.bmp;*.gif|All Files|*.*|");
    const QString path = Dialogs::showOpen(request).path;
    if (path.isEmpty()) return;
    // A file the toolkit cannot draw would leave the list plain without a word.
    if (QPixmap(path).isNull()) {
        Dialogs::msgBox(QStringLiteral("The file you have selected is not a picture that can be "
                                       "shown:\n\n%1\n\nPlease select another image.")
                            .arg(path),
                        Dialogs::vbExclamation, QStringLiteral("Invalid Image"));
        return;
    }
    m_shown.appearance[QStringLiteral("PlaylistImage")] = path;
    showAppearance();
    changed();
}

void FrmPreferences::cmdRemoveImage_Click() {
    m_shown.appearance[QStringLiteral("PlaylistImage")].clear();
    showAppearance();
    changed();
}

void FrmPreferences::cmdRegisterNow_Click() {
    using namespace modFileAssociations;
    QStringList problems;
    for (int i = 0; i < m_types->count(); ++i) {
        if (m_types->item(i)->checkState() != Qt::Checked) continue;
        const QString why = filetype_Register(App::Title(), m_types->item(i)->text().toLower());
        if (!why.isEmpty()) problems << why;
    }
    problems.removeDuplicates();
    if (!problems.isEmpty()) {
        Dialogs::msgBox(problems.join(QLatin1Char('\n')), Dialogs::vbExclamation,
                        QStringLiteral("File Types"));
    } else if (Dialogs::msgBox(
                   QStringLiteral("For the changes to make better effect, you will need to update "
                                  "your Windows Icons.\n\nDo you want %1 to update your Windows "
                                  "icons?")
                       .arg(App::Title()),
                   Dialogs::vbQuestion | Dialogs::vbYesNo,
                   QStringLiteral("Confirm Updating Windows Icons")) == Dialogs::vbYes) {
        filetype_RefreshIcons();
    }
    changed();
}

void FrmPreferences_install(MainContext& ctx, QWidget* owner) {
    const auto open = [&ctx, owner](int section) {
        auto* dialog = new FrmPreferences(ctx, owner);
        dialog->lblSection_Click(section);
        modWindows::window_ShowModal(ctx, dialog, owner, true);
    };
    ctx.commands().setHandler(QStringLiteral("mnuPreferences"), [open] { open(DisplayPanel); });
    ctx.commands().setHandler(QStringLiteral("mnuWindowsEditWindowsGLobalHotkeys"),
                              [open] { open(GlobalHotKeysPanel); });
}
