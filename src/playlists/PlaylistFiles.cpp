#include "playlists/PlaylistFiles.h"

#include "core/App.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/MainContext.h"
#include "core/modFiles.h"
#include "playlists/Exports.h"
#include "playlists/ListFiles.h"
#include "core/ListModel.h"
#include "core/PlaylistCombo.h"
#include "playlists/PlaylistRows.h"
#include "playlists/SendToMenu.h"
#include "core/modControls.h"

#include <QDir>
#include <QFile>

namespace {

const QString kNotFoundTitle = QStringLiteral("Playlist Filename Not Found");
const int kFilenameColumn = 6;

QString selectPlaylistText() {
    return QString::fromUtf16(kSelectPlaylist);
}

QString playlistsFolder() {
    return App::file(QStringLiteral("Playlists"));
}

// The file title: the name without its last extension (a name without one stays whole).
QString titleOf(const QString& path) {
    const QString name = path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? name : name.left(dot);
}

void resetPlayNext(MainContext& ctx) {
    ctx.PlayNextRowIndex = 0;
    ctx.commands().setCaption(QStringLiteral("mnuPlayNext"), QStringLiteral("Play Ne&xt...\tX"));
}

void tellRecentPlaylists(MainContext& ctx, const QString& path) {
    if (ctx.recentPlaylists_Add) ctx.recentPlaylists_Add(path);
    if (ctx.commands().isChecked(QStringLiteral("mnuOpenMediaLibrary")))
        ctx.call(ctx.mediaLibrary_RefreshRecent);
}

// Writes the rows as the kind chosen in the Save As dialog; the log line follows a written file.
bool saveByKind(MainContext& ctx, const QString& path, int kind) {
    if (kind == 2) {
        if (!player_SaveHTMLPlaylist(ctx, path)) return false;
        window_WriteLog(path + QStringLiteral(" saved as HTML playlist."));
    } else if (kind == 3) {
        if (!player_SaveTEXTPlaylist(ctx, path)) return false;
        window_WriteLog(path + QStringLiteral(" saved as TEXT playlist."));
    } else {
        if (!listview_SaveToFile(ctx.lstvPlaylist(), path)) return false;
        window_WriteLog(path + QStringLiteral(" saved as playlist."));
    }
    return true;
}

} // namespace

QString playlist_PathOf(const QString& name) {
    return playlistsFolder() + QLatin1Char('/') + name + QStringLiteral(".spp");
}

void window_RemoveFilenameMenus(MainContext& ctx) {
    SendToMenu::of(ctx).unloadAbove0();
}

void window_InstallPlaylists(MainContext& ctx) {
    SendToMenu& menu = SendToMenu::of(ctx);
    window_RemoveFilenameMenus(ctx);
    SendToMenu::Item first = menu.item(0);
    first.visible = false;
    first.enabled = true;
    menu.setItem(0, first);

    PlaylistCombo& combo = ctx.cmbPlaylists();
    combo.addItem(selectPlaylistText());
    // Sorted by name: the order of the folder itself means nothing on this platform.
    const QStringList files =
        QDir(playlistsFolder())
            .entryList({QStringLiteral("*.spp")}, QDir::Files | QDir::CaseSensitive,
                       QDir::Name | QDir::IgnoreCase);
    for (const QString& file : files) {
        const QString title = titleOf(file);
        if (title.toLower() == QLatin1String("default")) continue;
        combo.addItem(title);
        menu.load(title);
    }
    if (menu.count() == 1) menu.setItem(0, {QStringLiteral("[None]"), true, false});
}

void mnuUpdate_Click(MainContext& ctx) {
    const QString remembered = playlist_PathOf(ctx.cmbPlaylists().text());
    ctx.cmbPlaylists().clear();
    window_RemoveFilenameMenus(ctx);
    window_InstallPlaylists(ctx);
    playlist_Select(ctx, remembered);
}

void playlist_Select(MainContext& ctx, const QString& name) {
    const QString title = titleOf(name);
    PlaylistCombo& combo = ctx.cmbPlaylists();
    combo.setListIndex(0); // entry 0 opens nothing
    ctx.PlaylistComboReady = false;
    int match = 0;
    for (int i = 1; i < combo.count(); ++i)
        if (combo.items()[i] == title) match = i; // the last of equal entries wins
    combo.setListIndex(match);
    ctx.PlaylistComboReady = true;
}

