#include "playback/QueueStatus.h"

#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "playlists/PlaylistRows.h"

void queue_SetStatus(MainContext& ctx, const QString& status, bool allRows) {
    ListModel& list = ctx.lstvPlaylist();
    const std::vector<bool> selected = list.selectionMask();
    int changed = 0;
    for (int i = 0; i < list.count(); ++i) {
        if (!allRows && !selected[size_t(i)]) continue;
        if (list.text(i, PlaylistColumn::Status) == status) continue;
        list.setText(i, PlaylistColumn::Status, status);
        ++changed;
    }
    if (changed > 0)
        window_WriteLog(
            QStringLiteral("%1 songs set to '%2' in the playlist.").arg(changed).arg(status));
}

void mnuSelectPlaying_Click(MainContext& ctx) {
    ListModel& list = ctx.lstvPlaylist();
    const int row = ctx.PlayingRowIndex - 1;
    if (row < 0 || row >= list.count()) return;
    list.clearSelection();
    list.setSelected(row, true);
    list.setCurrentRow(row);
    list.ensureVisible(row);
}

void QueueStatus_install(MainContext& ctx) {
    Commands& c = ctx.commands();
    const struct {
        const char* name;
        const char* caption;
        const char* status;
        bool all;
    } entries[] = {
        {"mnuPlaySong", "&Play", "Play", false},
        {"mnuPlayOnce", "Play &Once", "Play Once", false},
        {"mnuSkip", "&Skip", "Skip", false},
        {"mnuSkipOnce", "Skip O&nce", "Skip Once", false},
        {"mnuRemove", "&Remove", "Remove", false},
        {"mnuPlayAll", "Play &All", "Play", true},
        {"mnuSkipAll", "Skip A&ll", "Skip", true},
    };
    for (const auto& e : entries) {
        const QString name = QString::fromLatin1(e.name);
        if (c.caption(name) == name) c.setCaption(name, QString::fromLatin1(e.caption));
        const QString status = QString::fromLatin1(e.status);
        const bool all = e.all;
        c.setHandler(name, [&ctx, status, all] { queue_SetStatus(ctx, status, all); });
    }
    c.addCaption(QStringLiteral("mnuSelectPlaying"), QStringLiteral("Select &Playing"));
    c.setHandler(QStringLiteral("mnuSelectPlaying"), [&ctx] { mnuSelectPlaying_Click(ctx); });
}
