#include "playlists/ManagePlaylists.h"

#include "core/App.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/PlaylistCombo.h"
#include "core/Settings.h"
#include "core/modControls.h"
#include "core/modFiles.h"
#include "playlists/FrmManagePlaylists.h"
#include "playlists/FrmRenamePlaylist.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/modRecentPlaylists.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLocale>

namespace {

const QString kRenameTitle = QStringLiteral("Renaming Playlist Name Error");

QString playlistsFolder() {
    return App::file(QStringLiteral("Playlists"));
}

void renameWarning(const QString& text) {
    Dialogs::msgBox(text, Dialogs::vbExclamation, kRenameTitle);
}

// The nine characters a file name of the original platform could not hold; a leading dot would
// hide the file from every list here.
bool unsupportedName(const QString& name) {
    static const QString bad = QStringLiteral("\\/:*?\"<>|");
    for (QChar c : name)
        if (bad.contains(c) || c.unicode() < 32) return true;
    return name.startsWith(QLatin1Char('.'));
}

void tellRecent(MainContext& ctx) {
    if (ctx.commands().isChecked(QStringLiteral("mnuOpenMediaLibrary")))
        ctx.call(ctx.mediaLibrary_RefreshRecent);
}

bool useTrash() {
    return settings_Read(QStringLiteral("Settings"), QStringLiteral("SendMediaFilesToRecycleBin"),
                         QStringLiteral("1")) == QLatin1String("1");
}

// Deletes one file by the user's choice of Trash or not; true when it is gone.
bool removeFile(const QString& path) {
    if (!QFileInfo::exists(path)) return true; // gone already, by other hands
    if (useTrash())
        modFiles::file_SendToRecycleBin(path, false, true);
    else
        modFiles::file_Delete(path);
    return !QFileInfo::exists(path);
}

} // namespace

std::vector<PlaylistFileInfo> manage_ListPlaylists() {
    std::vector<PlaylistFileInfo> out;
    const QDir folder(playlistsFolder());
    const QFileInfoList files =
        folder.entryInfoList({QStringLiteral("*.spp")}, QDir::Files | QDir::CaseSensitive,
                             QDir::Name | QDir::IgnoreCase);
    const QLocale locale = QLocale::system();
    out.reserve(size_t(files.size()));
    for (const QFileInfo& info : files) {
        const QString title = info.completeBaseName();
        if (title.toLower() == QLatin1String("default")) continue;
        const long lines = modFiles::file_CountLines(info.filePath());
        out.push_back({title, QString::number(qRound(double(lines) / 7.0)),
                       locale.toString(info.lastModified(), QLocale::ShortFormat)});
    }
    return out;
}

RenameResult playlist_Rename(MainContext& ctx, const QString& oldPath, const QString& newName) {
    if (newName.isEmpty()) {
        renameWarning(QStringLiteral("It has been detected that you have not entered a new "
                                     "playlist name.\n\nThis function will not be proformed.\n"));
        return RenameResult::Refused;
    }
    if (!QFileInfo(oldPath).isFile()) {
        renameWarning(QStringLiteral("It has been detected that the playlist you are trying to "
                                     "rename does not exist.\n\nThis function will not be "
                                     "proformed.\n"));
        return RenameResult::Refused;
    }
    if (unsupportedName(newName)) {
        renameWarning(QStringLiteral("It has been detected that you have entered a character "
                                     "that is not supported.\n\nYou cannot use any of the "
                                     "following characters:\n\\ / : * ? \" < > |\n\nThis "
                                     "function will not be proformed.\n"));
        return RenameResult::Refused;
    }
    if (modFiles::file_HasAttributes(oldPath, 1) &&
        Dialogs::msgBox(QStringLiteral("It has been detected that the playlist you are trying to "
                                       "rename is Read-Only.\n\nDo you wish to continue?\n"),
                        Dialogs::vbQuestion | Dialogs::vbYesNo,
                        QStringLiteral("Renaming Playlist Name Confirmation")) != Dialogs::vbYes)
        return RenameResult::Refused;
    const QString newPath =
        modFiles::file_GetDirectory(oldPath) + QLatin1Char('/') + newName + QStringLiteral(".spp");
    // A target that exists is never replaced: the rename fails and both files stay.
    if (!modFiles::file_Rename(oldPath, newPath)) {
        renameWarning(QStringLiteral("An error has occur while trying to rename the playlists "
                                     "filename.  Make sure that the file is not in use."));
        return RenameResult::Failed;
    }
    window_WriteLog(QStringLiteral("Playlist %1 was renamed to %2.")
                        .arg(modFiles::file_GetName(oldPath), modFiles::file_GetName(newPath)));
    recent_RenamePlaylist(oldPath, newPath, ctx);
    tellRecent(ctx);
    return RenameResult::Renamed;
}

