#include "playback/PlayerTimers.h"

#include "core/App.h"
#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/SliderModel.h"
#include "core/wmpPlayer.h"
#include "playlists/PlaylistRows.h"
#include "tags/modMedia.h"

#include <cmath>

namespace {

const char* const kTransportMenus[] = {"mnuJumpToTime", "mnuJumpToCurrentlyPlaying",
                                       "mnuRewind",     "mnuFastForward",
                                       "mnuPause",      "mnuStop",
                                       "mnuPlayNext"};
const char* const kTransportButtons[] = {"tbRewind", "tbPause", "tbStop", "tbFastForward"};

bool checked(MainContext& ctx, const char* menu) {
    const QString name = QString::fromLatin1(menu);
    return ctx.commands().has(name) && ctx.commands().isChecked(name);
}

void enable(MainContext& ctx, const char* name, bool on) {
    if (on)
        menu_Enable(ctx, QString::fromLatin1(name));
    else
        menu_Disable(ctx, QString::fromLatin1(name));
}

// "{no}.  {artist} - {title}" parts of the playing row.
QString songText(MainContext& ctx, const QString& gap) {
    const int row = ctx.PlayingRowIndex;
    const QString number = row >= 1 && row <= ctx.lstvPlaylist().count() &&
                                   ctx.lstvPlaylist().text(row - 1, PlaylistColumn::Filename) ==
                                       ctx.PlayingDetails.Filename
                               ? ctx.lstvPlaylist().text(row - 1, PlaylistColumn::Number)
                               : QString();
    return number + QLatin1Char('.') + gap + ctx.PlayingDetails.Artist + QStringLiteral(" - ") +
           ctx.PlayingDetails.Title;
}

bool trayInUse() {
    return settings_IsOn(QStringLiteral("Settings"), QStringLiteral("UseSystemTraySupport"),
                         QStringLiteral("1"));
}

} // namespace

void menu_Enable(MainContext& ctx, const QString& menu) {
    if (!ctx.commands().isEnabled(menu)) ctx.commands().setEnabled(menu, true);
}

void menu_Disable(MainContext& ctx, const QString& menu) {
    if (ctx.commands().isEnabled(menu)) ctx.commands().setEnabled(menu, false);
}

void tmrPosition_Timer(MainContext& ctx, const std::function<void(const QString&)>& setTimePanel) {
    wmpPlayer& p = ctx.player();
    SliderModel& slider = ctx.sldPosition();
    const int state = p.PlayState();
    const bool elapsed = checked(ctx, "mnuStatusBarShowTimeElapsed");
    const bool remaining = !elapsed && checked(ctx, "mnuStatusBarShowTimeRemaining");

    if (state == wmpPlayer::Playing || state == wmpPlayer::Paused) {
        const bool playing = state == wmpPlayer::Playing;
        const double position = p.CurrentPosition();
        const double duration = p.Duration();
        if (playing) {
            if (!slider.enabled()) slider.setEnabled(true);
            // Equality on the rounded second: a short song plays out, a seek past is not caught.
            if (checked(ctx, "mnuPlayingIntroduction") &&
                std::lround(position) ==
                    std::lround(settings_Number(QStringLiteral("Settings"),
                                                QStringLiteral("IntroductionRate"),
                                                QStringLiteral("30")))) {
                ctx.call(ctx.player_NextTrack);
                return;
            }
        }
        if (playing || slider.enabled()) {
            slider.setMaximum(int(std::lround(duration)));
            slider.setValue(int(std::lround(position)));
        }
        if (!playing && slider.enabled()) slider.setEnabled(false);
        ctx.TransportState = playing ? 0 : 2;
        for (const char* menu : kTransportMenus) {
            const bool seekOnly = !qstrcmp(menu, "mnuJumpToTime") || !qstrcmp(menu, "mnuRewind") ||
                                  !qstrcmp(menu, "mnuFastForward");
            enable(ctx, menu, playing || !seekOnly);
        }
        enable(ctx, "tbRewind", playing);
        enable(ctx, "tbFastForward", playing);
        enable(ctx, "tbPause", true);
        enable(ctx, "tbStop", true);
        if (elapsed)
            setTimePanel(QStringLiteral("Elapsed:  ") +
                         media_FormatSeconds(qint32(std::nearbyint(position))));
        else if (remaining)
            setTimePanel(QStringLiteral("Remaining:  ") +
                         media_FormatSeconds(qint32(std::nearbyint(duration - position))));
        const QString word = playing ? QStringLiteral("Playing") : QStringLiteral("Paused");
        if (!ctx.PlaylistBusy)
            ctx.setStatusText(QStringLiteral("Status:  %1... ").arg(word) +
                              songText(ctx, QStringLiteral("  ")));
        if (trayInUse())
            ctx.setTrayTip(App::Title() + QStringLiteral(":  ") + word + QLatin1Char('\n') +
                           songText(ctx, QStringLiteral(" ")));
        return;
    }

    if (slider.enabled()) {
        slider.setMaximum(100);
        slider.setValue(0);
        slider.setEnabled(false);
    }
    ctx.TransportState = 1;
    for (const char* menu : kTransportMenus)
        enable(ctx, menu, false);
    for (const char* button : kTransportButtons)
        enable(ctx, button, false);
    if (!ctx.PlaylistBusy) ctx.setStatusText(QStringLiteral("Status:  Stopped"));
    if (elapsed)
        setTimePanel(QStringLiteral("Elapsed:  None"));
    else if (remaining)
        setTimePanel(QStringLiteral("Remaining:  None"));
    if (trayInUse()) ctx.setTrayTip(App::Title() + QStringLiteral(":  Stopped"));
}
