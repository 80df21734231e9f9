#include "core/App.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "playback/AdjustVolumes.h"
#include "playlists/ListFiles.h"
#include "stats/Tracking.h"

#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <memory>

// The play counts and the per-file volumes at 100,000 rows: far beyond the hundreds they are
// meant for, to show that no step grows faster than the list.
namespace {

constexpr int kRows = 100000;

QString fileOf(int i) {
    return QStringLiteral("/home/user/Music/Artist %1/Album %2/%3 - Some Song.mp3")
        .arg(i % 977)
        .arg(i % 50)
        .arg(i);
}

// tracking.ssb and volumes.ssb of kRows rows in a fresh data folder.
struct Home {
    QTemporaryDir dir;
    Home() {
        App::setPath(dir.path());
        SettingsFile = dir.filePath(QStringLiteral("settings.ini"));
        QByteArray tracking, volumes;
        for (int i = 0; i < kRows; ++i) {
            const QString artist = QStringLiteral("Artist %1").arg(i % 977);
            const QString title = QStringLiteral("Some Song Title Number %1").arg(i);
            tracking += ListFiles::encodeRow(
                {artist, title, QStringLiteral("%1").arg(i % 150 + 1, 2, 10, QChar('0')),
                 fileOf(i)});
            volumes += ListFiles::encodeRow({artist, title, QString::number(i % 101), fileOf(i)});
        }
        QFile t(dir.filePath(QStringLiteral("tracking.ssb")));
        if (t.open(QIODevice::WriteOnly)) t.write(tracking);
        QFile v(dir.filePath(QStringLiteral("volumes.ssb")));
        if (v.open(QIODevice::WriteOnly)) v.write(volumes);
        settings_Write(QStringLiteral("Settings"), QStringLiteral("AlwaysUseVolumeAdjusting"), 1);
    }
};

void BM_TrackingLoad(benchmark::State& state) {
    Home home;
    MainContext ctx;
    for (auto _ : state) {
        auto t = std::make_unique<Tracking>(ctx);
        t->Form_Load();
        state.PauseTiming();
        if (t->lstvItems().count() != kRows) state.SkipWithError("rows lost");
        t.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_TrackingLoad)->Unit(benchmark::kMillisecond);

// One song start: walk, count, sort, rewrite the file.
void BM_TrackingAdd(benchmark::State& state) {
    Home home;
    MainContext ctx;
    Tracking t(ctx);
    t.Form_Load();
    int i = 0;
    for (auto _ : state)
        t.tracking_Add(QString(), QString(), fileOf((i += 7919) % kRows));
}
BENCHMARK(BM_TrackingAdd)->Unit(benchmark::kMillisecond);

// The stored-volume lookup every song start makes.
void BM_VolumesGetVolume(benchmark::State& state) {
    Home home;
    AdjustVolumes v;
    v.Form_Load();
    int i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(v.volumes_GetVolume(fileOf((i += 7919) % kRows).toLower()));
}
BENCHMARK(BM_VolumesGetVolume)->Unit(benchmark::kMillisecond);

} // namespace
