#include "core/App.h"
#include "core/Settings.h"

#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

// A settings.ini as a long-used installation has it: about 200 keys over the usual sections.
struct RealisticSettings {
    QTemporaryDir home;
    RealisticSettings() {
        App::setPath(home.path());
        SettingsFile = home.filePath(QStringLiteral("settings.ini"));
        QByteArray ini = "[VELDOR]\r\nVersion=1.0.0\r\nBuild=1\r\nBetaInformation=\r\n\r\n";
        const char* sections[] = {"Settings",           "Playback",        "PlayMode",
                                  "ListSorting",        "Sound",           "Appearance",
                                  "GlobalKeys",         "FileTypes",       "JumpToMedia",
                                  "MiniModeAppearance", "RecentPlaylists", "RecentMediaFiles"};
        int key = 0;
        for (const char* section : sections) {
            ini += QByteArray("[") + section + "]\r\n";
            for (int i = 0; i < 16; ++i, ++key)
                ini += "Key" + QByteArray::number(key) + "=" +
                       (i % 3 ? QByteArray::number(i)
                              : "/home/user/Music/Some Artist/Album " + QByteArray::number(key) +
                                    ".spp") +
                       "\r\n";
            if (qstrcmp(section, "Settings") == 0)
                ini += "IntroductionRate=30\r\nUseSystemTraySupport=1\r\n";
            ini += "\r\n";
        }
        QFile f(SettingsFile);
        if (f.open(QIODevice::WriteOnly)) f.write(ini);
    }
    ~RealisticSettings() { SettingsFile.clear(); }
};

} // namespace

// What tmrPosition_Timer does in Introduction mode every 500 ms.
static void BM_SettingsReadInTimerTick(benchmark::State& state) {
    RealisticSettings settings;
    for (auto _ : state)
        benchmark::DoNotOptimize(settings_Number(
            QStringLiteral("Settings"), QStringLiteral("IntroductionRate"), QStringLiteral("30")));
}
BENCHMARK(BM_SettingsReadInTimerTick);

// A read right after the file changed on disk: the parsed copy must be dropped.
static void BM_SettingsReadAfterWrite(benchmark::State& state) {
    RealisticSettings settings;
    int n = 0;
    for (auto _ : state) {
        settings_Write(QStringLiteral("Playback"), QStringLiteral("LastPlayed"), ++n);
        benchmark::DoNotOptimize(settings_Read(
            QStringLiteral("Settings"), QStringLiteral("IntroductionRate"), QStringLiteral("30")));
    }
}
BENCHMARK(BM_SettingsReadAfterWrite)->Unit(benchmark::kMicrosecond);

// A menu click that stores its check mark: the whole file is replaced atomically.
static void BM_SettingsWrite(benchmark::State& state) {
    RealisticSettings settings;
    bool on = false;
    for (auto _ : state) {
        on = !on;
        settings_Write(QStringLiteral("Settings"), QStringLiteral("LockPlaylist"), on);
    }
}
BENCHMARK(BM_SettingsWrite)->Unit(benchmark::kMicrosecond);
