#include "playlists/TagFill.h"

#include "core/Commands.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "playlists/PlaylistRows.h"

#include <QElapsedTimer>
#include <QTimer>

namespace {
constexpr int kSliceMs = 8;
}

void playlist_ShowMP3DataInSlices(MainContext& ctx, int firstRow, std::function<void()> done) {
    ctx.beginBusy(QStringLiteral("Updating the playlist entries, please wait..."));
    auto* tick = new QTimer(&ctx);
    tick->setInterval(0);
    auto row = std::make_shared<int>(qMax(1, firstRow));
    QObject::connect(tick, &QTimer::timeout, &ctx, [&ctx, tick, row, done = std::move(done)] {
        const bool tags =
            ctx.commands().isChecked(QStringLiteral("mnuTagsShowTagsAsFilesAreAdded"));
        QElapsedTimer clock;
        clock.start();
        while (*row <= ctx.lstvPlaylist().count()) {
            playlist_UpdateItem(ctx, (*row)++, !tags);
            if ((*row & 15) == 0 && clock.elapsed() >= kSliceMs) return;
        }
        tick->stop();
        tick->deleteLater();
        ctx.endBusy();
        if (done) done();
    });
    tick->start();
}
