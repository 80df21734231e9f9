#include "core/App.h"
#include "core/Commands.h"
#include "core/ConsoleLog.h"
#include "core/DialogScript.h"
#include "core/MainContext.h"
#include "core/Settings.h"
#include "playlists/AddMedia.h"
#include "playlists/DirectoryAdd.h"
#include "core/ListModel.h"
#include "playlists/PlaylistEditing.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/PlaylistRows.h"
#include "tags/TagsInstall.h"

#include <QAction>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <benchmark/benchmark.h>
#include <sys/resource.h>

// Adding a folder tree of 10,000 MP3 files through the Add Directory menu entry, tags read:
// the time to the end of the add, the peak memory of the process, and the longest gap the event
// loop saw (a 10 ms timer records the gaps between its ticks).

namespace {

constexpr int kFolders = 100;
constexpr int kPerFolder = 100;

QByteArray syncsafe(int n) {
    QByteArray b(4, 0);
    for (int i = 3; i >= 0; --i, n >>= 7)
        b[i] = char(n & 0x7f);
    return b;
}

QByteArray textFrame(const char* id, const QByteArray& text) {
    const QByteArray body = '\0' + text;
    QByteArray f(id, 4);
    const int n = int(body.size());
    f += char(n >> 24) + QByteArray(1, char(n >> 16)) + char(n >> 8) + char(n);
    return f + QByteArray(2, '\0') + body;
}

// An ID3v2.3 tag, three MPEG-1 layer III frames (128 kbit/s, 44.1 kHz, silence) and an ID3v1 tag.
QByteArray mp3File(int folder, int i) {
    const QByteArray artist = "Artist " + QByteArray::number(folder);
    const QByteArray title = "Title " + QByteArray::number(i);
    const QByteArray frames =
        textFrame("TPE1", artist) + textFrame("TIT2", title) + textFrame("TYER", "2001");
    QByteArray out = "ID3" + QByteArray("\x03\x00\x00", 3) + syncsafe(int(frames.size())) + frames;
    QByteArray frame(417, '\0');
    frame[0] = char(0xFF);
    frame[1] = char(0xFB);
    frame[2] = char(0x90);
    frame[3] = char(0x64);
    for (int k = 0; k < 3; ++k)
        out += frame;
    QByteArray v1(128, '\0');
    v1.replace(0, 3, "TAG");
    v1.replace(3, title.size(), title);
    v1.replace(33, artist.size(), artist);
    v1.replace(93, 4, "2001");
    return out + v1;
}

long peakKb() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

void runAdd(benchmark::State& state, bool withReader) {
    QTemporaryDir home;
    App::setPath(home.path());
    SettingsFile = home.filePath(QStringLiteral("settings.ini"));
    const QString root = home.filePath(QStringLiteral("music"));
    for (int d = 0; d < kFolders; ++d) {
        const QString dir = QStringLiteral("%1/Artist %2").arg(root).arg(d);
        QDir().mkpath(dir);
        for (int i = 0; i < kPerFolder; ++i) {
            QFile f(QStringLiteral("%1/%2 - Title %3.mp3").arg(dir).arg(i).arg(i));
            if (f.open(QIODevice::WriteOnly)) f.write(mp3File(d, i));
        }
    }
    ConsoleLog::instance().setWriteFlag(true);

    qint64 longestGap = 0;
    int rows = 0;
    for (auto _ : state) {
        state.PauseTiming();
        ConsoleLog::instance().setText(QString());
        MainContext ctx;
        PlaylistEditing_install(ctx);
        PlaylistFiles_install(ctx);
        AddMedia_install(ctx);
        if (withReader) Tags_install(ctx);
        ctx.commands().setChecked(QStringLiteral("mnuTagsShowTagsAsFilesAreAdded"), true);
        ScriptedResponder dialogs({root, QStringLiteral("no")}); // the folder; No: read tags
        Dialogs::setResponder(&dialogs);
        QElapsedTimer gap;
        QTimer beat;
        beat.setTimerType(Qt::PreciseTimer);
        QObject::connect(&beat, &QTimer::timeout,
                         [&] { longestGap = qMax(longestGap, gap.restart()); });
        QEventLoop loop;
        state.ResumeTiming();

        gap.start();
        beat.start(10);
        ctx.commands().action(QStringLiteral("mnuAddDirectory"))->trigger();
        if (DirectoryAdd* add = DirectoryAdd::running(ctx)) {
            QObject::connect(add, &DirectoryAdd::finished, &loop, &QEventLoop::quit);
            loop.exec();
        }
        beat.stop();

        state.PauseTiming();
        rows = ctx.lstvPlaylist().count();
        Dialogs::setResponder(nullptr);
        state.ResumeTiming();
    }
    playlist_SetTagReader(nullptr);
    state.counters["rows"] = rows;
    state.counters["longest_stall_ms"] = double(longestGap);
    state.counters["peak_rss_MB"] = double(peakKb()) / 1024.0;
    SettingsFile.clear();
}

} // namespace

static void BM_AddDirectory10000Mp3(benchmark::State& state) {
    runAdd(state, true);
}
BENCHMARK(BM_AddDirectory10000Mp3)->Unit(benchmark::kMillisecond)->Iterations(3);

// The same with no tag reader installed: rows are filled from the filenames.
static void BM_AddDirectory10000Mp3NoReader(benchmark::State& state) {
    runAdd(state, false);
}
BENCHMARK(BM_AddDirectory10000Mp3NoReader)->Unit(benchmark::kMillisecond)->Iterations(3);
