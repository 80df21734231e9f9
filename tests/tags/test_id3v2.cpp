#include "support/TempHome.h"
#include "tags/TagBytes.h"
#include "tags/clsID3v2.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace TagBytes;

namespace {

class ID3v2 : public ::testing::Test {
protected:
    QString write(const QByteArray& bytes, const QString& name = QStringLiteral("a.mp3")) {
        const QString path = home.file(name);
        TempHome::writeFile(path, bytes);
        return path;
    }
    QByteArray read(const QString& path) { return TempHome::readFile(path); }
    clsID3v2 load(const QString& path) {
        clsID3v2 t;
        t.setFilename(path);
        return t;
    }
    TempHome home;
};

int openDescriptors() {
    return int(QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System).size());
}

} // namespace

TEST_F(ID3v2, NewTagIsPaddedToTheNext2048AndAudioStartsThere) {
    const QByteArray audioBytes = audio(10);
    const QString path = write(audioBytes);
    clsID3v2 t = load(path);
    EXPECT_FALSE(t.HasID3v2Tag());
    // 10 header + (10 + 1 + 2023) frame + 4 end = exactly 2048: the size still goes up to 4096.
    t.setTitle(QString(2023, QLatin1Char('t')));
    ASSERT_EQ(t.tagBytes().size(), 2048);
    ASSERT_TRUE(t.Save());
    const QByteArray out = read(path);
    ASSERT_EQ(out.size(), 4096 + audioBytes.size());
    EXPECT_EQ(out.left(6), QByteArray("ID3\x03\x00\x00", 6));
    EXPECT_EQ(readBE32(out, 6), 4096u); // plain, not synchsafe
    EXPECT_EQ(out.mid(10, 11), QByteArray("TIT2\x00\x00\x07\xE8\x00\x00\x00", 11));
    EXPECT_EQ(out.mid(2048 - 4, 4), QByteArray(4, '\0'));
    EXPECT_EQ(out.mid(2048, 2048), QByteArray(2048, '\0'));
    EXPECT_EQ(out.mid(4096), audioBytes);

    EXPECT_EQ(load(path).Title(), QString(2023, QLatin1Char('t')));
}

TEST_F(ID3v2, FramesAsWrittenCarryTheirPrefixNuls) {
    const QString path = write(audio(3));
    clsID3v2 t = load(path);
    t.setArtist(QStringLiteral("Ann"));
    t.setComment(QStringLiteral("Hi"));
    t.setLyrics(QStringLiteral("La"));
    t.setLinkTo(QStringLiteral("u"));
    const QByteArray tag = t.tagBytes();
    EXPECT_EQ(tag.mid(10), frame("TPE1", QByteArray("\0Ann", 4)) +
                               frame("COMM", QByteArray("\0\0\0Hi", 5)) +
                               frame("USLT", QByteArray("\0\0La", 4)) +
                               frame("WXXX", QByteArray("\0\0u", 3)) + QByteArray(4, '\0'));
    EXPECT_EQ(readBE32(tag, 6), uint32_t(tag.size()));
    ASSERT_TRUE(t.Save());
    clsID3v2 back = load(path);
    EXPECT_EQ(back.Artist(), QStringLiteral("Ann"));
    EXPECT_EQ(back.Comment(), QStringLiteral("Hi"));
    EXPECT_EQ(back.Lyrics(), QStringLiteral("La"));
    EXPECT_EQ(back.LinkTo(), QStringLiteral("u"));
}

