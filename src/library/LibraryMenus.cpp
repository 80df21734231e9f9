// The Media Library's menu commands: File, Arrange, the moods and the main window's list.
#include "library/MediaLibrary.h"

#include "core/App.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/modControls.h"
#include "core/modDirectorys.h"
#include "core/modFiles.h"
#include "library/ExistenceCache.h"
#include "playlists/AddMedia.h"
#include "playlists/LineFiles.h"
#include "playlists/ListFiles.h"
#include "playlists/MenuArray.h"
#include "playlists/Moods.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/PlaylistRows.h"
#include "playlists/RecentList.h"
#include "playlists/modRecentMedia.h"
#include "playlists/modRecentPlaylists.h"

#include <QHash>

namespace {

const QString kReading = QStringLiteral("Status:  Reading data, please wait...");
const QString kWaiting = QStringLiteral("Status:  Waiting...");

QString playlistsFolder() {
    return App::file(QStringLiteral("Playlists"));
}

Dialogs::FileRequest openPlaylistRequest() {
    Dialogs::FileRequest request;
    request.title = QStringLiteral("Open Playlist...");
    request.initDir = playlistsFolder();
    request.flags = 4;
    request.filter = App::Title() + QStringLiteral(" Playlists|*.spp|");
    return request;
}

// The selected rows' paths, lower-cased as file identity compares them.
QSet<QString> selectedPaths(const ListModel& list, int column) {
    QSet<QString> out;
    const std::vector<bool> mask = list.selectionMask();
    for (int i = 0; i < list.count(); ++i)
        if (mask[size_t(i)]) out.insert(list.text(i, column).toLower());
    return out;
}

} // namespace

void MediaLibrary::loadPlaylist(const QString& path, bool clearFirst) {
    stopWork();
    if (clearFirst) mnuNew_Click();
    setStatusText(kReading);
    listview_LoadFromFile(*m_filenames, path);
    queueShow();
}

void MediaLibrary::addRecentPlaylist(const QString& path) {
    recent_AddPlaylist(path, *this);
    recent_UpdatePlaylistMenu(m_ctx);
}

void MediaLibrary::mnuNew_Click() {
    stopWork();
    m_files->clear();
    m_artist->clear();
    m_year->clear();
    m_album->clear();
    m_filenames->clear();
    m_results->clear();
}

void MediaLibrary::mnuOpen_Click() {
    const QString path = Dialogs::showOpen(openPlaylistRequest()).path;
    if (path.isEmpty()) return;
    loadPlaylist(path, true);
    addRecentPlaylist(path);
}

void MediaLibrary::mnuAddPlaylist_Click() {
    const QString path = Dialogs::showOpen(openPlaylistRequest()).path;
    if (path.isEmpty()) return;
    loadPlaylist(path, false);
    addRecentPlaylist(path);
}

void MediaLibrary::mnuAddFiles_Click() {
    const QStringList files = media_ChooseFiles(QStringLiteral("Add Files..."));
    if (files.isEmpty()) return;
    stopWork();
    for (const QString& path : files) {
        filenames_Add(path);
        window_WriteLog(path + QStringLiteral(" added to Media Library."));
    }
    queueShow();
}

void MediaLibrary::mnuAddDirectory_Click() {
    const QString initial = settings_Read(QStringLiteral("Settings"),
                                          QStringLiteral("DirectoryPath"), QStringLiteral("C:\\"));
    const QString folder = modDirectorys::directory_Browse(nullptr, initial);
    if (folder.isEmpty()) return;
    settings_Write(QStringLiteral("Settings"), QStringLiteral("DirectoryPath"), folder);
    const bool recursive =
        settings_IsOn(QStringLiteral("Settings"), QStringLiteral("DoRecursiveDirectoryScan"),
                      QStringLiteral("1"));
    stopWork();
    setStatusText(QStringLiteral("Reading from:  ") + folder);
    filenames_QueueDirectory(folder, recursive);
    queue([this] {
        setStatusText(QStringLiteral("Status:  Adding media files to library, please wait..."));
        return true;
    });
    queueShow();
}

void MediaLibrary::location_Add(const QString& folder) {
    stopWork();
    setStatusText(QStringLiteral("Reading from:  ") + folder);
    filenames_QueueDirectory(folder, true);
    queueShow();
}

