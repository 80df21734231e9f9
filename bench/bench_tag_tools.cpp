#include "core/App.h"
#include "core/ConsoleLog.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "playback/AdjustVolumes.h"
#include "playlists/ListFiles.h"
#include "playlists/PlaylistRows.h"
#include "stats/Tracking.h"
#include "tags/MassRename.h"
#include "tags/MassTagEdit.h"
#include "tags/TagsInstall.h"
#include "tags/clsID3v2.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <benchmark/benchmark.h>

// The mass tools over 10,000 files, run in the event loop as the windows run them. Reported:
// files a second and the longest time the loop went without a turn (a 1 ms timer that measures
// the gaps between its ticks).
namespace {

constexpr int kFiles = 10000;

QByteArray frames(int n) {
    QByteArray one(417, '\x55');
    one[0] = '\xFF';
    one[1] = '\xFB';
    one[2] = '\x90';
    one[3] = '\x00';
    return one.repeated(n);
}

QByteArray id3v1(const QByteArray& artist, const QByteArray& title) {
    return QByteArray("TAG") + title.leftJustified(30, ' ', true) +
           artist.leftJustified(30, ' ', true) + QByteArray(30, ' ') + "2001" +
           QByteArray(30, ' ') + char(17);
}

bool write(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

struct Home {
    QTemporaryDir dir;
    MainContext ctx;
    QStringList files;
    Home() {
        App::setPath(dir.path());
        SettingsFile = dir.filePath(QStringLiteral("settings.ini"));
        settings_Write(QStringLiteral("Settings"), QStringLiteral("AlwaysUseVolumeAdjusting"), 1);
        ConsoleLog::instance().setWriteFlag(true);
        Tags_install(ctx);
    }
    ~Home() { playlist_SetTagReader(nullptr); }
    void addRows() {
        for (const QString& f : files)
            ctx.lstvPlaylist().addRow(
                {QString(), QString(), QString(), QString(), QStringLiteral("Play"), QString(), f});
    }
};

// Runs `batch` in the event loop; the longest gap between two turns, in ms.
double runInLoop(TagBatch& batch) {
    QEventLoop loop;
    QObject::connect(&batch, &TagBatch::finished, &loop, &QEventLoop::quit);
    QElapsedTimer gap;
    double longest = 0;
    QTimer probe;
    probe.setTimerType(Qt::PreciseTimer);
    probe.setInterval(1);
    QObject::connect(&probe, &QTimer::timeout, [&] {
        longest = std::max(longest, gap.nsecsElapsed() / 1e6);
        gap.restart();
    });
    gap.start();
    probe.start();
    batch.start();
    loop.exec();
    return longest;
}

void BM_MassTagEdit(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        Home home;
        // One tagged file made by the tag class (its ID3v2 tag padded for later saves), copied.
        const QString first = home.dir.filePath(QStringLiteral("first.mp3"));
        write(first, frames(8) + id3v1("Artist", "Title"));
        clsID3v2 tag;
        tag.setFilename(first);
        tag.setArtist(QStringLiteral("Artist"));
        tag.setTitle(QStringLiteral("Title"));
        tag.Save();
        QFile in(first);
        in.open(QIODevice::ReadOnly);
        const QByteArray bytes = in.readAll();
        for (int i = 0; i < kFiles; ++i) {
            home.files << home.dir.filePath(QStringLiteral("song %1.mp3").arg(i));
            write(home.files.last(), bytes);
        }
        home.addRows();
        MassTagEdit::Options o;
        o.artist = QStringLiteral("Someone Else");
        o.album = QStringLiteral("An Album");
        o.genre = 9;
        o.editID3v2 = true;
        MassTagEdit run(home.ctx, o);
        QElapsedTimer clock;
        state.ResumeTiming();
        clock.start();
        const double stall = runInLoop(run);
        const double seconds = clock.nsecsElapsed() / 1e9;
        state.PauseTiming();
        if (run.edited() != kFiles) state.SkipWithError("files left unedited");
        state.counters["files_per_s"] = kFiles / seconds;
        state.counters["longest_stall_ms"] = stall;
        state.ResumeTiming();
    }
}
BENCHMARK(BM_MassTagEdit)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_MassRename(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        Home home;
        QByteArray tracking, volumes;
        for (int i = 0; i < kFiles; ++i) {
            const QString f = home.dir.filePath(QStringLiteral("track %1.mp3").arg(i));
            home.files << f;
            write(f, frames(1) + id3v1("Artist", QByteArray("Song ") + QByteArray::number(i)));
            tracking += ListFiles::encodeRow({QStringLiteral("Artist"), QStringLiteral("Song"),
                                              QStringLiteral("07"), f});
            volumes += ListFiles::encodeRow(
                {QStringLiteral("Artist"), QStringLiteral("Song"), QStringLiteral("40"), f});
        }
        write(Tracking::filePath(), tracking);
        write(AdjustVolumes::filePath(), volumes);
        home.addRows();
        Tracking::of(home.ctx);
        AdjustVolumes::of(home.ctx);
        MassRename run(home.ctx, {});
        QElapsedTimer clock;
        state.ResumeTiming();
        clock.start();
        const double stall = runInLoop(run);
        const double seconds = clock.nsecsElapsed() / 1e9;
        state.PauseTiming();
        if (run.renamed() != kFiles) state.SkipWithError("files left unrenamed");
        if (!QFile(Tracking::filePath()).open(QIODevice::ReadOnly) ||
            !QFile::exists(home.dir.filePath(QStringLiteral("Artist - Song 9999.mp3"))))
            state.SkipWithError("lists or files not renamed");
        state.counters["seconds"] = seconds;
        state.counters["files_per_s"] = kFiles / seconds;
        state.counters["longest_stall_ms"] = stall;
        state.ResumeTiming();
    }
}
BENCHMARK(BM_MassRename)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
