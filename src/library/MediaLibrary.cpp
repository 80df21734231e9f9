#include "library/MediaLibrary.h"

#include "core/App.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/modFiles.h"
#include "library/ExistenceCache.h"
#include "library/TextKey.h"
#include "playlists/LineFiles.h"
#include "playlists/ListFiles.h"
#include "playlists/MenuArray.h"
#include "playlists/Moods.h"
#include "tags/TagFile.h"
#include "tags/clsID3v1.h"
#include "tags/clsID3v2.h"
#include "tags/modMedia.h"

#include <QDir>
#include <QFile>
#include <unordered_set>

namespace {

const QString kSection = QStringLiteral("MediaLibrarySettings");

bool isMpegAudio(const QString& path) {
    const QString ext = modFiles::file_GetExtension(path).toLower();
    return ext == QLatin1String("mp3") || ext == QLatin1String("mp2") ||
           ext == QLatin1String("mp1");
}

// The classic Val(): the number at the start of the text, 0 when there is none.
qint32 leadingNumber(const QString& text) {
    const QString t = text.trimmed();
    qsizetype end = 0;
    while (end < t.size() && (t[end].isDigit() || t[end] == QLatin1Char('.') ||
                              (end == 0 && t[end] == QLatin1Char('-'))))
        ++end;
    bool ok = false;
    const double v = t.left(end).toDouble(&ok);
    return ok && v < 2147483647.0 && v > -2147483648.0 ? qint32(v) : 0;
}

// A cell as the lists show it: up to its first NUL. Tag fields padded with NULs by other programs
// then match what the user sees and types.
QStringView shown(const QString& text) {
    const qsizetype nul = text.indexOf(QChar(0));
    return nul < 0 ? QStringView(text) : QStringView(text).left(nul);
}

// cell.toLower() == lower, without making the lower case of a Latin-1 cell: its characters
// lower within Latin-1, one for one.
bool lowerCaseEquals(QAnyStringView cell, const QString& lower) {
    if (!cell.visit([](auto v) { return std::is_same_v<decltype(v), QLatin1StringView>; }))
        return cell.toString().toLower() == lower;
    if (cell.size() != lower.size()) return false;
    const auto* bytes = static_cast<const uchar*>(cell.data());
    const QChar* want = lower.constData();
    for (qsizetype i = 0; i < lower.size(); ++i) {
        uchar c = bytes[i];
        if ((c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7)) c += 0x20;
        if (want[i].unicode() != c) return false;
    }
    return true;
}

} // namespace