void MediaLibrary::mnuSaveAs_Click() {
    Dialogs::FileRequest request;
    request.title = QStringLiteral("Save Playlist...");
    request.initDir = playlistsFolder();
    request.flags = 2;
    request.filter = App::Title() + QStringLiteral(" Playlist|*.spp|");
    const QString path = Dialogs::showSave(request).path;
    if (path.isEmpty()) return;
    if (modFiles::file_Exists(path)) {
        if (Dialogs::msgBox(QStringLiteral("The filename you have entered/selected already "
                                           "exists.\n\nWould you like to overwrite this file?\n"),
                            Dialogs::vbQuestion | Dialogs::vbYesNo | 16,
                            QStringLiteral("Overwrite Existing File Confirmation")) !=
            Dialogs::vbYes)
            return;
    }
    window_SavePlaylist(path);
    window_WriteLog(path + QStringLiteral(" saved as playlist."));
    window_InstallPlaylists(m_ctx);
    addRecentPlaylist(path);
}

void MediaLibrary::mnuRecentMedia_Click(int index) {
    const QString path = recent_Media().value(index + 1);
    if (!modFiles::file_Exists(path)) {
        Dialogs::msgBox(QStringLiteral("It has been detected the recent filename you are trying "
                                       "to open does not exist.\n\nPlease check the recent file "
                                       "before attempting to open it.\n"),
                        Dialogs::vbExclamation, QStringLiteral("Recent Filename Not Found"));
        recent_RemoveMedia(index + 1, *this);
        recent_UpdateMediaMenu(m_ctx);
        return;
    }
    if (path.toLower().endsWith(QLatin1String(".spp"))) {
        loadPlaylist(path, true);
        return;
    }
    mnuNew_Click();
    filenames_Add(path);
    queueShow();
}

void MediaLibrary::mnuRecentPlaylist_Click(int index) {
    const QString path = recent_Playlists().value(index + 1);
    if (!modFiles::file_Exists(path)) {
        Dialogs::msgBox(QStringLiteral("It has been detected the recent playlist filename you are "
                                       "trying to open does not exist.\n\nPlease check the recent "
                                       "file before attempting to open it.\n"),
                        Dialogs::vbExclamation,
                        QStringLiteral("Recent Playlist Filename Not Found"));
        recent_RemovePlaylist(index + 1, *this);
        recent_UpdatePlaylistMenu(m_ctx);
        return;
    }
    loadPlaylist(path, true);
}

void MediaLibrary::mnuRemoveAlDeadFilenames_Click() {
    if (listview_RemoveDeadEntries(*m_filenames, LibraryColumn::Path) > 0) library_Update();
}

void MediaLibrary::mnuRemoveDuplicateFilenames_Click() {
    const QString title = QStringLiteral("Remove Duplicate Filenames Information");
    QSet<QString> seen;
    std::vector<bool> mask(size_t(m_filenames->count()), false);
    int n = 0;
    for (int i = 0; i < m_filenames->count(); ++i) {
        const QString key = m_filenames->text(i, LibraryColumn::Path).toLower();
        if (seen.contains(key)) {
            mask[size_t(i)] = true;
            ++n;
        } else {
            seen.insert(key);
        }
    }
    if (n == 0) {
        Dialogs::msgBox(QStringLiteral("No duplicate filenames were found within the Media "
                                       "Library.\n\nNo items have been removed from the Media "
                                       "Library.\n"),
                        Dialogs::vbInformation, title);
        return;
    }
    m_filenames->removeRows(mask);
    Dialogs::msgBox(QStringLiteral("These items have been removed.\n"), Dialogs::vbInformation,
                    title);
    window_WriteLog(QStringLiteral("Duplicate filenames removed from Media Librarys:  %1.").arg(n));
}

void MediaLibrary::mnuRemoveSelected_Click() {
    const QSet<QString> paths = selectedPaths(*m_results, ResultColumn::Path);
    if (paths.isEmpty()) return;
    m_results->removeRows(m_results->selectionMask());
    std::vector<bool> mask(size_t(m_filenames->count()), false);
    for (int i = 0; i < m_filenames->count(); ++i)
        mask[size_t(i)] = paths.contains(m_filenames->text(i, LibraryColumn::Path).toLower());
    m_filenames->removeRows(mask);
    library_Update();
}

