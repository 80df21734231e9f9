#include "app/FrmMain.h"
#include "app/MainEvents.h"
#include "app/WindowSetup.h"
#include "core/App.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "playback/Player.h"
#include "playlists/PlaylistEditing.h"
#include "playlists/PlaylistFiles.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

// From an empty main window to the shown window holding the rows of a 100,000-row default.spp:
// what a user waits for at start-up, less the process start and the sound check.
static void BM_StartupWithLargeDefaultPlaylist(benchmark::State& state) {
    QTemporaryDir home;
    App::setPath(home.path());
    SettingsFile = home.filePath(QStringLiteral("settings.ini"));
    QDir(home.path()).mkpath(QStringLiteral("Playlists"));
    QByteArray spp;
    spp.reserve(100000 * 120);
    for (int i = 1; i <= 100000; ++i) {
        spp += "\"" + QByteArray::number(i) + "\"\r\n\"Artist " + QByteArray::number(i % 997) +
               "\"\r\n\"Title " + QByteArray::number(i) + "\"\r\n\"1999\"\r\n\"Play\"\r\n\"03:41\"\r\n"
               "\"/home/user/Music/Artist/Album/" + QByteArray::number(i) + " - Title.mp3\"\r\n";
    }
    QFile f(home.filePath(QStringLiteral("Playlists/default.spp")));
    f.open(QIODevice::WriteOnly);
    f.write(spp);
    f.close();

    for (auto _ : state) {
        MainContext ctx;
        FrmMain window(ctx);
        Player_install(ctx);
        PlaylistEditing_install(ctx);
        PlaylistFiles_install(ctx);
        MainEvents_install(window);
        window_Setup(window);
        QApplication::processEvents();
        benchmark::DoNotOptimize(window.isVisible());
        state.PauseTiming();
        window.hide();
        state.ResumeTiming();
    }
    SettingsFile.clear();
}
BENCHMARK(BM_StartupWithLargeDefaultPlaylist)->Unit(benchmark::kMillisecond)->Iterations(5);