MediaLibrary::MediaLibrary(MainContext& ctx, QObject* parent)
    : QObject(parent), m_ctx(ctx), m_commands(new Commands(this)),
      m_filenames(new ListModel({QStringLiteral("Artist:"), QStringLiteral("Title:"),
                                 QStringLiteral("Album:"), QStringLiteral("Year:"),
                                 QStringLiteral("Genre:"), QStringLiteral("Comment:"),
                                 QStringLiteral("Path:")},
                                this)),
      m_results(new ListModel({QStringLiteral("Artist:"), QStringLiteral("Title:"),
                               QStringLiteral("Year:"), QStringLiteral("Length:"),
                               QStringLiteral("Path:")},
                              this)),
      m_artist(new ListModel({QStringLiteral("Artists:")}, this)),
      m_album(new ListModel({QStringLiteral("Albums:")}, this)),
      m_year(new ListModel({QStringLiteral("Year:")}, this)), m_v1(new clsID3v1),
      m_v2(new clsID3v2), m_files(new ExistenceCache) {
    setObjectName(QStringLiteral("FrmMediaLibraryState"));
    for (ListModel* side : {m_artist, m_album, m_year})
        side->setMultiSelect(false);
    m_tick.setSingleShot(true);
    m_tick.setInterval(0);
    connect(&m_tick, &QTimer::timeout, this, &MediaLibrary::step);
    m_updateTick.setSingleShot(true);
    m_updateTick.setInterval(0);
    connect(&m_updateTick, &QTimer::timeout, this, &MediaLibrary::tmrWindowUpdate_Timer);
    for (ListModel* list : {m_filenames, m_results, &ctx.lstvPlaylist()}) {
        connect(list, &QAbstractItemModel::rowsInserted, this, &MediaLibrary::updateLater);
        connect(list, &QAbstractItemModel::rowsRemoved, this, &MediaLibrary::updateLater);
        connect(list, &QAbstractItemModel::modelReset, this, &MediaLibrary::updateLater);
    }
    // Remembered files of rows follow the rows.
    connect(m_filenames, &QAbstractItemModel::rowsInserted, this, [this] { m_rowFile.clear(); });
    connect(m_filenames, &QAbstractItemModel::rowsRemoved, this, [this] { m_rowFile.clear(); });
    connect(m_filenames, &QAbstractItemModel::modelReset, this, [this] { m_rowFile.clear(); });
    connect(m_filenames, &QAbstractItemModel::layoutChanged, this, [this] { m_rowFile.clear(); });
    connect(m_filenames, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& from, const QModelIndex& to) {
                if (from.column() <= LibraryColumn::Path && to.column() >= LibraryColumn::Path)
                    forgetRowFiles(from.row(), to.row());
            });
    // The main window's moods changed: this window's mood menu follows.
    connect(&MenuArray::of(ctx, QStringLiteral("mnuSendToMood"), QStringLiteral("[None]")),
            &MenuArray::changed, this, &MediaLibrary::window_InstallSendToMoods);

    Commands& c = *m_commands;
    const struct {
        const char* name;
        const char* text;
        bool checkable;
    } entries[] = {
        {"mnuNew", "&New", false},
        {"mnuOpen", "&Open Playlist...", false},
        {"mnuAddFiles", "Add &Files...", false},
        {"mnuAddPlaylist", "Add &Playlist...", false},
        {"mnuAddLocation", "Add &Location...", false},
        {"mnuAddDirectory", "Add &Directory...", false},
        {"mnuSaveAs", "&Save As Playlist...", false},
        {"mnuImportCurrentPlaylist", "&Import Current Playlist", false},
        {"mnuExportToVELDOR", "&Export To", false},
        {"mnuRemoveAlDeadFilenames", "Remove All &Dead Filenames", false},
        {"mnuRemoveDuplicateFilenames", "Remove D&uplicate Filenames", false},
        {"mnuRemoveSelected", "&Remove Selected", false},
        {"mnuSendTo", "Send &To Mood", false},
        {"mnuUseID3v2Tags", "&Use ID3v2 Tags In Library...", true},
        {"mnuAlwaysOnTop", "&Always On Top", true},
        {"mnuShowSearchBar", "Show &Search Bar", true},
        {"mnuShowPlaylistHeaders", "Show Playlist &Headers", true},
        {"mnuShowStatusBar", "Show Status &Bar", true},
        {"mnuReCenterWindow", "Re-&Center Window", false},
        {"mnuClose", "&Close\tAlt+F4", false},
    };
    for (const auto& e : entries)
        c.add(QString::fromLatin1(e.name), QString::fromUtf8(e.text), e.checkable);
    c.setCaption(QStringLiteral("mnuExportToVELDOR"), QStringLiteral("&Export To ") + App::Title());
    c.setChecked(QStringLiteral("mnuUseID3v2Tags"),
                 settings_IsOn(kSection, QStringLiteral("UseID3v2Tags"), QStringLiteral("0")));
    c.setChecked(QStringLiteral("mnuAlwaysOnTop"),
                 settings_IsOn(kSection, QStringLiteral("AlwaysOnTop"), QStringLiteral("0")));
    c.setChecked(QStringLiteral("mnuShowSearchBar"),
                 settings_IsOn(kSection, QStringLiteral("ShowSearchBar"), QStringLiteral("1")));
    c.setChecked(QStringLiteral("mnuShowStatusBar"),
                 settings_IsOn(kSection, QStringLiteral("ShowStatusBar"), QStringLiteral("1")));
    c.setChecked(
        QStringLiteral("mnuShowPlaylistHeaders"),
        settings_IsOn(kSection, QStringLiteral("ShowPlaylistHeaders"), QStringLiteral("0")));

    const auto on = [&c](const char* name, std::function<void()> f) {
        c.setHandler(QString::fromLatin1(name), std::move(f));
    };
    on("mnuNew", [this] { mnuNew_Click(); });
    on("mnuOpen", [this] { mnuOpen_Click(); });
    on("mnuAddFiles", [this] { mnuAddFiles_Click(); });
    on("mnuAddPlaylist", [this] { mnuAddPlaylist_Click(); });
    on("mnuAddDirectory", [this] { mnuAddDirectory_Click(); });
    on("mnuSaveAs", [this] { mnuSaveAs_Click(); });
    on("mnuImportCurrentPlaylist", [this] { mnuImportCurrentPlaylist_Click(); });
    on("mnuExportToVELDOR", [this] { mnuExportToVELDOR_Click(); });
    on("mnuRemoveAlDeadFilenames", [this] { mnuRemoveAlDeadFilenames_Click(); });
    on("mnuRemoveDuplicateFilenames", [this] { mnuRemoveDuplicateFilenames_Click(); });
    on("mnuRemoveSelected", [this] { mnuRemoveSelected_Click(); });
    on("mnuUseID3v2Tags", [this] { mnuUseID3v2Tags_Click(); });
    m_status = QStringLiteral("Status:  Waiting...");
    window_InstallSendToMoods();
    tmrWindowUpdate_Timer();
}