void cmbPlaylists_Click(MainContext& ctx) {
    PlaylistCombo& combo = ctx.cmbPlaylists();
    const QString text = combo.text();
    if (!ctx.PlaylistComboReady || text.isEmpty() || text == selectPlaylistText()) return;
    const QString path = playlist_PathOf(text);
    if (!modFiles::file_Exists(path)) {
        Dialogs::msgBox(QStringLiteral("It has been detected the playlist you are trying to open "
                                       "does not exist.\n\nPlease check the playlist file path "
                                       "before continuing.\n"),
                        Dialogs::vbExclamation, kNotFoundTitle);
        combo.setListIndex(0);
        mnuUpdate_Click(ctx);
        return;
    }
    resetPlayNext(ctx);
    ctx.call(ctx.window_ResetRandomFilenames);
    ListModel& list = ctx.lstvPlaylist();
    listview_Clear(list);
    listview_LoadFromFile(list, path);
    window_WriteLog(path + QStringLiteral(" opened."));
    listview_SelectItem(list, 1);
    ctx.PlayingRowIndex = 1;
    listview_Renumber(list);
    ctx.commands().run(QStringLiteral("mnuJumpToCurrentlyPlaying"));
    ctx.call(ctx.window_UncheckMenus);
    ctx.call(ctx.focusPlaylist);
}

void mnuNew_Click(MainContext& ctx) {
    ctx.call(ctx.player_Stop);
    ctx.PlayingRowIndex = 1;
    resetPlayNext(ctx);
    // Showing entry 0 is not a user's choice: nothing may open while it changes.
    ctx.PlaylistComboReady = false;
    ctx.cmbPlaylists().setListIndex(0);
    ctx.PlaylistComboReady = true;
    window_WriteLog(QStringLiteral("Playlist cleared."));
    listview_Clear(ctx.lstvPlaylist());
    ctx.call(ctx.window_ResetRandomFilenames);
    ctx.call(ctx.window_UncheckMenus);
}

void mnuOpenPlaylist_Click(MainContext& ctx) {
    Dialogs::FileRequest request;
    request.title = QStringLiteral("Open Playlist...");
    request.initDir = playlistsFolder();
    request.flags = 4;
    request.filter = App::Title() + QStringLiteral(" Playlists|*.spp|");
    const QString path = Dialogs::showOpen(request).path;
    if (path.isEmpty()) return;
    ListModel& list = ctx.lstvPlaylist();
    listview_Clear(list);
    ctx.call(ctx.window_ResetRandomFilenames);
    listview_LoadFromFile(list, path);
    tellRecentPlaylists(ctx, path);
    listview_Renumber(list);
    playlist_CheckEntries(ctx);
    ctx.call(ctx.window_UncheckMenus);
    ctx.commands().run(QStringLiteral("mnuJumpToCurrentlyPlaying"));
    playlist_Select(ctx, path);
    modFiles::file_AddToRecentDocuments(path);
    window_WriteLog(path + QStringLiteral(" opened."));
}

void mnuSave_Click(MainContext& ctx) {
    const QString text = ctx.cmbPlaylists().text();
    if (text.isEmpty() || text.toLower() == selectPlaylistText().toLower())
        return mnuSavePlaylistAs_Click(ctx);
    // One atomic replace in place of delete-then-write: the old rows stay if the write fails.
    listview_SaveToFile(ctx.lstvPlaylist(), playlist_PathOf(text));
}

void mnuSaveAsDefault_Click(MainContext& ctx) {
    // Unlike the exit, an empty list leaves default.spp as it is.
    if (ctx.lstvPlaylist().count() > 0)
        listview_SaveToFile(ctx.lstvPlaylist(), playlist_DefaultPath());
    ctx.call(ctx.window_UncheckMenus);
}

