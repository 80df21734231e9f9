#include "playlists/ListFiles.h"
#include "core/ListModel.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <memory>

// A playlist of 100,000 rows with paths and tags of a usual length.
namespace {

constexpr int kRows = 100000;

QStringList headers() {
    return {"No.", "Artist:", "Title:", "Year:", "Status:", "Length:", "File:"};
}

void fill(ListModel& list) {
    std::vector<QStringList> rows;
    rows.reserve(kRows);
    for (int i = 0; i < kRows; ++i)
        rows.push_back({QString::number(i + 1), QStringLiteral("Artist %1").arg(i % 977),
                        QStringLiteral("Some Song Title Number %1").arg(i),
                        QString::number(1960 + i % 60), QStringLiteral("Play"),
                        QStringLiteral("03:%1").arg(i % 60, 2, 10, QLatin1Char('0')),
                        QStringLiteral("/home/user/Music/Artist %1/Album %2/%3 - Some Song.mp3")
                            .arg(i % 977)
                            .arg(i % 50)
                            .arg(i)});
    list.appendRows(std::move(rows));
}

void BM_SaveToFile(benchmark::State& state) {
    QTemporaryDir dir;
    ListModel list(headers());
    fill(list);
    const QString path = dir.filePath(QStringLiteral("big.spp"));
    for (auto _ : state)
        benchmark::DoNotOptimize(listview_SaveToFile(list, path));
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_SaveToFile)->Unit(benchmark::kMillisecond);

void BM_LoadFromFile(benchmark::State& state) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("big.spp"));
    {
        ListModel source(headers());
        fill(source);
        listview_SaveToFile(source, path);
    }
    for (auto _ : state) {
        auto list = std::make_unique<ListModel>(headers());
        listview_LoadFromFile(*list, path);
        state.PauseTiming(); // freeing the rows is no part of a load
        if (list->count() != kRows) state.SkipWithError("rows lost");
        list.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_LoadFromFile)->Unit(benchmark::kMillisecond);

} // namespace