MediaLibrary::~MediaLibrary() {
    stopWork();
}

void MediaLibrary::setStatusText(const QString& text) {
    if (text == m_status) return;
    m_status = text;
    Q_EMIT statusTextChanged(text);
}

// --- long work

void MediaLibrary::queue(Stage stage) {
    m_stages.push_back(std::move(stage));
    if (!m_tick.isActive()) m_tick.start();
}

void MediaLibrary::stopWork() {
    const bool was = !m_stages.empty();
    m_stages.clear();
    ++m_generation;
    m_tick.stop();
    ResultsEnabled = true;
    if (was) Q_EMIT progress(0, 0);
}

void MediaLibrary::step() {
    m_clock.start();
    while (!m_stages.empty()) {
        const quint64 generation = m_generation;
        Stage stage = m_stages.front(); // the stage may stop the work and queue other stages
        const bool done = stage();
        if (generation != m_generation) break;
        if (done) m_stages.pop_front();
        if (sliceOver()) break;
    }
    if (!m_stages.empty()) {
        m_tick.start();
        return;
    }
    Q_EMIT progress(0, 0);
    Q_EMIT workFinished();
}

void MediaLibrary::finishWork() {
    while (!m_stages.empty())
        step();
    m_tick.stop();
}

void MediaLibrary::queueShow(const QString& logLine) {
    filenames_ShowID3Data();
    queue([this, logLine] {
        library_Update();
        if (!logLine.isEmpty()) window_WriteLog(logLine);
        setStatusText(QStringLiteral("Status:  Waiting..."));
        return true;
    });
}

// --- the set

void MediaLibrary::filenames_Add(const QString& path) {
    m_filenames->addRow({QString(), QString(), QString(), QString(), QString(), QString(), path});
}

int MediaLibrary::filenames_AddDirectory(const QString& directory, const QString& extension) {
    const QStringList names = QDir(directory).entryList({QStringLiteral("*.") + extension},
                                                        QDir::Files, QDir::Name | QDir::IgnoreCase);
    const QString base =
        directory.endsWith(QLatin1Char('/')) ? directory : directory + QLatin1Char('/');
    for (const QString& name : names) {
        filenames_Add(base + name);
        window_WriteLog(base + name + QStringLiteral(" added to Media Library."));
    }
    return int(names.size());
}

