// Tags checked against an independent reader and writer (mutagen), and the decoded audio
// (ffmpeg's md5 of the PCM) compared before and after every write.
#include "support/TempHome.h"
#include "tags/clsID3v1.h"
#include "tags/clsID3v2.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <gtest/gtest.h>

namespace {

const QString kPython = QStringLiteral("/usr/bin/python3");

QByteArray run(const QString& program, const QStringList& args, bool* ok = nullptr) {
    QProcess p;
    p.start(program, args);
    const bool done =
        p.waitForFinished(60000) && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
    if (ok) *ok = done;
    return p.readAllStandardOutput();
}

class CrossCheck : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        bool ok = false;
        run(kPython, {QStringLiteral("-c"), QStringLiteral("import mutagen")}, &ok);
        available = ok && !QStandardPaths::findExecutable(QStringLiteral("ffmpeg")).isEmpty();
    }
    void SetUp() override {
        if (!available) GTEST_SKIP() << "mutagen or ffmpeg missing";
        base = home.file(QStringLiteral("base.mp3"));
        bool ok = false;
        run(QStringLiteral("ffmpeg"),
            {"-v", "error", "-f", "lavfi", "-i", "sine=frequency=440:duration=2", "-c:a",
             "libmp3lame", "-b:a", "128k", "-write_xing", "0", "-id3v2_version", "0", "-fflags",
             "+bitexact", "-y", base},
            &ok);
        ASSERT_TRUE(ok);
    }
    QString copy(const QString& name) {
        const QString path = home.file(name);
        QFile::copy(base, path);
        return path;
    }
    QByteArray md5(const QString& path) {
        bool ok = false;
        const QByteArray out =
            run(QStringLiteral("ffmpeg"), {"-v", "error", "-i", path, "-f", "md5", "-"}, &ok);
        EXPECT_TRUE(ok) << path.toStdString();
        return out.trimmed();
    }
    void mutagenWrite(const QString& path, int version, bool small = false) {
        bool ok = false;
        QStringList args{helper(), QStringLiteral("write"), path, QString::number(version)};
        if (small) args << QStringLiteral("small");
        run(kPython, args, &ok);
        ASSERT_TRUE(ok);
    }
    QJsonObject mutagenRead(const QString& path) {
        bool ok = false;
        const QByteArray out = run(kPython, {helper(), QStringLiteral("read"), path}, &ok);
        EXPECT_TRUE(ok) << path.toStdString();
        return QJsonDocument::fromJson(out).object();
    }
    static QString helper() { return QStringLiteral(VELDOR_TAGS_TEST_DIR "/mutagen_helper.py"); }

    static inline bool available = false;
    TempHome home;
    QString base;
};

} // namespace

TEST_F(CrossCheck, TagsMutagenWritesReadAsTheDialectSays) {
    for (int version : {3, 4}) {
        const QString path = copy(QStringLiteral("m%1.mp3").arg(version));
        mutagenWrite(path, version);
        clsID3v2 t;
        t.setFilename(path);
        EXPECT_EQ(t.ID3v2TagVersion(), version);
        EXPECT_EQ(t.Title(), QStringLiteral("Title One"));
        EXPECT_EQ(t.Artist(), QStringLiteral("The Artist"));
        // UTF-16: the encoding byte and the byte-order mark stay, the NULs go.
        EXPECT_EQ(t.Album(), QString::fromLatin1("\x01\xFF\xFE"
                                                 "Alb"));
        EXPECT_EQ(t.Comment(), QStringLiteral("engNote"));
        EXPECT_EQ(t.Year(), version == 3 ? QStringLiteral("1999") : QString()); // 2.4 has TDRC
        clsID3v1 v1;
        v1.setFilename(path);
        // mutagen pads with NULs, which the reader keeps.
        EXPECT_EQ(v1.Title(), QStringLiteral("Title One") + QString(21, QChar(0)));
        EXPECT_EQ(v1.Artist(), QStringLiteral("The Artist") + QString(20, QChar(0)));
        EXPECT_EQ(v1.Year(), QStringLiteral("1999"));
    }
}

