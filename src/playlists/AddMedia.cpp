#include "playlists/AddMedia.h"

#include "core/App.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/PlaylistCombo.h"
#include "core/Settings.h"
#include "core/modControls.h"
#include "core/modDirectorys.h"
#include "core/modFiles.h"
#include "playlists/Bookmarks.h"
#include "playlists/DirectoryAdd.h"
#include "playlists/FrmAddLocation.h"
#include "playlists/ListFiles.h"
#include "playlists/Moods.h"
#include "playlists/PlaylistMenus.h"
#include "playlists/PlaylistRows.h"
#include "playlists/modRecentMedia.h"
#include "playlists/modRecentPlaylists.h"
#include "ui/ListView.h"

#include <QSet>

namespace {

const QString kSettings = QStringLiteral("Settings");

bool tagsAsAdded(MainContext& ctx) {
    return ctx.commands().isChecked(QStringLiteral("mnuTagsShowTagsAsFilesAreAdded"));
}

void tellMediaLibrary(MainContext& ctx) {
    if (ctx.commands().isChecked(QStringLiteral("mnuOpenMediaLibrary")))
        ctx.call(ctx.mediaLibrary_RefreshRecent);
}

// The add rule of sorted lists: no sorting while rows come in, one sort after the last.
class SortPause {
public:
    explicit SortPause(MainContext& ctx)
        : m_list(ctx.lstvPlaylist()),
          m_active(!ctx.commands().isChecked(QStringLiteral("mnuDontSort"))) {
        if (m_active) m_list.setSorted(false);
    }
    ~SortPause() {
        if (m_active) m_list.setSorted(true);
    }

private:
    ListModel& m_list;
    bool m_active;
};

void addOne(MainContext& ctx, const QString& path) {
    playlist_AddSong(ctx, QString(), QString(), QString(), path);
    window_WriteLog(path + QStringLiteral(" added to playlist."));
    if (tagsAsAdded(ctx)) playlist_UpdateItem(ctx, ctx.lstvPlaylist().count(), false);
}

} // namespace

QString media_AddFilesFilter() {
    return QStringLiteral(
        "MP3 File|*.mp3|MP2 File|*.mp2|MP1 File|*.mp1|MIDI Files|*.mid;*.rmi;*.midi|Windows Audio "
        "Files|*.wav;*.snd;*.au;*.aif;*.aifc;*.aiff;*.wma|Windows Video Files|*.avi;*.wmv|Movie "
        "Files|*.mpeg;*.mpe;*.mpg;*.m1v;*.mpa|All Supported Video "
        "Files|*.avi;*.wmv;*.mpeg;*.mpe;*.mpg;*.m1v;*.mpa|Other Media Files|*.*|");
}

bool media_IsRecognised(const QString& extension) {
    static const QSet<QString> known = {
        QStringLiteral("mp3"),  QStringLiteral("mp2"),  QStringLiteral("mp1"),
        QStringLiteral("mid"),  QStringLiteral("rmi"),  QStringLiteral("midi"),
        QStringLiteral("wav"),  QStringLiteral("snd"),  QStringLiteral("au"),
        QStringLiteral("aif"),  QStringLiteral("aifc"), QStringLiteral("aiff"),
        QStringLiteral("wma"),  QStringLiteral("avi"),  QStringLiteral("wmv"),
        QStringLiteral("mpeg"), QStringLiteral("mpe"),  QStringLiteral("mpg"),
        QStringLiteral("m1v"),  QStringLiteral("mpa")};
    return known.contains(extension);
}

QStringList media_ChooseFiles(const QString& title) {
    Dialogs::FileRequest request;
    request.title = title;
    request.initDir =
        settings_Read(kSettings, QStringLiteral("LastDirectoryUsed"), QStringLiteral("C:\\"));
    request.flags = 524804; // explorer style, several files, no read-only box
    request.filter = media_AddFilesFilter();
    const QString chosen = Dialogs::showOpen(request).path;
    if (chosen.isEmpty()) return {};
    // Several files come as the folder, then each name, NUL between them.
    const QStringList parts = chosen.split(QChar(0));
    if (parts.size() - 1 >= 101) {
        Dialogs::msgBox(QStringLiteral("You have selected to many songs to add from this "
                                       "directory.\n\nUse the 'Add Directory' option instead if "
                                       "you want to add all of the songs from this directory.\n"),
                        Dialogs::vbExclamation, QStringLiteral("Add Files Error"));
        return {};
    }
    if (parts.size() == 1) return parts;
    const QString folder =
        parts.first().endsWith(QLatin1Char('/')) ? parts.first() : parts.first() + '/';
    QStringList files;
    for (qsizetype i = 1; i < parts.size(); ++i)
        if (!parts[i].isEmpty()) files.append(folder + parts[i]);
    return files;
}