void MediaLibrary::mnuImportCurrentPlaylist_Click() {
    mnuNew_Click();
    setStatusText(QStringLiteral("Status:  Importing main playlist..."));
    ListModel& playlist = m_ctx.lstvPlaylist();
    std::vector<QStringList> rows;
    rows.reserve(size_t(playlist.count()));
    for (int i = 0; i < playlist.count(); ++i)
        rows.push_back({QString(), QString(), QString(), QString(), QString(), QString(),
                        playlist.text(i, PlaylistColumn::Filename)});
    m_filenames->appendRows(std::move(rows));
    queueShow(QStringLiteral("Playlist from the main window was imported into the Media Library."));
}

void MediaLibrary::mnuExportToVELDOR_Click() {
    m_ctx.commands().run(QStringLiteral("mnuNew"));
    for (int i = 0; i < m_results->count(); ++i)
        playlist_AddSong(m_ctx, QString(), QString(), QString(),
                         m_results->text(i, ResultColumn::Path));
    listview_Renumber(m_ctx.lstvPlaylist());
    playlist_ShowMP3Data(m_ctx, false);
    m_ctx.call(m_ctx.window_UncheckMenus);
    window_WriteLog(QStringLiteral("Playlist from the Media Library was exported into the main "
                                   "window."));
}

void MediaLibrary::mnuSendToOp_Click(int index) {
    const int row = m_results->selectedItem();
    if (row < 0) return;
    MenuArray& menu = MenuArray::of(*this, QStringLiteral("mnuSendToOp"));
    if (index < 0 || index >= menu.count()) return;
    const QString mood = menu.item(index).caption;
    const QString file = mood_FilePath(mood);
    if (file.isEmpty()) return;
    const QString path = m_results->text(row, ResultColumn::Path);
    if (modFiles::file_ContainsEntry(file, path)) {
        Dialogs::msgBox(QStringLiteral("The song/video you have selected is already in this "
                                       "mood.\n\nPlease selected a different song/video before "
                                       "continuing.\n"),
                        Dialogs::vbExclamation, QStringLiteral("Song/Video Already In Mood"));
        return;
    }
    if (!LineFiles::append(file, path)) return;
    window_WriteLog(path + QStringLiteral(" added to '") + mood + QStringLiteral("' Mood."));
    window_UpdateMoods(m_ctx);
}

void MediaLibrary::window_RemoveMoodMenus() {
    MenuArray& menu = MenuArray::of(*this, QStringLiteral("mnuSendToOp"), QStringLiteral("[None]"));
    menu.unloadAbove0();
    menu.setItem(0, {QStringLiteral("[None]"), true, false, false});
}

void MediaLibrary::window_InstallSendToMoods() {
    window_RemoveMoodMenus();
    MenuArray& menu = MenuArray::of(*this, QStringLiteral("mnuSendToOp"));
    const QStringList moods = mood_List();
    for (const QString& mood : moods)
        if (!mood.isEmpty()) menu.load(mood);
    if (menu.count() > 1) menu.setVisible(0, false);
}

void MediaLibrary::mnuUseID3v2Tags_Click() {
    const QString name = QStringLiteral("mnuUseID3v2Tags");
    const bool on = !m_commands->isChecked(name);
    m_commands->setChecked(name, on);
    settings_Write(QStringLiteral("MediaLibrarySettings"), QStringLiteral("UseID3v2Tags"),
                   on ? QStringLiteral("1") : QStringLiteral("0"));
    stopWork();
    filenames_ShowID3Data();
    queue([this] {
        setStatusText(kWaiting);
        return true;
    });
}

void MediaLibrary::window_SelectOption(const QString& parentKey, const QString& nodeText) {
    if (parentKey == QLatin1String("Playlists")) {
        const QString path = playlistsFolder() + QLatin1Char('/') + nodeText + ".spp";
        setStatusText(kReading);
        mnuNew_Click();
        listview_Clear(*m_filenames);
        listview_LoadFromFile(*m_filenames, path);
        queueShow();
    } else if (parentKey == QLatin1String("Moods")) {
        const QString path = mood_FilePath(nodeText);
        if (path.isEmpty() || !modFiles::file_Exists(path)) return;
        setStatusText(kReading);
        mnuNew_Click();
        mood_Open(path);
        queueShow();
    }
}
