#include "core/App.h"
#include "core/ConsoleLog.h"
#include "core/DialogScript.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "core/ListModel.h"
#include "playlists/PlaylistEditing.h"
#include "playlists/PlaylistRows.h"
#include "core/modControls.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

// The row routines on a playlist of 100,000 rows in random order.
namespace {

constexpr int kRows = 100000;

// One data folder for the whole run; the scans look at real files.
struct Home {
    QTemporaryDir dir;
    QStringList files;
    ScriptedResponder dialogs;
    Home() {
        App::setPath(dir.path());
        SettingsFile = dir.filePath(QStringLiteral("settings.ini"));
        settings_Write(QStringLiteral("Settings"),
                       QStringLiteral("AlwaysScanPlaylistWhenAddingSongs"), QStringLiteral("1"));
        Dialogs::setResponder(&dialogs);
        ConsoleLog::instance().setWriteFlag(false);
        QDir().mkpath(dir.filePath(QStringLiteral("Music")));
        files.reserve(kRows);
        for (int i = 0; i < kRows; ++i) {
            const QString path = dir.filePath(QStringLiteral("Music/%1 - Some Song.mp3").arg(i));
            QFile f(path);
            f.open(QIODevice::WriteOnly);
            files << path;
        }
    }
    static Home& get() {
        static Home home;
        return home;
    }
};

// Every tenth row names the file of another row again, in other case.
std::vector<QStringList> makeRows() {
    const QStringList& files = Home::get().files;
    QRandomGenerator random(42);
    std::vector<QStringList> rows;
    rows.reserve(kRows);
    for (int i = 0; i < kRows; ++i) {
        const int n = int(random.bounded(kRows));
        QString file = files[n];
        if (i % 10 == 9)
            file = files[int(random.bounded(kRows))].toUpper().replace(QLatin1String("MUSIC/"),
                                                                       QLatin1String("Music/"));
        const int seconds = int(random.bounded(720));
        rows.push_back({QString(), QStringLiteral("Artist %1").arg(random.bounded(5000)),
                        QStringLiteral("Some Song Title %1").arg(n),
                        n % 7 == 0 ? QString() : QString::number(1950 + n % 70),
                        QStringLiteral("Play"),
                        n % 11 == 0 ? QString()
                                    : QStringLiteral("%1:%2")
                                          .arg(seconds / 60, 2, 10, QLatin1Char('0'))
                                          .arg(seconds % 60, 2, 10, QLatin1Char('0')),
                        file});
    }
    return rows;
}

const std::vector<QStringList>& rowsOnce() {
    static const std::vector<QStringList> rows = makeRows();
    return rows;
}

// A main context holding the rows; the rules' handlers installed, the list unsorted.
std::unique_ptr<MainContext> makeContext() {
    Home::get();
    auto ctx = std::make_unique<MainContext>();
    PlaylistEditing_install(*ctx);
    ctx->lstvPlaylist().appendRows(rowsOnce());
    return ctx;
}

void BM_Renumber(benchmark::State& state) {
    auto ctx = makeContext();
    for (auto _ : state)
        listview_Renumber(ctx->lstvPlaylist());
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_Renumber)->Unit(benchmark::kMillisecond);

void BM_CountMatches(benchmark::State& state) {
    auto ctx = makeContext();
    const QString wanted = ctx->lstvPlaylist().text(kRows / 2, PlaylistColumn::Filename);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            listview_CountMatches(ctx->lstvPlaylist(), wanted, PlaylistColumn::Filename));
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_CountMatches)->Unit(benchmark::kMillisecond);

// Rows rebuilt outside the timing before each run of a routine that removes rows.
template <typename Routine> void removingRun(benchmark::State& state, Routine routine) {
    for (auto _ : state) {
        state.PauseTiming();
        auto ctx = makeContext();
        state.ResumeTiming();
        routine(*ctx);
        state.PauseTiming();
        ctx.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}

void BM_CheckEntries(benchmark::State& state) {
    removingRun(state, [](MainContext& ctx) { playlist_CheckEntries(ctx); });
}
BENCHMARK(BM_CheckEntries)->Unit(benchmark::kMillisecond);

void BM_RemoveDuplicateFilenames(benchmark::State& state) {
    removingRun(state, [](MainContext& ctx) { mnuRemoveDuplicateFilenames_Click(ctx); });
}
BENCHMARK(BM_RemoveDuplicateFilenames)->Unit(benchmark::kMillisecond);

// The list's own sort of the column; the argument is the sub-item index.
void BM_Sort(benchmark::State& state) {
    const int column = int(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto ctx = makeContext();
        ListModel& list = ctx->lstvPlaylist();
        list.setSortKey(column);
        state.ResumeTiming();
        list.setSorted(true);
        state.PauseTiming();
        ctx.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_Sort)
    ->ArgName("column")
    ->Arg(PlaylistColumn::Artist)
    ->Arg(PlaylistColumn::Title)
    ->Arg(PlaylistColumn::Year)
    ->Arg(PlaylistColumn::Length)
    ->Arg(PlaylistColumn::Filename)
    ->Unit(benchmark::kMillisecond);

// What a click on a column header costs: the direction, the sort, the renumbering, the settings.
void BM_ColumnClick(benchmark::State& state) {
    const int header = int(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto ctx = makeContext();
        mnuDontSort_Click(*ctx);
        state.ResumeTiming();
        lstvPlaylist_ColumnClick(*ctx, header);
        state.PauseTiming();
        ctx.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_ColumnClick)
    ->ArgName("header")
    ->DenseRange(6, 7)
    ->Arg(2)
    ->Unit(benchmark::kMillisecond);

// Up to ten passes of one random draw and one exchange a row.
void BM_ShuffleThePlaylist(benchmark::State& state) {
    auto ctx = makeContext();
    for (auto _ : state)
        mnuShuffleThePlaylist_Click(*ctx);
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_ShuffleThePlaylist)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