void mnuAddFiles_Click(MainContext& ctx) {
    const QStringList files = media_ChooseFiles(QStringLiteral("Add Files To Playlist..."));
    if (files.isEmpty()) return;
    ctx.beginBusy(QStringLiteral("Adding entries to the playlist, please wait..."));
    {
        SortPause pause(ctx);
        for (const QString& path : files)
            addOne(ctx, path);
    }
    if (!files.isEmpty())
        settings_Write(kSettings, QStringLiteral("LastDirectoryUsed"),
                       modFiles::file_GetDirectory(files.last()));
    if (files.size() == 1) recent_AddMedia(files.first(), ctx);
    tellMediaLibrary(ctx);
    listview_Renumber(ctx.lstvPlaylist());
    playlist_CheckEntries(ctx);
    ctx.endBusy();
}

void mnuAddDirectory_Click(MainContext& ctx) {
    if (DirectoryAdd::running(ctx)) return;
    const QString directory = modDirectorys::directory_Browse(
        nullptr, settings_Read(kSettings, QStringLiteral("DirectoryPath"), QStringLiteral("C:\\")));
    if (directory.isEmpty()) return;
    settings_Write(kSettings, QStringLiteral("DirectoryPath"), directory);
    DirectoryAdd::start(ctx, directory,
                        QStringLiteral("Adding media files to playlist, please wait..."));
}

void mnuAddPlaylist_Click(MainContext& ctx) {
    Dialogs::FileRequest request;
    request.title = QStringLiteral("Open Playlist...");
    request.initDir = App::file(QStringLiteral("Playlists"));
    request.flags = 4;
    request.filter = App::Title() + QStringLiteral(" Playlists|*.spp|");
    const QString path = Dialogs::showOpen(request).path;
    if (path.isEmpty()) return;
    ListModel& list = ctx.lstvPlaylist();
    listview_LoadFromFile(list, path); // appended: the rows already there stay
    if (ctx.recentPlaylists_Add) ctx.recentPlaylists_Add(path);
    tellMediaLibrary(ctx);
    listview_Renumber(list);
    playlist_CheckEntries(ctx);
    window_WriteLog(path + QStringLiteral(" added onto to the current playlist (") +
                    ctx.cmbPlaylists().text() + QStringLiteral(")."));
}

void lstvPlaylist_FilesDropped(MainContext& ctx, const QStringList& paths) {
    if (paths.isEmpty()) return;
    {
        SortPause pause(ctx);
        for (const QString& path : paths) {
            // Kept simple on purpose: the first file of another type ends the whole drop.
            if (!media_IsRecognised(modFiles::file_GetExtension(path.toLower()))) break;
            addOne(ctx, path);
            recent_AddMedia(path, ctx);
        }
    }
    listview_Renumber(ctx.lstvPlaylist());
    playlist_CheckEntries(ctx);
}

void AddMedia_install(MainContext& ctx) {
    Commands& c = ctx.commands();
    MainContext* p = &ctx;
    c.setHandler(QStringLiteral("mnuAddFiles"), [p] { mnuAddFiles_Click(*p); });
    c.setHandler(QStringLiteral("mnuAddDirectory"), [p] { mnuAddDirectory_Click(*p); });
    c.setHandler(QStringLiteral("mnuAddLocation"), [p] { mnuAddLocation_Click(*p); });
    c.setHandler(QStringLiteral("mnuAddPlaylist"), [p] { mnuAddPlaylist_Click(*p); });
    Moods_install(ctx);
    Bookmarks_install(ctx);
    RecentLists_install(ctx);
    PlaylistMenus_install(ctx);
}

void AddMedia_connectView(MainContext& ctx, ListView* view) {
    MainContext* p = &ctx;
    QObject::connect(view, &ListView::filesDropped, view, [p](const QStringList& paths) {
        if (!p->PlaylistDragActive && !DirectoryAdd::running(*p))
            lstvPlaylist_FilesDropped(*p, paths);
    });
    // The list is not repainted while a folder add fills it; once it ends the view catches up.
    QObject::connect(&ctx, &MainContext::busyChanged, view, [p, view](bool busy) {
        view->setUpdatesEnabled(!busy || !DirectoryAdd::running(*p));
    });
}
