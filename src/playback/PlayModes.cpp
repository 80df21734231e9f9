#include "playback/PlayModes.h"

#include "core/Commands.h"
#include "core/MainContext.h"
#include "core/Settings.h"

namespace {

const QString kPlayback = QStringLiteral("Playback");
const QString kPlayMode = QStringLiteral("PlayMode");

// Menu names are "mnu" + key.
const char* const kPlayModes[] = {
    "PlayingGoThroughPlaylistNormally",
    "PlayingIntroduction",
    "PlayingPickRandomSongs",
    "PlayingRepeat",
    "PlayingRepeatOnce",
    "PlayingShuffleByAlbum",
    "PlayingShuffleByArtist",
    "PlayingShuffleByYear",
    "PlayingStopAfterEnding",
};
const char* const kPlaylistModes[] = {
    "PlaylistRepeat",          "PlaylistRepeatOnce",
    "PlaylistStopAfterEnding", "PlaylistPickRandomAfterEnding",
    "PlaylistSwitchToNext",
};

QString menuOf(const char* key) {
    return QStringLiteral("mnu") + QString::fromLatin1(key);
}

void setDirection(MainContext& ctx, bool forward) {
    Commands& c = ctx.commands();
    c.setChecked(QStringLiteral("mnuWorkForwardThroughList"), forward);
    c.setChecked(QStringLiteral("mnuWorkBackwardsThroughPlaylist"), !forward);
    settings_Write(kPlayMode, QStringLiteral("WorkForwardThroughList"),
                   forward ? QStringLiteral("1") : QStringLiteral("0"));
    settings_Write(kPlayMode, QStringLiteral("WorkBackwardsThroughPlaylist"),
                   forward ? QStringLiteral("0") : QStringLiteral("1"));
}

} // namespace

void Menu_SelectPlaybackMode(MainContext& ctx, const QString& menu, const QString& key,
                             bool directionEnabled) {
    Commands& c = ctx.commands();
    for (const char* k : kPlayModes) {
        c.setChecked(menuOf(k), false);
        settings_Write(kPlayback, QString::fromLatin1(k), QStringLiteral("0"));
    }
    c.setEnabled(QStringLiteral("mnuWorkForwardThroughList"), directionEnabled);
    c.setEnabled(QStringLiteral("mnuWorkBackwardsThroughPlaylist"), directionEnabled);
    c.setChecked(menu, true);
    settings_Write(kPlayback, key, QStringLiteral("1"));
}

void Menu_SelectPlaylistMode(MainContext& ctx, const QString& menu, const QString& key) {
    Commands& c = ctx.commands();
    for (const char* k : kPlaylistModes) {
        c.setChecked(menuOf(k), false);
        settings_Write(kPlayback, QString::fromLatin1(k), QStringLiteral("0"));
    }
    c.setChecked(menu, true);
    settings_Write(kPlayback, key, QStringLiteral("1"));
}

void mnuWorkForwardThroughList_Click(MainContext& ctx) {
    setDirection(ctx, true);
}

void mnuWorkBackwardsThroughPlaylist_Click(MainContext& ctx) {
    setDirection(ctx, false);
}

void PlayModes_install(MainContext& ctx) {
    MainContext* p = &ctx;
    Commands& c = ctx.commands();
    for (const char* k : kPlayModes) {
        const QString key = QString::fromLatin1(k);
        // Only the two modes that step through the list let the direction be chosen.
        const bool direction = key == QLatin1String("PlayingGoThroughPlaylistNormally") ||
                               key == QLatin1String("PlayingIntroduction");
        c.setHandler(menuOf(k), [p, key, direction] {
            Menu_SelectPlaybackMode(*p, QStringLiteral("mnu") + key, key, direction);
        });
    }
    for (const char* k : kPlaylistModes) {
        const QString key = QString::fromLatin1(k);
        c.setHandler(menuOf(k),
                     [p, key] { Menu_SelectPlaylistMode(*p, QStringLiteral("mnu") + key, key); });
    }
    // However a mode gets its mark (a click, or the restore at start-up, which sets marks
    // without writing), the direction menus follow it.
    for (const char* k : kPlayModes) {
        QObject::connect(c.action(menuOf(k)), &QAction::toggled, &ctx, [p] {
            Commands& cmds = p->commands();
            const bool on = cmds.isChecked(QStringLiteral("mnuPlayingGoThroughPlaylistNormally")) ||
                            cmds.isChecked(QStringLiteral("mnuPlayingIntroduction"));
            cmds.setEnabled(QStringLiteral("mnuWorkForwardThroughList"), on);
            cmds.setEnabled(QStringLiteral("mnuWorkBackwardsThroughPlaylist"), on);
        });
    }
    c.setHandler(QStringLiteral("mnuWorkForwardThroughList"),
                 [p] { mnuWorkForwardThroughList_Click(*p); });
    c.setHandler(QStringLiteral("mnuWorkBackwardsThroughPlaylist"),
                 [p] { mnuWorkBackwardsThroughPlaylist_Click(*p); });
}