TEST_F(ID3v2, ShorterTagIsWrittenInPlaceLongerOneShiftsByTheDifference) {
    const QByteArray audioBytes = audio(20);
    const QString path = write(audioBytes);
    {
        clsID3v2 t = load(path);
        t.setTitle(QStringLiteral("A long title of some length"));
        ASSERT_TRUE(t.Save());
    }
    const QByteArray first = read(path);
    ASSERT_EQ(first.size(), 2048 + audioBytes.size());

    // In place: same length, size field kept, the old bytes behind the end marker stay.
    clsID3v2 t = load(path);
    t.setTitle(QStringLiteral("Short"));
    ASSERT_TRUE(t.Save());
    const QByteArray second = read(path);
    ASSERT_EQ(second.size(), first.size());
    EXPECT_EQ(readBE32(second, 6), 2048u);
    const int end = int(t.tagBytes().size());
    EXPECT_EQ(second.mid(end), first.mid(end));
    EXPECT_EQ(load(path).Title(), QStringLiteral("Short"));

    // Larger than the old 2048: the head moves by newSize - oldSize only.
    clsID3v2 big = load(path);
    big.setLyrics(QString(3000, QLatin1Char('l')));
    const int T = int(big.tagBytes().size());
    ASSERT_TRUE(big.Save());
    const QByteArray third = read(path);
    EXPECT_EQ(readBE32(third, 6), uint32_t((T / 2048 + 1) * 2048));
    EXPECT_EQ(third.size(), second.size() + (T / 2048 + 1) * 2048 - 2048);
    EXPECT_TRUE(third.endsWith(audioBytes));
    clsID3v2 back = load(path);
    EXPECT_EQ(back.Title(), QStringLiteral("Short"));
    EXPECT_EQ(back.Lyrics().size(), 3000);
    // No copy is left beside the file.
    EXPECT_EQ(QDir(home.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(ID3v2, AFrameHeaderCountsSixteenAgainstTheSize) {
    // Size field = exact length, as a tag written over an older larger one would not have it.
    const QByteArray frames = frame("TIT2", QByteArray("\0abcd", 5)) +
                              frame("TPE1", QByteArray("\0efgh", 5)) +
                              frame("TALB", QByteArray("\0ijkl", 5));
    const QByteArray tag = header(3, uint32_t(10 + frames.size() + 4)) + frames + QByteArray(4, 0);
    clsID3v2 t = load(write(tag + audio(2)));
    // 16 + 5 + 16 + 5 + 16 + 5 = 63 > 59: the third frame is dropped.
    EXPECT_EQ(t.FrameCount(), 2);
    EXPECT_EQ(t.Title(), QStringLiteral("abcd"));
    EXPECT_EQ(t.Artist(), QStringLiteral("efgh"));
    EXPECT_EQ(t.Album(), QString());
}

TEST_F(ID3v2, EveryNulIsTakenOutAndTheEncodingByteIsNotLookedAt) {
    const QByteArray frames = frame("TIT2", QByteArray("\x01\xFF\xFE"
                                                       "A\0B\0",
                                                       7)) +
                              frame("COMM", QByteArray("\0eng\0Hello", 10)) +
                              frame("COMM", QByteArray("\0\0\0Own", 6)) +
                              frame("TXXX", QByteArray("\0a\0b", 4));
    const QByteArray tag = header(3, 1000) + frames + QByteArray(4, 0);
    clsID3v2 t = load(write(tag + audio(2)));
    EXPECT_EQ(t.Title(), QString::fromLatin1("\x01\xFF\xFE"
                                             "AB"));
    // Two comments: joined by a NUL and a line break.
    EXPECT_EQ(t.Comment(), QStringLiteral("engHello") + QChar(0) + QStringLiteral("\r\nOwn"));
    EXPECT_EQ(t.TagsInFrame(QStringLiteral("COMM")), 2);
    EXPECT_EQ(t.Tag(QStringLiteral("TXXX"), 1), QStringLiteral("ab"));
    EXPECT_EQ(t.Frame(1), QStringLiteral("TIT2"));
    EXPECT_EQ(t.Frame(3), QStringLiteral("TXXX"));
}

TEST_F(ID3v2, SizesArePlainBigEndianInEveryVersion) {
    // Version 4 frame size bytes 0 0 1 0: 256, where the published format would say 128.
    const QByteArray data = QByteArray(1, '\0') + QByteArray(255, 'x');
    const QByteArray tag = header(4, 2000) + frame("TIT2", data) + QByteArray(4, 0);
    clsID3v2 t = load(write(tag + audio(2)));
    EXPECT_EQ(t.ID3v2TagVersion(), 4);
    EXPECT_EQ(t.Title().size(), 255);

    // A synchsafe tag size reads larger than meant, and a tag size with the top bit set is
    // negative: no frame fits.
    const QByteArray neg = header(3, 0x80000000u) + frame("TIT2", QByteArray("\0x", 2));
    clsID3v2 n = load(write(neg + audio(2), QStringLiteral("n.mp3")));
    EXPECT_TRUE(n.HasID3v2Tag());
    EXPECT_EQ(n.FrameCount(), 0);
}

TEST_F(ID3v2, NegativeFrameSizeStopsTheReadAndClosesTheFile) {
    const QByteArray bad = QByteArray("TPE1") + be32(0xFFFFFFF0u) + QByteArray(2, '\0');
    const QByteArray tag =
        header(3, 4000) + frame("TIT2", QByteArray("\0Kept", 5)) + bad + QByteArray(100, 'z');
    const QString path = write(tag + audio(2));
    const int before = openDescriptors();
    clsID3v2 t = load(path);
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(t.Title(), QStringLiteral("Kept"));
    EXPECT_EQ(t.FrameCount(), 1);
}

TEST_F(ID3v2, VersionTwoFramesAreRenamedAndSavedAsVersionThree) {
    const QByteArray frames = frameV2("TT2", QByteArray("\0Song", 5)) +
                              frameV2("TP1", QByteArray("\0Band", 5)) +
                              frameV2("PIC", QByteArray("\0JPG\x03\0\xFF\xD8", 8));
    const QByteArray tag = header(2, 500) + frames + QByteArray(3, 0);
    const QString path = write(tag + QByteArray(500 - tag.size(), '\0') + audio(4));
    clsID3v2 t = load(path);
    EXPECT_EQ(t.ID3v2TagVersion(), 2);
    EXPECT_EQ(t.Title(), QStringLiteral("Song"));
    EXPECT_EQ(t.Frame(3), QString()); // a frame without a four-letter name
    t.setYear(QStringLiteral("2001"));
    ASSERT_TRUE(t.Save());

    const QByteArray out = read(path);
    EXPECT_EQ(out.at(3), 3);
    EXPECT_EQ(out.mid(10, 4), QByteArray("TIT2"));
    clsID3v2 back = load(path);
    EXPECT_EQ(back.ID3v2TagVersion(), 3);
    EXPECT_EQ(back.FrameCount(), 3); // the nameless frame is not written
    EXPECT_EQ(back.Artist(), QStringLiteral("Band"));
    EXPECT_EQ(back.Year(), QStringLiteral("2001"));
}

TEST_F(ID3v2, FramesTheTextCannotHoldAreWrittenBackByteForByte) {
    const QByteArray picture =
        QByteArray("\0image/png\0\x03\0", 14) + QByteArray("\x89PNG\0\0\x01", 7);
    const QByteArray comm = QByteArray("\0eng\0Note", 9);
    const QByteArray frames =
        frame("APIC", picture) + frame("COMM", comm) + frame("TIT2", QByteArray("\0Old", 4));
    const QByteArray tag = header(3, 4096) + frames + QByteArray(4, 0);
    const QString path = write(tag + QByteArray(4096 - tag.size(), '\0') + audio(2));
    clsID3v2 t = load(path);
    t.setTitle(QStringLiteral("New"));
    ASSERT_TRUE(t.Save());
    const QByteArray out = read(path);
    EXPECT_EQ(out.mid(10, frames.size() - 14), frame("APIC", picture) + frame("COMM", comm));
    EXPECT_EQ(load(path).Title(), QStringLiteral("New"));

    // Once a property replaces it, the comment is this program's own again.
    clsID3v2 again = load(path);
    again.setComment(QStringLiteral("Mine"));
    EXPECT_TRUE(again.tagBytes().contains(frame("COMM", QByteArray("\0\0\0Mine", 7))));
}

TEST_F(ID3v2, TheSearchStopsAtFFFBOnlyAndOtherwiseRunsToTheEnd) {
    QByteArray fb = audio(30); // starts FF FB
    fb += header(3, 100) + frame("TIT2", QByteArray("\0Deep", 5)) + QByteArray(4, 0);
    EXPECT_FALSE(load(write(fb, QStringLiteral("fb.mp3"))).HasID3v2Tag());

    QByteArray f3 = audio(30).replace("\xFF\xFB", "\xFF\xF3");
    const int at = int(f3.size());
    f3 += header(3, 100) + frame("TIT2", QByteArray("\0Deep", 5)) + QByteArray(4, 0) +
          QByteArray(100, '\0');
    clsID3v2 deep = load(write(f3, QStringLiteral("f3.mp3")));
    EXPECT_EQ(deep.TagPosition(), at + 4);
    // Frames past the tag size, counted from the file's start, are not read.
    EXPECT_EQ(deep.FrameCount(), 1);

    // A marker across the 4096 boundary is still found (blocks overlap by 3).
    QByteArray edge(4094, 'a');
    edge += header(3, 0x7FFFFFFF) + frame("TIT2", QByteArray("\0Edge", 5)) + QByteArray(50, 0);
    EXPECT_EQ(load(write(edge, QStringLiteral("edge.mp3"))).TagPosition(), 4094 + 4);
}

TEST_F(ID3v2, PropertyWritesLeaveOneValueAtTheEndAndLyricsOutliveALoad) {
    const QByteArray frames =
        frame("TIT2", QByteArray("\0a", 2)) + frame("TIT2", QByteArray("\0b", 2)) +
        frame("USLT", QByteArray("\0\0words", 7)) + frame("TPE1", QByteArray("\0c", 2));
    const QString path = write(header(3, 1000) + frames + QByteArray(4, 0) + audio(2));
    clsID3v2 t = load(path);
    EXPECT_EQ(t.Title(), QStringLiteral("b"));
    EXPECT_EQ(t.TagsInFrame(QStringLiteral("TIT2")), 2);
    t.setTitle(QString());
    EXPECT_EQ(t.TagsInFrame(QStringLiteral("TIT2")), 1);
    EXPECT_EQ(t.Frame(t.FrameCount()), QStringLiteral("TIT2"));

    EXPECT_FALSE(t.RemoveFrame(QStringLiteral("XXXX")));
    EXPECT_TRUE(t.lastError().source.endsWith(QLatin1String(".cMP3ID3v2")));

    t.setFilename(write(audio(3), QStringLiteral("plain.mp3")));
    EXPECT_EQ(t.Lyrics(), QStringLiteral("words"));
    EXPECT_EQ(t.Title(), QString());
}

TEST_F(ID3v2, SaveReportsTheSystemErrorAndKeepsTheFileMode) {
    clsID3v2 gone;
    gone.setFilename(home.file(QStringLiteral("missing.mp3")));
    gone.setTitle(QStringLiteral("x"));
    EXPECT_FALSE(gone.Save());
    EXPECT_EQ(gone.lastError().number, ENOENT);
    EXPECT_FALSE(gone.lastError().description.isEmpty());

    const QString path = write(audio(2));
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                    QFileDevice::ReadOther);
    clsID3v2 t = load(path);
    t.setTitle(QStringLiteral("x"));
    ASSERT_TRUE(t.Save());
    EXPECT_EQ(QFile::permissions(path) & 0x7077,
              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadOther);
}

TEST_F(ID3v2, AMarkerInsideTheAudioIsNeverWrittenOver) {
    // Audio that does not stop the search, with "ID3" and a size that would fit the new tag.
    QByteArray f3 = audio(30).replace("\xFF\xFB", "\xFF\xF3");
    f3 += header(3, 0x4000) + QByteArray(300, '\x55') + audio(10).replace("\xFF\xFB", "\xFF\xF3");
    const QString path = write(f3);
    clsID3v2 t = load(path);
    ASSERT_GT(t.TagPosition(), 4);
    t.setTitle(QStringLiteral("Safe"));
    ASSERT_TRUE(t.Save());
    const QByteArray after = read(path);
    // A new tag at the head; every byte of the file follows it unchanged.
    ASSERT_EQ(after.size(), f3.size() + 2048);
    EXPECT_EQ(after.mid(2048), f3);
    EXPECT_EQ(load(path).Title(), QStringLiteral("Safe"));
}

TEST_F(ID3v2, ASynchsafeSizeFromElsewhereEndsWhereTheAudioBegins) {
    // 1 KiB of padding in a synchsafe size: read plainly it reaches into the audio.
    const QByteArray frames = frame("TIT2", QByteArray("\0Old", 4));
    const uint32_t realSize = uint32_t(frames.size()) + 1024;
    const QByteArray sound = audio(40);
    const QByteArray file =
        header(4, synchsafe(realSize)) + frames + QByteArray(1024, '\0') + sound;
    ASSERT_GT(readBE32(file, 6), realSize);
    const QString path = write(file);

    clsID3v2 t = load(path);
    t.setTitle(QStringLiteral("Shorter"));
    ASSERT_TRUE(t.Save()); // fits: in place, within the real tag
    QByteArray after = read(path);
    EXPECT_EQ(after.size(), file.size());
    EXPECT_EQ(after.right(sound.size()), sound);

    // Larger than the real tag, smaller than its size read plainly.
    t = load(path);
    t.setLyrics(QString(1500, QLatin1Char('y')));
    ASSERT_TRUE(t.Save());
    after = read(path);
    EXPECT_EQ(after.right(sound.size()), sound);

    t = load(path);
    t.setLyrics(QString(3000, QLatin1Char('x')));
    ASSERT_TRUE(t.Save()); // larger: shifted, the audio whole behind the new tag
    after = read(path);
    EXPECT_EQ(after.right(sound.size()), sound);
    EXPECT_EQ(load(path).Lyrics(), QString(3000, QLatin1Char('x')));
}