void manage_Refresh(MainContext& ctx, const QHash<QString, QString>& renamed) {
    PlaylistCombo& combo = ctx.cmbPlaylists();
    const QString shown = combo.listIndex() > 0 ? combo.text() : QString();
    const QString keep = renamed.value(shown, shown);
    combo.clear();
    window_RemoveFilenameMenus(ctx);
    window_InstallPlaylists(ctx);
    playlist_Select(ctx, keep.isEmpty() ? QString() : playlist_PathOf(keep));
}

bool playlist_DeleteFile(MainContext& ctx, const QString& path) {
    if (Dialogs::msgBox(QStringLiteral("You are about to physically delete the file from your "
                                       "computer:\n%1\n\nDo you wish to continue?\n")
                            .arg(path),
                        Dialogs::vbQuestion | Dialogs::vbYesNo,
                        QStringLiteral("Delete Current Playlist Confirmation")) != Dialogs::vbYes)
        return false;
    window_WriteLog(path + QStringLiteral(" was deleted."));
    if (!removeFile(path)) return false;
    recent_ForgetPlaylist(path, ctx);
    tellRecent(ctx);
    return true;
}

bool playlist_DeleteAll(MainContext& ctx) {
    if (Dialogs::msgBox(QStringLiteral("You are about to physically delete all of the playlists "
                                       "from your computer.\n\nDo you wish to continue?\n"),
                        Dialogs::vbQuestion | Dialogs::vbYesNo,
                        QStringLiteral("Delete All Playlists Confirmation")) != Dialogs::vbYes)
        return false;
    const QString folder = playlistsFolder();
    const QStringList names =
        QDir(folder).entryList({QStringLiteral("*.spp")}, QDir::Files | QDir::CaseSensitive,
                               QDir::Name | QDir::IgnoreCase);
    const bool trash = useTrash();
    for (const QString& name : names) {
        const QString path = folder + QLatin1Char('/') + name;
        window_WriteLog(path + QStringLiteral(" playlist was deleted."));
        if (removeFile(path))
            recent_ForgetPlaylist(path, ctx);
        else if (trash)
            break; // the Trash has said why once; the rest would fail the same way
    }
    tellRecent(ctx);
    manage_Refresh(ctx);
    return true;
}

void mnuManagePlaylists_Click(MainContext& ctx) {
    FrmManagePlaylists::open(ctx);
}

void mnuRenameCurrentPlaylist_Click(MainContext& ctx) {
    const PlaylistCombo& combo = ctx.cmbPlaylists();
    if (combo.listIndex() <= 0) return;
    FrmRenamePlaylist::open(ctx, playlist_PathOf(combo.text()), -1);
}

void mnuDeleteCurrentPlaylist_Click(MainContext& ctx) {
    PlaylistCombo& combo = ctx.cmbPlaylists();
    if (combo.listIndex() <= 0) return;
    const QString path = playlist_PathOf(combo.text());
    if (!playlist_DeleteFile(ctx, path)) return;
    // The rows were that playlist: they go with it, and the combo shows no playlist.
    manage_Refresh(ctx);
    listview_Clear(ctx.lstvPlaylist());
    ctx.PlaylistComboReady = false;
    combo.setListIndex(0);
    ctx.PlaylistComboReady = true;
}

void mnuDeleteAllPlaylists_Click(MainContext& ctx) {
    playlist_DeleteAll(ctx);
}

void ManagePlaylists_install(MainContext& ctx) {
    Commands& c = ctx.commands();
    MainContext* p = &ctx;
    c.setHandler(QStringLiteral("mnuManagePlaylists"), [p] { mnuManagePlaylists_Click(*p); });
    c.setHandler(QStringLiteral("mnuRenameCurrentPlaylist"),
                 [p] { mnuRenameCurrentPlaylist_Click(*p); });
    c.setHandler(QStringLiteral("mnuDeleteCurrentPlaylist"),
                 [p] { mnuDeleteCurrentPlaylist_Click(*p); });
    c.setHandler(QStringLiteral("mnuDeleteAllPlaylists"), [p] { mnuDeleteAllPlaylists_Click(*p); });
}