void MediaLibrary::filenames_QueueDirectory(const QString& directory, bool recursive) {
    struct Walk {
        QStringList folders;
        QSet<QString> seen; // real paths: a link back up the tree is walked once
        qsizetype next = 0;
        qsizetype folder = 0;
        int extension = 0;
        QStringList names;
        qsizetype name = -1;
    };
    auto walk = std::make_shared<Walk>();
    walk->folders = {directory};
    walk->seen.insert(QDir(directory).canonicalPath());
    if (recursive)
        queue([this, walk] {
            while (walk->next < walk->folders.size()) {
                const QString folder = walk->folders[walk->next++];
                // Unreadable folders list nothing and are passed over.
                const QStringList below = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot,
                                                                 QDir::Name | QDir::IgnoreCase);
                for (const QString& name : below) {
                    const QString path = QDir(folder).filePath(name);
                    const QString real = QDir(path).canonicalPath();
                    if (real.isEmpty() || walk->seen.contains(real)) continue;
                    walk->seen.insert(real);
                    walk->folders.append(path);
                }
                if (sliceOver()) {
                    setStatusText(QStringLiteral("Reading from:  ") + folder);
                    return false;
                }
            }
            return true;
        });
    queue([this, walk] {
        static const char* const kExtensions[] = {"mp3", "mp2", "mp1"};
        while (walk->folder < walk->folders.size()) {
            const QString& folder = walk->folders[walk->folder];
            if (walk->name < 0) {
                walk->names = QDir(folder).entryList(
                    {QStringLiteral("*.") + QLatin1String(kExtensions[walk->extension])},
                    QDir::Files, QDir::Name | QDir::IgnoreCase);
                walk->name = 0;
            }
            const QString base =
                folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/');
            while (walk->name < walk->names.size()) {
                const QString path = base + walk->names[walk->name++];
                filenames_Add(path);
                window_WriteLog(path + QStringLiteral(" added to Media Library."));
                if (sliceOver()) {
                    Q_EMIT progress(int(walk->folder), int(walk->folders.size()));
                    return false;
                }
            }
            walk->name = -1;
            if (++walk->extension == 3) {
                walk->extension = 0;
                ++walk->folder;
            }
        }
        return true;
    });
}

void MediaLibrary::mood_Open(const QString& path) {
    auto values = std::make_shared<QStringList>();
    auto next = std::make_shared<qsizetype>(-1);
    queue([this, path, values, next] {
        if (*next < 0) {
            *values = LineFiles::readValues(path);
            *next = 0;
        }
        while (*next < values->size()) {
            filenames_Add(values->at((*next)++));
            if (sliceOver()) {
                Q_EMIT progress(int(*next), int(values->size()));
                return false;
            }
        }
        return true;
    });
}

bool MediaLibrary::mood_Save(const QString& path) {
    QByteArray bytes;
    for (int i = 0; i < m_filenames->count(); ++i)
        bytes += m_filenames->text(i, LibraryColumn::Path).toUtf8() + "\r\n";
    return modFiles::file_WriteAtomic(path, bytes);
}

bool MediaLibrary::readTags(int row) {
    const QStringList cells = m_filenames->rowTexts(row);
    const QString path = cells.value(LibraryColumn::Path);
    if (!isMpegAudio(path) || !m_files->exists(path)) return false;
    TagFile file;
    const bool opened = file.open(path);
    QStringList out = cells;
    m_v1->load(path, file, opened);
    if (m_commands->isChecked(QStringLiteral("mnuUseID3v2Tags"))) {
        m_v2->load(path, file, opened);
        out[LibraryColumn::Artist] = m_v2->Artist();
        out[LibraryColumn::Title] = m_v2->Title();
        out[LibraryColumn::Album] = m_v2->Album();
        out[LibraryColumn::Year] = m_v2->Year();
        out[LibraryColumn::Comment] = m_v2->Comment();
    } else {
        out[LibraryColumn::Artist] = m_v1->Artist();
        out[LibraryColumn::Title] = m_v1->Title();
        out[LibraryColumn::Album] = m_v1->Album();
        out[LibraryColumn::Year] = m_v1->Year();
        out[LibraryColumn::Comment] = m_v1->Comment();
    }
    out[LibraryColumn::Genre] = m_v1->Genre();
    if (out != cells) m_filenames->setRowTexts(row, out);
    return true;
}

void MediaLibrary::filenames_ShowID3Data() {
    auto row = std::make_shared<int>(0);
    queue([this, row] {
        while (*row < m_filenames->count()) {
            readTags((*row)++);
            if (sliceOver()) {
                Q_EMIT progress(*row, m_filenames->count());
                return false;
            }
        }
        return true;
    });
}

