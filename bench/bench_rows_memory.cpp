#include "core/ListModel.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

// Heap held by 100,000 playlist rows of a realistic shape: a few hundred artists, unique titles
// and paths, repeated years, statuses and lengths. The figure to watch is the counter
// "bytes_per_row"; the list's own target is 0.35 KiB.
namespace {

constexpr int kRows = 100000;

QStringList makeRow(int i) {
    const QString artist = QStringLiteral("Artist Number %1").arg(i % 400);
    const QString title = QStringLiteral("Some Song Title %1").arg(i);
    return {QStringLiteral("%1").arg(i + 1, 6, 10, QLatin1Char('0')),
            artist,
            title,
            QString::number(1960 + i % 60),
            QStringLiteral("Play"),
            QStringLiteral("%1:%2")
                .arg(2 + i % 6, 2, 10, QLatin1Char('0'))
                .arg(i % 60, 2, 10, QLatin1Char('0')),
            QStringLiteral("/home/someone/Music/%1/Album %2/%3 - %4.mp3")
                .arg(artist)
                .arg(i % 23)
                .arg(i % 20 + 1, 2, 10, QLatin1Char('0'))
                .arg(title)};
}

size_t heapInUse() {
    const struct mallinfo2 m = mallinfo2();
    return m.uordblks + m.hblkhd;
}

const QStringList kHeaders = {QStringLiteral("#"),       QStringLiteral("Artist"),
                              QStringLiteral("Title"),   QStringLiteral("Year"),
                              QStringLiteral("Status"),  QStringLiteral("Length"),
                              QStringLiteral("Filename")};

void BM_RowsMemory_Append(benchmark::State& state) {
    double perRow = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const size_t before = heapInUse();
        std::vector<QStringList> rows;
        rows.reserve(kRows);
        for (int i = 0; i < kRows; ++i)
            rows.push_back(makeRow(i));
        state.ResumeTiming();
        ListModel model(kHeaders);
        model.appendRows(std::move(rows));
        state.PauseTiming();
        rows = {};
        perRow = double(heapInUse() - before) / kRows;
        state.ResumeTiming();
    }
    state.counters["bytes_per_row"] = perRow;
}
BENCHMARK(BM_RowsMemory_Append)->Unit(benchmark::kMillisecond)->Iterations(3);

// Rows added one at a time, as the command line and the folder add do.
void BM_RowsMemory_AddRow(benchmark::State& state) {
    double perRow = 0;
    for (auto _ : state) {
        const size_t before = heapInUse();
        ListModel model(kHeaders);
        for (int i = 0; i < kRows; ++i) {
            QStringList cells = makeRow(i);
            cells[6].reserve(cells[6].size() + 200); // paths built piecewise keep their spare room
            model.addRow(cells);
        }
        perRow = double(heapInUse() - before) / kRows;
    }
    state.counters["bytes_per_row"] = perRow;
}
BENCHMARK(BM_RowsMemory_AddRow)->Unit(benchmark::kMillisecond)->Iterations(3);

// What every search does: read one cell of each row.
void BM_RowsMemory_ReadCells(benchmark::State& state) {
    ListModel model(kHeaders);
    std::vector<QStringList> rows;
    for (int i = 0; i < kRows; ++i)
        rows.push_back(makeRow(i));
    model.appendRows(std::move(rows));
    for (auto _ : state) {
        qsizetype total = 0;
        for (int r = 0; r < model.count(); ++r)
            total += model.text(r, 1).size() + model.text(r, 2).size();
        benchmark::DoNotOptimize(total);
    }
}
BENCHMARK(BM_RowsMemory_ReadCells)->Unit(benchmark::kMillisecond);

} // namespace
