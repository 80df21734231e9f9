#include "core/App.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "playlists/FrmJump.h"
#include "playlists/FrmManagePlaylists.h"
#include "playlists/JumpSearch.h"
#include "playlists/ListFiles.h"
#include "playlists/PlaylistGenerators.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QRadioButton>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

// The jump search, the artist generator and the manage window's listing at the sizes a large
// collection reaches.
namespace {

constexpr int kRows = 100000;

void fill(ListModel& list) {
    std::vector<QStringList> rows;
    rows.reserve(kRows);
    for (int i = 0; i < kRows; ++i)
        rows.push_back({QString::number(i + 1), QStringLiteral("Artist %1").arg(i % 977),
                        QStringLiteral("Some Song Title Number %1").arg(i),
                        QString::number(1960 + i % 60), QStringLiteral("Play"),
                        QStringLiteral("03:%1").arg(i % 60, 2, 10, QLatin1Char('0')),
                        QStringLiteral("/home/user/Music/Artist %1/Album %2/%3 - Some Song.ogg")
                            .arg(i % 977)
                            .arg(i % 50)
                            .arg(i)});
    list.appendRows(std::move(rows));
}

// A data folder of its own for the run.
struct Home {
    Home() {
        App::setPath(dir.path());
        SettingsFile = dir.filePath(QStringLiteral("settings.ini"));
        QDir().mkpath(dir.filePath(QStringLiteral("Playlists")));
    }
    QTemporaryDir dir;
};

// One keystroke in the search box of an open "Jump To Media" window: the search over every row
// and the results list that follows. Typing "some song title number 4" one letter at a time.
void BM_JumpToMediaKeystroke(benchmark::State& state) {
    Home home;
    MainContext ctx;
    fill(ctx.lstvPlaylist());
    FrmJump* w = FrmJump::open(ctx);
    while (w->reading())
        QApplication::processEvents();
    w->opSearchMode[state.range(0)]->setChecked(true);
    w->cmbOp->setCurrentIndex(int(state.range(1)));
    const QString typed = QStringLiteral("some song title number 4");
    int at = 0;
    for (auto _ : state) {
        at = at % typed.size() + 1;
        w->cmbSearch->setEditText(typed.left(at));
    }
    state.counters["results"] = w->items->count();
    delete w;
}
// Contains / "=": the results shrink as the text grows; Contains / "<>": nearly every row shows.
BENCHMARK(BM_JumpToMediaKeystroke)
    ->Args({3, 0})
    ->Args({0, 1})
    ->Args({3, 1})
    ->Unit(benchmark::kMillisecond);

// The two halves of a keystroke apart: the search alone, and the results list alone.
void BM_JumpSearchParts(benchmark::State& state) {
    ListModel list({"No.", "Artist:", "Title:", "Year:", "Status:", "Length:", "File:"});
    fill(list);
    JumpSearch::Index index;
    index.reset(false);
    index.readMore(list, kRows);
    const JumpSearch::Query query{0, JumpSearch::Contains, false, QStringLiteral("some song"), {}};
    const auto hits = JumpSearch::search(index, query);
    ListModel items({"Number:", "Artist:", "Title:"});
    for (auto _ : state) {
        if (state.range(0) == 0)
            benchmark::DoNotOptimize(JumpSearch::search(index, query));
        else
            JumpSearch::showResults(items, index, hits);
    }
    state.counters["results"] = double(hits.size());
}
BENCHMARK(BM_JumpSearchParts)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// The worst keystrokes: every one changes the whole list, from 100,000 results to none and back.
void BM_JumpToMediaRefill(benchmark::State& state) {
    Home home;
    MainContext ctx;
    fill(ctx.lstvPlaylist());
    FrmJump* w = FrmJump::open(ctx);
    while (w->reading())
        QApplication::processEvents();
    w->opSearchMode[3]->setChecked(true);
    bool full = false;
    for (auto _ : state) {
        full = !full;
        w->cmbSearch->setEditText(full ? QStringLiteral("some song")
                                       : QStringLiteral("some songs"));
    }
    delete w;
}
BENCHMARK(BM_JumpToMediaRefill)->Unit(benchmark::kMillisecond);

// Generate Playlist by artist, from the rows to the written file.
void BM_GenerateByArtist(benchmark::State& state) {
    Home home;
    ListModel list({"No.", "Artist:", "Title:", "Year:", "Status:", "Length:", "File:"});
    fill(list);
    const QString path = home.dir.filePath(QStringLiteral("Playlists/Artist 42.spp"));
    size_t matches = 0;
    for (auto _ : state) {
        PlaylistGenerator generator(list, 0, QStringLiteral("Artist 42"), false);
        generator.run();
        matches = generator.matches().size();
        benchmark::DoNotOptimize(generate_WriteList(path, generator.matches()));
    }
    state.counters["rows"] = double(matches);
}
BENCHMARK(BM_GenerateByArtist)->Unit(benchmark::kMillisecond);

// The manage window reading a Playlists folder of 5,000 playlists of 20 songs each.
void BM_ManageListsFolder(benchmark::State& state) {
    Home home;
    QByteArray bytes;
    for (int r = 0; r < 20; ++r)
        bytes += ListFiles::encodeRow({QString::number(r + 1), "Artist", "Title", "2001", "Play",
                                       "03:00", "/home/user/Music/Artist/Album/Song.ogg"});
    for (int i = 0; i < 5000; ++i) {
        QFile f(home.dir.filePath(QStringLiteral("Playlists/Playlist %1.spp").arg(i)));
        if (f.open(QIODevice::WriteOnly)) f.write(bytes);
    }
    MainContext ctx;
    FrmManagePlaylists* w = FrmManagePlaylists::open(ctx);
    for (auto _ : state)
        w->window_ShowPlaylists();
    state.counters["rows"] = w->items->count();
    delete w;
}
BENCHMARK(BM_ManageListsFolder)->Unit(benchmark::kMillisecond);

} // namespace
