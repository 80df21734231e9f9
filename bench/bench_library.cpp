#include "core/App.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/DialogScript.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "library/MediaLibrary.h"
#include "playlists/ListFiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <benchmark/benchmark.h>
#include <map>
#include <memory>
#include <unistd.h>

// The Media Library over sets of 1,000 to 100,000 songs: loading a playlist with tags read and
// the side lists built (time, longest event-loop stall, memory growth), and the two operations
// a click or a key in the search box runs: results_Find and library_Update.
//
// Songs are hard links to 1,000 tagged files (1,000 artists, 100 years, 500 albums), so a set of
// 100,000 costs directory entries, not disk; a search for one artist finds 1 song in 1,000.

namespace {

constexpr int kDistinct = 1000;

QByteArray mp3File(int i) {
    QByteArray frame(417, '\0');
    frame[0] = char(0xFF);
    frame[1] = char(0xFB);
    frame[2] = char(0x90);
    frame[3] = char(0x64);
    QByteArray tag(128, '\0');
    const auto put = [&tag](int at, const QByteArray& text) { tag.replace(at, text.size(), text); };
    put(0, "TAG");
    put(3, "Title " + QByteArray::number(i));
    put(33, "Artist " + QByteArray::number(i));
    put(63, "Album " + QByteArray::number(i % 500));
    put(93, QByteArray::number(1950 + i % 100));
    return frame + frame + frame + tag;
}

long rssKb() {
    QFile f(QStringLiteral("/proc/self/statm"));
    if (!f.open(QIODevice::ReadOnly)) return 0;
    const QList<QByteArray> parts = f.readAll().split(' ');
    return parts.size() > 1 ? parts[1].toLong() * (sysconf(_SC_PAGESIZE) / 1024) : 0;
}

// One data folder with the songs and a playlist of each size, made once for the whole run.
struct Fixture {
    QTemporaryDir home;
    std::map<int, QString> playlists;

    Fixture() {
        App::setPath(home.path());
        SettingsFile = home.filePath(QStringLiteral("settings.ini"));
        ConsoleLog::instance().setWriteFlag(false);
        const QString sources = home.filePath(QStringLiteral("sources"));
        const QString songs = home.filePath(QStringLiteral("songs"));
        QDir().mkpath(sources);
        QDir().mkpath(songs);
        QDir().mkpath(home.filePath(QStringLiteral("Playlists")));
        for (int i = 0; i < kDistinct; ++i) {
            QFile f(QStringLiteral("%1/%2.mp3").arg(sources).arg(i));
            if (f.open(QIODevice::WriteOnly)) f.write(mp3File(i));
        }
        for (int n : {1000, 10000, 100000}) {
            QByteArray bytes;
            for (int i = 0; i < n; ++i) {
                const QString link = QStringLiteral("%1/%2.mp3").arg(songs).arg(i);
                if (!QFile::exists(link))
                    ::link(QFile::encodeName(
                               QStringLiteral("%1/%2.mp3").arg(sources).arg(i % kDistinct))
                               .constData(),
                           QFile::encodeName(link).constData());
                bytes += ListFiles::encodeRow({QString::number(i + 1), QString(), QString(),
                                               QString(), QStringLiteral("Play"), QString(), link});
            }
            const QString path = home.filePath(QStringLiteral("Playlists/%1.spp").arg(n));
            QFile f(path);
            if (f.open(QIODevice::WriteOnly)) f.write(bytes);
            playlists[n] = path;
        }
    }
};

Fixture& fixture() {
    static Fixture f;
    return f;
}

// Opens the playlist of `n` songs through the File menu and runs the event loop to the end of
// the loading; the longest gap between ticks of a 10 ms timer is the longest stall.
void openPlaylist(MediaLibrary& lib, int n, qint64* longestGap) {
    ScriptedResponder dialogs({fixture().playlists[n]});
    Dialogs::setResponder(&dialogs);
    QElapsedTimer gap;
    QTimer beat;
    beat.setTimerType(Qt::PreciseTimer);
    QObject::connect(&beat, &QTimer::timeout, [&] {
        if (longestGap) *longestGap = qMax(*longestGap, gap.restart());
    });
    QEventLoop loop;
    QObject::connect(&lib, &MediaLibrary::workFinished, &loop, &QEventLoop::quit);
    gap.start();
    beat.start(10);
    lib.commands().run(QStringLiteral("mnuOpen"));
    if (lib.isWorking()) loop.exec();
    beat.stop();
    Dialogs::setResponder(nullptr);
}

void BM_LoadPlaylistWithTags(benchmark::State& state) {
    const int n = int(state.range(0));
    fixture();
    qint64 longestGap = 0;
    long growth = 0;
    int artists = 0;
    for (auto _ : state) {
        state.PauseTiming();
        MainContext ctx;
        auto lib = std::make_unique<MediaLibrary>(ctx);
        const long before = rssKb();
        state.ResumeTiming();
        openPlaylist(*lib, n, &longestGap);
        state.PauseTiming();
        growth = qMax(growth, rssKb() - before);
        artists = lib->lstArtist().count();
        lib.reset();
        state.ResumeTiming();
    }
    state.counters["songs"] = n;
    state.counters["artists"] = artists;
    state.counters["longest_stall_ms"] = double(longestGap);
    state.counters["rss_growth_MB"] = double(growth) / 1024.0;
    state.SetComplexityN(n);
}
BENCHMARK(BM_LoadPlaylistWithTags)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->Complexity(benchmark::oN);

// A library loaded once per size, kept for the operations below.
MediaLibrary& loaded(int n) {
    static MainContext ctx;
    static std::map<int, std::unique_ptr<MediaLibrary>> libs;
    auto& lib = libs[n];
    if (!lib) {
        lib = std::make_unique<MediaLibrary>(ctx);
        openPlaylist(*lib, n, nullptr);
    }
    return *lib;
}

void BM_ResultsFind(benchmark::State& state) {
    const int n = int(state.range(0));
    MediaLibrary& lib = loaded(n);
    int i = 0;
    for (auto _ : state)
        lib.results_Find(QStringLiteral("artist %1").arg(i++ % kDistinct), LibraryColumn::Artist);
    state.counters["found"] = lib.lstvResults().count();
    state.SetComplexityN(n);
}
BENCHMARK(BM_ResultsFind)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

// A year holds 1 song in 100: the search reads the length of each one found.
void BM_ResultsFindYear(benchmark::State& state) {
    const int n = int(state.range(0));
    MediaLibrary& lib = loaded(n);
    for (auto _ : state)
        lib.results_Find(QStringLiteral("1977"), LibraryColumn::Year);
    state.counters["found"] = lib.lstvResults().count();
    state.SetComplexityN(n);
}
BENCHMARK(BM_ResultsFindYear)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

void BM_LibraryUpdate(benchmark::State& state) {
    const int n = int(state.range(0));
    MediaLibrary& lib = loaded(n);
    for (auto _ : state)
        lib.library_Update();
    state.counters["artists"] = lib.lstArtist().count();
    state.SetComplexityN(n);
}
BENCHMARK(BM_LibraryUpdate)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

} // namespace