TEST_F(CrossCheck, AudioIsUnchangedByEveryWriteAndMutagenReadsWhatWeWrite) {
    // A file without any tag: a new one shifts the whole file.
    const QString path = copy(QStringLiteral("w.mp3"));
    const QByteArray before = md5(path);
    ASSERT_FALSE(before.isEmpty());
    const qint64 size0 = QFileInfo(path).size();
    clsID3v2 t;
    t.setFilename(path);
    t.setTitle(QStringLiteral("Fresh"));
    t.setArtist(QStringLiteral("Band"));
    t.setAlbum(QStringLiteral("Record"));
    ASSERT_TRUE(t.Save());
    EXPECT_EQ(QFileInfo(path).size(), size0 + 2048);
    EXPECT_EQ(md5(path), before);
    const QJsonObject seen = mutagenRead(path);
    EXPECT_EQ(seen.value(QStringLiteral("TIT2")).toString(), QStringLiteral("Fresh"));
    EXPECT_EQ(seen.value(QStringLiteral("TPE1")).toString(), QStringLiteral("Band"));
    EXPECT_EQ(seen.value(QStringLiteral("TALB")).toString(), QStringLiteral("Record"));

    // Shorter again: in place.
    t.setFilename(path);
    t.setTitle(QStringLiteral("F"));
    t.setYear(QStringLiteral("2002"));
    ASSERT_TRUE(t.Save());
    EXPECT_EQ(QFileInfo(path).size(), size0 + 2048);
    EXPECT_EQ(md5(path), before);
    // mutagen gives a version 3 year as its newer frame.
    EXPECT_EQ(mutagenRead(path).value(QStringLiteral("TDRC")).toString(), QStringLiteral("2002"));

    // Larger than the padding: shifted by the difference.
    t.setFilename(path);
    t.setLyrics(QString(2500, QLatin1Char('l')));
    ASSERT_TRUE(t.Save());
    EXPECT_EQ(QFileInfo(path).size(), size0 + 4096);
    EXPECT_EQ(md5(path), before);

    // Over a foreign tag whose size reads the same in both ways: shifted, audio kept.
    const QString foreign = copy(QStringLiteral("foreign.mp3"));
    mutagenWrite(foreign, 3, true);
    const QByteArray foreignBefore = md5(foreign);
    t.setFilename(foreign);
    EXPECT_EQ(t.Title(), QStringLiteral("Title One"));
    t.setTitle(QStringLiteral("Replaced"));
    ASSERT_TRUE(t.Save());
    EXPECT_EQ(md5(foreign), foreignBefore);
    EXPECT_EQ(mutagenRead(foreign).value(QStringLiteral("TIT2")).toString(),
              QStringLiteral("Replaced"));

    // mutagen's own padding makes its synchsafe size read larger: every write stays in the tag.
    const QString padded = copy(QStringLiteral("padded.mp3"));
    mutagenWrite(padded, 4);
    const QByteArray paddedBefore = md5(padded);
    for (int length : {5, 700, 5000}) {
        t.setFilename(padded);
        t.setLyrics(QString(length, QLatin1Char('p')));
        ASSERT_TRUE(t.Save());
        EXPECT_EQ(md5(padded), paddedBefore) << length;
    }

    // The ID3v1 tag mutagen left is written over, not the audio.
    ID3v1Record r;
    r.Title = QStringLiteral("V1");
    ASSERT_TRUE(media_WriteID3v1Record(foreign, r));
    EXPECT_EQ(md5(foreign), foreignBefore);
}

TEST_F(CrossCheck, InPlaceWritesKeepTheSizeBytesOfAForeignTag) {
    for (int version : {3, 4}) {
        SCOPED_TRACE(version);
        const QString path = copy(QStringLiteral("keep%1.mp3").arg(version));
        mutagenWrite(path, version);
        const QByteArray audio = md5(path);
        const QByteArray sizeBytes = TempHome::readFile(path).mid(6, 4);
        const qint64 length = QFileInfo(path).size();
        for (const char* title : {"Short", "S", "Another short one"}) {
            clsID3v2 t;
            t.setFilename(path);
            t.setTitle(QString::fromLatin1(title));
            ASSERT_TRUE(t.Save());
            // Written over the old tag, the four size bytes exactly as they were.
            EXPECT_EQ(TempHome::readFile(path).mid(6, 4), sizeBytes);
            EXPECT_EQ(QFileInfo(path).size(), length);
            EXPECT_EQ(md5(path), audio);
            EXPECT_EQ(mutagenRead(path).value(QStringLiteral("TIT2")).toString(),
                      QString::fromLatin1(title));
        }
    }
}
