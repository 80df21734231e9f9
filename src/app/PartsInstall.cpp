#include "app/PartsInstall.h"

#include "app/FrmMain.h"
#include "app/MainEvents.h"
#include "app/PlayerWiring.h"
#include "cd/CdInstall.h"
#include "core/MainContext.h"
#include "library/LibraryInstall.h"
#include "playback/FrmVideo.h"
#include "playback/Lyrics.h"
#include "playback/PlayNext.h"
#include "playback/Player.h"
#include "playback/QueueStatus.h"
#include "playback/SongAlert.h"
#include "playback/Sound.h"
#include "playback/TrackAdvance.h"
#include "playlists/AddMedia.h"
#include "playlists/PlaylistAutosave.h"
#include "playlists/PlaylistEditing.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/PlaylistTools.h"
#include "stats/Tracking.h"
#include "system/Desktop.h"
#include "system/SystemSetup.h"
#include "tags/TagsInstall.h"
#include "ui/FrmMenus.h"
#include "ui/FrmOptions.h"
#include "ui/FrmPreferences.h"
#include "ui/MiniMode.h"

std::unique_ptr<FrmVideo> Parts_install(FrmMain& window) {
    MainContext& ctx = window.ctx();
    Player_install(ctx);
    auto video = PlayerWiring_install(window);
    TrackAdvance_install(ctx);
    LyricsAlerts_install(ctx);
    Sound_install(ctx);
    PlayNext_install(ctx);
    QueueStatus_install(ctx);
    Tracking_install(ctx);
    PlaylistEditing_install(ctx);
    PlaylistFiles_install(ctx);
    PlaylistAutosave_install(ctx);
    PlaylistTools_install(ctx);
    AddMedia_install(ctx);
    AddMedia_connectView(ctx, window.lstvPlaylist());
    Tags_install(ctx);
    MediaLibrary_install(ctx);
    CDPlayer_install(ctx);
    SystemSetup_install(ctx);
    lyrics_SetReader(tags_ReadLyrics);
    Desktop_install(ctx, &window);
    MiniMode_install(ctx, &window);
    FrmPreferences_install(ctx, &window);
    FrmOptions_install(ctx, &window);
    FrmMenus::install(ctx);
    ctx.window_ApplyAppearance = [&window] { window.applyAppearance(); };
    ctx.window_FormResize = [&window] { window.Form_Resize(); };
    MainEvents_install(window);
    return video;
}