void MediaLibrary::library_Update() {
    ResultsEnabled = false;
    // Cells are read in place: nothing changes the set while the side lists are gathered.
    using Seen = std::unordered_set<QAnyStringView, TextKey::Hash, TextKey::Equal>;
    std::vector<QAnyStringView> artists, years, albums;
    Seen seenArtist, seenYear, seenAlbum;
    const auto take = [](QAnyStringView text, Seen& seen, std::vector<QAnyStringView>& out) {
        const QAnyStringView key = TextKey::shown(text);
        if (key.isEmpty()) return;
        if (seen.insert(key).second) out.push_back(text);
    };
    m_files->refresh();
    const ListModel& set = *m_filenames;
    const int n = set.count();
    for (int i = 0; i < n; ++i) {
        if (!rowFileExists(i)) continue;
        take(set.textView(i, LibraryColumn::Artist), seenArtist, artists);
        take(set.textView(i, LibraryColumn::Year), seenYear, years);
        take(set.textView(i, LibraryColumn::Album), seenAlbum, albums);
    }
    m_artist->clear();
    m_year->clear();
    m_album->clear();
    const auto fill = [](ListModel& list, const std::vector<QAnyStringView>& texts) {
        list.appendRows(int(texts.size()), [&texts](int row, int) { return texts[size_t(row)]; });
    };
    fill(*m_artist, artists);
    fill(*m_year, years);
    fill(*m_album, albums);
    // The side lists mark nothing until the user chooses.
    for (ListModel* side : {m_artist, m_album, m_year})
        side->clearSelection();
    ResultsEnabled = true;
}

bool MediaLibrary::rowFileExists(int row) {
    const int n = m_filenames->count();
    if (m_rowFile.size() != size_t(n) || m_rowFileGeneration != m_files->generation()) {
        m_rowFile.assign(size_t(n), 0);
        m_rowFileGeneration = m_files->generation();
    }
    quint8& known = m_rowFile[size_t(row)];
    if (known) return known == 1;
    bool remembered = false;
    const bool there =
        m_files->exists(m_filenames->textView(row, LibraryColumn::Path), &remembered);
    if (remembered) known = there ? 1 : 2;
    return there;
}

void MediaLibrary::forgetRowFiles(int first, int last) {
    for (int i = qMax(0, first); i <= last && i < int(m_rowFile.size()); ++i)
        m_rowFile[size_t(i)] = 0;
}

int MediaLibrary::list_FindText(const ListModel& list, const QString& text) const {
    const QStringView wanted = shown(text);
    for (int i = 0; i < list.count(); ++i)
        if (QAnyStringView::equal(TextKey::shown(list.textView(i, 0)), wanted)) return i;
    return -1;
}

void MediaLibrary::results_Add(const QString& artist, const QString& title, const QString& year,
                               const QString& length, const QString& path) {
    m_results->addRow({artist, title, year, length, path});
}

void MediaLibrary::results_Find(const QString& text, int column) {
    if (!ResultsEnabled) return;
    m_results->clear();
    if (column < 0 || column >= m_filenames->columns()) return;
    const QString typed = shown(text).toString();
    const QString wanted = typed.toLower();
    std::vector<QStringList> found;
    m_files->refresh();
    const int n = m_filenames->count();
    for (int i = 0; i < n; ++i) {
        const QAnyStringView cell = TextKey::shown(m_filenames->textView(i, column));
        // Lower case changes no length in the common case; only then is the lower case made.
        if (cell.size() != wanted.size() && cell.size() != typed.size()) continue;
        if (!lowerCaseEquals(cell, wanted)) continue;
        if (!rowFileExists(i)) continue;
        const QStringList cells = m_filenames->rowTexts(i);
        const QString& path = cells.at(LibraryColumn::Path);
        media_ReadMP3Info(path);
        const QString length = media_FormatSeconds(leadingNumber(media_MP3State().MP3Length));
        found.push_back({cells.at(LibraryColumn::Artist), cells.at(LibraryColumn::Title),
                         cells.at(LibraryColumn::Year), length, path});
    }
    m_results->appendRows(std::move(found));
}

