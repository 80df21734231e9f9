#include "playback/Sound.h"

#include "core/Commands.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/SliderModel.h"
#include "core/modControls.h"
#include "core/wmpPlayer.h"
#include "playback/AdjustVolumes.h"
#include "playback/FrmAdjustVolumes.h"
#include "playlists/PlaylistRows.h"

#include <QAction>
#include <QApplication>
#include <QStyle>

namespace {

const QString kMute = QStringLiteral("mnuMute");
const QString kMuteButton = QStringLiteral("tbMute");
const QString kMutedCaption = QStringLiteral("Un-Mut&e\tE");
const QString kUnmutedCaption = QStringLiteral("Mut&e\tE");

// SavedVolume is a 16-bit field: 65535 (which reads back as -1) means none.
constexpr quint16 kNoSavedVolume = 65535;

void setMuteButton(MainContext& ctx, bool muted) {
    QAction* button = ctx.commands().action(kMuteButton);
    button->setToolTip(muted ? QStringLiteral("Un-Mute") : QStringLiteral("Mute"));
    if (qApp)
        button->setIcon(QApplication::style()->standardIcon(muted ? QStyle::SP_MediaVolumeMuted
                                                                  : QStyle::SP_MediaVolume));
    if (!button->isCheckable()) button->setCheckable(true);
    button->setChecked(muted);
}

} // namespace

void player_Volume(MainContext& ctx, int value) {
    ctx.player().setVolume(value * 60 - 6000);
}

void player_Balance(MainContext& ctx, int value) {
    ctx.player().setBalance(value * 100 - 5000);
}

bool sound_IsMuted(MainContext& ctx) {
    return ctx.commands().caption(kMute).startsWith(QLatin1String("Un-Mut"));
}

void mnuMute_Click(MainContext& ctx) {
    Commands& c = ctx.commands();
    const bool mute = !sound_IsMuted(ctx);
    c.setCaption(kMute, mute ? kMutedCaption : kUnmutedCaption);
    c.action(kMute)->setChecked(mute);
    setMuteButton(ctx, mute);
    // The slider stays where it is: unmuting returns to it.
    player_Volume(ctx, mute ? 0 : ctx.sldVolume().value());
    ctx.sldVolume().setEnabled(!mute);
}

void mnuStoreVolume_Click(MainContext& ctx) {
    ListModel& list = ctx.lstvPlaylist();
    if (listview_SelectedCount(list) > 1) {
        Dialogs::msgBox(QStringLiteral("You have selected more than 1 song from the playlist.\n\n"
                                       "This function will not continue.\n"),
                        Dialogs::vbExclamation, QStringLiteral("Error Storing Volume"));
        return;
    }
    const int row = list.selectedItem();
    if (row < 0) return;
    AdjustVolumes::of(ctx).volumes_Add(
        list.text(row, PlaylistColumn::Artist), list.text(row, PlaylistColumn::Title),
        ctx.sldVolume().value(), list.text(row, PlaylistColumn::Filename));
}

void volumes_ApplyStored(MainContext& ctx, const QString& filename) {
    AdjustVolumes& volumes = AdjustVolumes::of(ctx);
    if (!volumes.alwaysAdjust()) return;
    SliderModel& slider = ctx.sldVolume();
    const int stored = volumes.volumes_GetVolume(filename);
    if (stored != -1) {
        // Overwritten at every stored song: after two in a row the way back leads to the first
        // one's volume, not to the user's.
        ctx.SavedVolume = qint16(slider.value());
        slider.setValue(stored);
        player_Volume(ctx, slider.value());
    } else if (quint16(ctx.SavedVolume) != kNoSavedVolume) {
        slider.setValue(ctx.SavedVolume);
        player_Volume(ctx, slider.value());
        ctx.SavedVolume = qint16(kNoSavedVolume);
    }
}

void Sound_install(MainContext& ctx) {
    ctx.player_Volume = [&ctx](int value) { player_Volume(ctx, value); };
    ctx.player_Balance = [&ctx](int value) { player_Balance(ctx, value); };
    ctx.volumes_ApplyStored = [&ctx](const QString& name) { volumes_ApplyStored(ctx, name); };
    QObject::connect(&ctx.sldVolume(), &SliderModel::scrolled, &ctx,
                     [&ctx](int value) { player_Volume(ctx, value); });
    QObject::connect(&ctx.sldBalance(), &SliderModel::scrolled, &ctx,
                     [&ctx](int value) { player_Balance(ctx, value); });

    Commands& c = ctx.commands();
    c.setHandler(kMute, [&ctx] { mnuMute_Click(ctx); });
    c.setHandler(QStringLiteral("mnuStoreVolume"), [&ctx] { mnuStoreVolume_Click(ctx); });
    c.addCaption(QStringLiteral("mnuStoreVolume"), QStringLiteral("Store &Volume"));
    c.setHandler(QStringLiteral("mnuVolumes"), [&ctx] { FrmAdjustVolumes::showFor(ctx); });
    c.action(kMuteButton)->setCheckable(true);
    AdjustVolumes::of(ctx); // loaded at start-up: every song start reads it
}