void mnuSavePlaylistAs_Click(MainContext& ctx) {
    Dialogs::FileRequest request;
    request.title = QStringLiteral("Save Playlist...");
    request.initDir = playlistsFolder();
    request.flags = 4;
    request.filter =
        App::Title() + QStringLiteral(" Playlist|*.spp|HTML Playlist|*.html|TEXT Playlist|*.txt|");
    const Dialogs::FileResult chosen = Dialogs::showSave(request);
    const QString& path = chosen.path;
    if (path.isEmpty()) return;
    // The kind is the chosen filter alone; the typed extension has no say.
    const int kind = chosen.filterIndex;
    const bool listFile = kind != 2 && kind != 3;

    if (!modFiles::file_Exists(path)) {
        if (!saveByKind(ctx, path, kind) || !listFile) return;
        ctx.cmbPlaylists().clear();
        window_InstallPlaylists(ctx);
        tellRecentPlaylists(ctx, path);
        playlist_Select(ctx, path);
        ctx.call(ctx.window_UncheckMenus);
        return;
    }

    if (Dialogs::msgBox(QStringLiteral("The filename you have entered/selected already exists.\n\n"
                                       "Would you like to overwrite this file?\n"),
                        Dialogs::vbExclamation | Dialogs::vbYesNo,
                        QStringLiteral("Overwrite Existing File Confirmation")) != Dialogs::vbYes)
        return;
    // The new file replaces the old in one step, so a failed write keeps the old one.
    if (!saveByKind(ctx, path, kind) || !listFile) return;
    ctx.call(ctx.window_UncheckMenus);
    playlist_Select(ctx, path);
}

void mnuItem_Click(MainContext& ctx, int index) {
    SendToMenu& menu = SendToMenu::of(ctx);
    if (index <= 0 || index >= menu.count()) return;
    const QString name = menu.item(index).caption;
    const QString path = playlist_PathOf(name);
    ListModel& list = ctx.lstvPlaylist();
    for (int row = 0; row < list.count(); ++row) {
        if (!list.isSelected(row)) continue;
        const QStringList cells = list.rowTexts(row);
        if (!modFiles::file_Exists(path)) {
            Dialogs::msgBox(QStringLiteral("It has been detected the playlist you are trying to "
                                           "access does not exist.\n\nPlease check the playlist "
                                           "file path before continuing.\n"),
                            Dialogs::vbExclamation, kNotFoundTitle);
            return;
        }
        const QString filename = cells.value(kFilenameColumn);
        if (modFiles::file_ContainsEntry(path, filename)) {
            Dialogs::msgBox(QStringLiteral("The song/video you have selected is already in this "
                                           "playlist.\n\nThis song will not be copied into the "
                                           "playlist.\n"),
                            Dialogs::vbInformation,
                            QStringLiteral("Song/Video Already In Playlist"));
            continue;
        }
        // Read, append, replace: the playlist is never left half-written.
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) return;
        QByteArray bytes = file.readAll();
        file.close();
        if (!bytes.isEmpty() && !bytes.endsWith('\n')) bytes += "\r\n";
        bytes += ListFiles::encodeRow(cells);
        if (!modFiles::file_WriteAtomic(path, bytes)) return;
        window_WriteLog(filename + QStringLiteral(" added to '") + name +
                        QStringLiteral("' Playlist."));
    }
}

void PlaylistFiles_install(MainContext& ctx) {
    Commands& c = ctx.commands();
    MainContext* p = &ctx;
    c.setHandler(QStringLiteral("mnuNew"), [p] { mnuNew_Click(*p); });
    c.setHandler(QStringLiteral("mnuOpenPlaylist"), [p] { mnuOpenPlaylist_Click(*p); });
    c.setHandler(QStringLiteral("mnuSave"), [p] { mnuSave_Click(*p); });
    c.setHandler(QStringLiteral("mnuSavePlaylistAs"), [p] { mnuSavePlaylistAs_Click(*p); });
    c.setHandler(QStringLiteral("mnuSaveAsDefault"), [p] { mnuSaveAsDefault_Click(*p); });
    c.setHandler(QStringLiteral("mnuPrint"), [p] { mnuPrint_Click(*p); });
    c.setHandler(QStringLiteral("mnuUpdate"), [p] { mnuUpdate_Click(*p); });
    QObject::connect(&ctx.cmbPlaylists(), &PlaylistCombo::clicked, &ctx,
                     [p] { cmbPlaylists_Click(*p); });
}