void MediaLibrary::window_SavePlaylist(const QString& path) {
    setStatusText(QStringLiteral("Status:  Saving playlist..."));
    QByteArray bytes;
    for (int i = 0; i < m_results->count(); ++i) {
        const QStringList r = m_results->rowTexts(i);
        bytes += ListFiles::encodeRow({QString(), r[ResultColumn::Artist], r[ResultColumn::Title],
                                       r[ResultColumn::Year], QStringLiteral("Play"),
                                       r[ResultColumn::Length], r[ResultColumn::Path]});
    }
    modFiles::file_WriteAtomic(path, bytes);
    setStatusText(QStringLiteral("Status:  Waiting..."));
}

// --- views

QStringList MediaLibrary::library_PlaylistNames() {
    const QStringList files =
        QDir(App::file(QStringLiteral("Playlists")))
            .entryList({QStringLiteral("*.spp")}, QDir::Files, QDir::Name | QDir::IgnoreCase);
    QStringList names;
    for (const QString& f : files) {
        const QString title = modFiles::file_GetTitle(f);
        if (title.toLower() != QLatin1String("default")) names.append(title);
    }
    return names;
}

void MediaLibrary::selectSideEntry(ListModel& list, int row) {
    m_selectingInCode = true;
    for (ListModel* side : {m_artist, m_album, m_year})
        if (side != &list) side->clearSelection();
    list.clearSelection();
    list.setCurrentRow(row);
    list.setSelected(row, true);
    list.ensureVisible(row);
    Q_EMIT sideListSelected(&list, row);
    m_selectingInCode = false;
}

void MediaLibrary::sideList_Click(ListModel& list) {
    const int row = list.selectedItem();
    if (row < 0) return;
    const int column = &list == m_artist  ? LibraryColumn::Artist
                       : &list == m_album ? LibraryColumn::Album
                                          : LibraryColumn::Year;
    results_Find(list.text(row, 0), column);
}

void MediaLibrary::txtSearch_Change(const QString& text) {
    const std::pair<ListModel*, int> order[] = {{m_artist, LibraryColumn::Artist},
                                                {m_year, LibraryColumn::Year},
                                                {m_album, LibraryColumn::Album}};
    for (const auto& [list, column] : order) {
        const int row = list_FindText(*list, text);
        if (row < 0) continue;
        selectSideEntry(*list, row);
        results_Find(text, column);
        return;
    }
}

void MediaLibrary::showMore(int column, const QString& text) {
    const auto show = [this, column, text] {
        ListModel* list = column == LibraryColumn::Year ? m_year : m_artist;
        const int row = list_FindText(*list, text);
        if (row >= 0) selectSideEntry(*list, row);
        results_Find(text, column);
    };
    if (isWorking())
        queue([show] {
            show();
            return true;
        });
    else
        show();
}

void MediaLibrary::updateLater() {
    if (!m_updateTick.isActive()) m_updateTick.start();
}

QString MediaLibrary::songsText() const {
    return m_songs;
}

void MediaLibrary::tmrWindowUpdate_Timer() {
    Commands& c = *m_commands;
    c.setEnabled(QStringLiteral("mnuImportCurrentPlaylist"), m_ctx.lstvPlaylist().count() > 0);
    const bool rows = m_filenames->count() > 0;
    c.setEnabled(QStringLiteral("mnuRemoveDuplicateFilenames"), rows);
    c.setEnabled(QStringLiteral("mnuRemoveAlDeadFilenames"), rows);
    const int results = m_results->count();
    for (const char* name : {"mnuExportToVELDOR", "mnuSaveAs", "mnuSendTo", "mnuRemoveSelected"})
        c.setEnabled(QString::fromLatin1(name), results > 0);
    const QString songs = results == 0 ? QStringLiteral("Songs:  None")
                                       : QStringLiteral("Songs:  ") + QString::number(results);
    if (songs != m_songs) Q_EMIT songsTextChanged(m_songs = songs);
}
