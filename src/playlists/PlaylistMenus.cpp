#include "playlists/PlaylistMenus.h"

#include "core/Commands.h"
#include "core/MainContext.h"
#include "playlists/Bookmarks.h"
#include "playlists/MenuArray.h"
#include "playlists/Moods.h"
#include "playlists/modRecentMedia.h"
#include "playlists/modRecentPlaylists.h"
#include "ui/MenuArrayMenu.h"

#include <QApplication>
#include <QMenu>

namespace {

// A sub-menu for the command `name`, living as long as the context.
QMenu* subMenu(MainContext& ctx, const QString& name) {
    QAction* entry = ctx.commands().action(name);
    auto* menu = new QMenu(entry->text());
    menu->setObjectName(name);
    menu->setAccessibleName(entry->text().remove(QLatin1Char('&')));
    entry->setMenu(menu);
    QObject::connect(&ctx, &QObject::destroyed, menu, [menu] { delete menu; });
    return menu;
}

QMenu* fill(MainContext& ctx, QMenu* menu, const QString& array,
            std::function<void(MainContext&, int)> click, const QStringList& after = {}) {
    QAction* before = nullptr;
    for (const QString& name : after) {
        if (name.isEmpty()) {
            QAction* sep = menu->addSeparator();
            if (!before) before = sep;
            continue;
        }
        QAction* a = ctx.commands().action(name);
        menu->addAction(a);
        if (!before) before = a;
    }
    MainContext* p = &ctx;
    menuArray_Bind(
        MenuArray::of(ctx, array), menu, [p, click](int i) { click(*p, i); }, before);
    return menu;
}

} // namespace

void PlaylistMenus_install(MainContext& ctx) {
    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) return;
    fill(ctx, subMenu(ctx, QStringLiteral("mnuOpenMood")), QStringLiteral("mnuMoodOpen"),
         mnuMoodOpen_Click,
         {QString(), QStringLiteral("mnuEditMoods"), QStringLiteral("mnuResetMoods")});
    fill(ctx, subMenu(ctx, QStringLiteral("mnuOpenBookmark")), QStringLiteral("mnuBookmark"),
         mnuBookmark_Click,
         {QString(), QStringLiteral("mnuAddSelected"), QStringLiteral("mnuEditBookmarks"),
          QStringLiteral("mnuClearBookmarks")});
    fill(ctx, subMenu(ctx, QStringLiteral("mnuRecentMediaFiles")), QStringLiteral("mnuRecentMedia"),
         mnuRecentMedia_Click);
    fill(ctx, subMenu(ctx, QStringLiteral("mnuRecentPlaylists")),
         QStringLiteral("mnuRecentPlaylist"), mnuRecentPlaylist_Click);
}

void PlaylistMenus_addSendTo(MainContext& ctx, QMenu* sendTo) {
    QMenu* moods = sendTo->addMenu(QStringLiteral("&Mood"));
    moods->setObjectName(QStringLiteral("mnuMode"));
    fill(ctx, moods, QStringLiteral("mnuSendToMood"), mnuSendToMood_Click,
         {QString(), QStringLiteral("mnuEditMoods"), QStringLiteral("mnuResetMoods")});
    QMenu* bookmarks = sendTo->addMenu(QStringLiteral("&Bookmarks"));
    bookmarks->setObjectName(QStringLiteral("mnuBookmarks"));
    bookmarks->addAction(ctx.commands().action(QStringLiteral("mnuAddSelected")));
    if (ctx.sendTo_AddDrives) ctx.sendTo_AddDrives(sendTo);
}
