#include "core/MainContext.h"
#include "tags/TagFile.h"
#include "tags/TagsInstall.h"
#include "tags/clsID3v1.h"
#include "tags/clsID3v2.h"
#include "tags/modMedia.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

#ifdef VELDOR_HAVE_TAGLIB
#include <fileref.h>
#include <tag.h>
#endif

// Tags and length of 10,000 MP3 files, each with an ID3v2.3 tag of six text frames and 1 KiB of
// padding, about 8 KiB of 128 kbps frames and an ID3v1 tag; the page cache is warm.
namespace {

constexpr int kFiles = 10000;

QByteArray be32(uint32_t v) {
    QByteArray b(4, '\0');
    for (int i = 0; i < 4; ++i)
        b[i] = char(v >> (24 - 8 * i));
    return b;
}
QByteArray frame(const char* id, const QByteArray& text) {
    const QByteArray data = QByteArray(1, '\0') + text;
    return QByteArray(id, 4) + be32(uint32_t(data.size())) + QByteArray(2, '\0') + data;
}

QByteArray song(int i) {
    QByteArray frames = frame("TIT2", "Some Song Title Number " + QByteArray::number(i)) +
                        frame("TPE1", "Artist " + QByteArray::number(i % 977)) +
                        frame("TALB", "Album " + QByteArray::number(i % 50)) +
                        frame("TYER", QByteArray::number(1960 + i % 60)) +
                        frame("TRCK", QByteArray::number(i % 20 + 1)) +
                        frame("COMM", QByteArray("\0\0\0A comment", 12));
    const int size = int(frames.size()) + 1024; // as the published format counts: no header
    const uint32_t synchsafe = (size & 0x7F) | ((size & 0x3F80) << 1);
    QByteArray b =
        QByteArray("ID3\x03\x00\x00", 6) + be32(synchsafe) + frames + QByteArray(1024, '\0');
    QByteArray audio(417, '\x55');
    audio[0] = '\xFF';
    audio[1] = '\xFB';
    audio[2] = '\x90';
    audio[3] = '\x00';
    b += audio.repeated(20);
    QByteArray v1 = "TAG" + QByteArray("Some Song").leftJustified(30, ' ') +
                    QByteArray("Artist").leftJustified(30, ' ') + QByteArray(30, ' ') + "1999" +
                    QByteArray(30, ' ');
    v1 += char(i % 148);
    return b + v1;
}

struct Corpus {
    QTemporaryDir dir;
    QStringList files;
    std::vector<QByteArray> native;
    Corpus() {
        for (int i = 0; i < kFiles; ++i) {
            const QString path =
                dir.filePath(QStringLiteral("song%1.mp3").arg(i, 5, 10, QChar('0')));
            QFile f(path);
            if (f.open(QIODevice::WriteOnly)) f.write(song(i));
            files << path;
            native.push_back(QFile::encodeName(path));
        }
    }
};
Corpus& corpus() {
    static Corpus c;
    return c;
}

// What the rows need of one file: both tags and the length, from one open.
void BM_VeldorTagsAndLength(benchmark::State& state) {
    Corpus& c = corpus();
    qint64 sink = 0;
    for (auto _ : state) {
        for (const QString& path : c.files) {
            TagFile file;
            const bool opened = file.open(path);
            clsID3v1 v1;
            v1.load(path, file, opened);
            clsID3v2 v2;
            v2.load(path, file, opened);
            media_ReadMP3Info(file, opened);
            sink += v1.Artist().size() + v2.Title().size() + media_MP3State().MP3Length.size();
        }
    }
    benchmark::DoNotOptimize(sink);
    state.SetItemsProcessed(state.iterations() * kFiles);
}
BENCHMARK(BM_VeldorTagsAndLength)->Unit(benchmark::kMillisecond);

// The same through the reader the playlist rows use.
void BM_VeldorPlaylistReader(benchmark::State& state) {
    Corpus& c = corpus();
    MainContext ctx;
    Tags_install(ctx);
    PlaylistTagReader* reader = playlist_TagReader();
    qint64 sink = 0;
    for (auto _ : state) {
        for (const QString& path : c.files) {
            const PlaylistTagReader::Song song = reader->readSong(path, true, true);
            sink += song.v1.artist.size() + song.v2.title.size() + song.length.size();
        }
    }
    benchmark::DoNotOptimize(sink);
    state.SetItemsProcessed(state.iterations() * kFiles);
}
BENCHMARK(BM_VeldorPlaylistReader)->Unit(benchmark::kMillisecond);

#ifdef VELDOR_HAVE_TAGLIB
void BM_TagLibTagsAndLength(benchmark::State& state) {
    Corpus& c = corpus();
    qint64 sink = 0;
    for (auto _ : state) {
        for (const QByteArray& path : c.native) {
            TagLib::FileRef ref(path.constData(), true, TagLib::AudioProperties::Average);
            if (ref.isNull()) continue;
            sink += ref.tag()->artist().size() + ref.tag()->title().size() + ref.tag()->year();
            sink += ref.audioProperties()->lengthInSeconds();
        }
    }
    benchmark::DoNotOptimize(sink);
    state.SetItemsProcessed(state.iterations() * kFiles);
}
BENCHMARK(BM_TagLibTagsAndLength)->Unit(benchmark::kMillisecond);
#endif

// The floor: one 4 KiB read at the head and one 128-byte read at the end of each file.
void BM_FloorOneHeadOneTailRead(benchmark::State& state) {
    Corpus& c = corpus();
    char head[4096], tail[128];
    qint64 sink = 0;
    for (auto _ : state) {
        for (const QByteArray& path : c.native) {
            const int fd = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
            if (fd < 0) continue;
            const off_t size = ::lseek(fd, 0, SEEK_END);
            sink += ::pread(fd, head, sizeof head, 0);
            sink += ::pread(fd, tail, sizeof tail, size - 128);
            ::close(fd);
        }
    }
    benchmark::DoNotOptimize(sink);
    state.SetItemsProcessed(state.iterations() * kFiles);
}
BENCHMARK(BM_FloorOneHeadOneTailRead)->Unit(benchmark::kMillisecond);

} // namespace
