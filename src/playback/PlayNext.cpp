#include "playback/PlayNext.h"

#include "core/Colors.h"
#include "core/Commands.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/modControls.h"
#include "core/wmpPlayer.h"
#include "playback/FrmQueue.h"
#include "playlists/PlaylistRows.h"

namespace {

const QString kTitle = QStringLiteral("Error With Selected Song");

void refuse(const QString& text) {
    Dialogs::msgBox(text, Dialogs::vbExclamation, kTitle);
}

qint64 appearanceColour(const char* key, qint64 def) {
    return Colors::parse(settings_Read(QStringLiteral("Appearance"), QString::fromLatin1(key)),
                         def);
}

// Colours the item and its six sub-items; bold (the playing mark) stays as it is.
void paintRow(ListModel& list, int index, qint64 colour) {
    const int row = index - 1;
    if (row < 0 || row >= list.count()) return;
    for (int c = 0; c < list.columns(); ++c)
        list.setForeColor(row, c, colour);
}

void setCaption(MainContext& ctx, bool inUse) {
    ctx.commands().setCaption(QStringLiteral("mnuPlayNext"),
                              inUse ? QStringLiteral("Play Ne&xt (In Use)...\tX")
                                    : QStringLiteral("Play Ne&xt...\tX"));
}

} // namespace

void mnuPlayNext_Click(MainContext& ctx) {
    ListModel& list = ctx.lstvPlaylist();
    if (!listview_HasSelection(list) || ctx.player().PlayState() != wmpPlayer::Playing) return;
    if (listview_SelectedCount(list) > 1) {
        refuse(QStringLiteral("You have selected more than 1 song from the playlist.\n\n"
                              "This function will not continue.\n"));
        return;
    }
    const int selected = listview_SelectedIndex(list);
    if (list.text(selected - 1, PlaylistColumn::Status) == QLatin1String("Skip")) {
        refuse(QStringLiteral("The song that you have selected from the playlist is currently set "
                              "to Skip.\n\nPlease select a different song to play next.\n"));
        return;
    }
    if (selected == ctx.PlayingRowIndex) {
        refuse(QStringLiteral("The song that you have selected from the playlist is currently "
                              "playing.\n\nPlease select a different song to play next.\n"));
        return;
    }
    if (ctx.PlayNextRowIndex > 0) {
        paintRow(list, ctx.PlayNextRowIndex,
                 appearanceColour("FontColour", Colors::SystemWindowText));
        if (ctx.PlayNextRowIndex == selected) {
            // A second Play Next on the marked row is the way to undo it.
            setCaption(ctx, false);
            ctx.PlayNextRowIndex = 0;
            return;
        }
    }
    ctx.PlayNextRowIndex = selected;
    paintRow(list, selected, appearanceColour("PlayNextFontColour", 12582912));
    setCaption(ctx, true);
}

void PlayNext_install(MainContext& ctx) {
    Commands& c = ctx.commands();
    c.setHandler(QStringLiteral("mnuPlayNext"), [&ctx] { mnuPlayNext_Click(ctx); });
    c.setHandler(QStringLiteral("mnuAdvanced"), [&ctx] { FrmQueue::showModal(ctx); });
    c.addCaption(QStringLiteral("mnuAdvanced"), QStringLiteral("&Advanced..."));
}
