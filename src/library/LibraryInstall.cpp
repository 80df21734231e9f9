#include "library/LibraryInstall.h"

#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "library/FrmMediaLibrary.h"
#include "library/MediaLibrary.h"
#include "playlists/PlaylistRows.h"
#include "playlists/modRecentMedia.h"
#include "playlists/modRecentPlaylists.h"

#include <QTimer>

namespace {
const QString kOpen = QStringLiteral("mnuOpenMediaLibrary");
}

MediaLibrary& mediaLibrary_Open(MainContext& ctx) {
    FrmMediaLibrary* window = FrmMediaLibrary::instance();
    if (!window) {
        window = new FrmMediaLibrary(ctx);
        // The window shows the context's rules, so it goes with them.
        QObject::connect(&ctx, &QObject::destroyed, window, [window] { delete window; });
    }
    ctx.commands().setChecked(kOpen, true);
    if (window->isMinimized()) window->showNormal();
    window->show();
    window->raise();
    window->activateWindow();
    // Opened at start-up, the main window shows after it: come up again once it has.
    QTimer::singleShot(0, window, [window] {
        window->raise();
        window->activateWindow();
    });
    return window->library();
}

void mediaLibrary_Close(MainContext& ctx) {
    if (FrmMediaLibrary* window = FrmMediaLibrary::instance()) {
        window->Form_QueryUnload();
        window->hide();
        // Later: the close may come from one of the window's own menus.
        window->deleteLater();
    }
    ctx.commands().setChecked(kOpen, false);
}

void mnuOpenMediaLibrary_Click(MainContext& ctx) {
    if (FrmMediaLibrary::instance() && ctx.commands().isChecked(kOpen))
        mediaLibrary_Close(ctx);
    else
        mediaLibrary_Open(ctx);
}

void mediaLibrary_ShowMore(MainContext& ctx, int column, const QString& text) {
    MediaLibrary& lib = mediaLibrary_Open(ctx);
    if (lib.lstvFilenames().count() == 0 && !lib.isWorking() && ctx.lstvPlaylist().count() > 0)
        lib.mnuImportCurrentPlaylist_Click();
    lib.showMore(column, text);
}

void mnuMoreOnThisArtist_Click(MainContext& ctx) {
    const int row = ctx.lstvPlaylist().selectedItem();
    if (row < 0) return;
    mediaLibrary_ShowMore(ctx, LibraryColumn::Artist,
                          ctx.lstvPlaylist().text(row, PlaylistColumn::Artist));
}

void mnuMoreOnThisYear_Click(MainContext& ctx) {
    const int row = ctx.lstvPlaylist().selectedItem();
    if (row < 0) return;
    mediaLibrary_ShowMore(ctx, LibraryColumn::Year,
                          ctx.lstvPlaylist().text(row, PlaylistColumn::Year));
}

void MediaLibrary_install(MainContext& ctx) {
    Commands& c = ctx.commands();
    c.setHandler(kOpen, [&ctx] { mnuOpenMediaLibrary_Click(ctx); });
    c.setHandler(QStringLiteral("mnuMoreOnThisArtist"), [&ctx] { mnuMoreOnThisArtist_Click(ctx); });
    c.setHandler(QStringLiteral("mnuMoreOnThisYear"), [&ctx] { mnuMoreOnThisYear_Click(ctx); });
    ctx.mediaLibrary_ShowMore = [&ctx](int column, const QString& text) {
        mediaLibrary_ShowMore(ctx, column, text);
    };
    ctx.mediaLibrary_AddLocation = [&ctx](const QString& folder) {
        mediaLibrary_Open(ctx).location_Add(folder);
    };
    ctx.mediaLibrary_RefreshRecent = [] {
        if (FrmMediaLibrary* window = FrmMediaLibrary::instance()) {
            recent_UpdateMediaMenu(window->library());
            recent_UpdatePlaylistMenu(window->library());
        }
    };
    // Whatever else closes at exit keeps closing.
    ctx.window_CloseAll = [&ctx, before = ctx.window_CloseAll] {
        if (ctx.commands().isChecked(kOpen)) mediaLibrary_Close(ctx);
        if (before) before();
    };
}
