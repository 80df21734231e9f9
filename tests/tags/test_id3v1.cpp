#include "support/TempHome.h"
#include "tags/TagBytes.h"
#include "tags/clsID3v1.h"

#include <gtest/gtest.h>

using namespace TagBytes;

namespace {
class ID3v1 : public ::testing::Test {
protected:
    QString write(const QString& name, const QByteArray& bytes) {
        const QString path = home.file(name);
        TempHome::writeFile(path, bytes);
        return path;
    }
    TempHome home;
};
} // namespace

TEST_F(ID3v1, GenreByteNamesAndTheEdgesOfTheList) {
    ASSERT_EQ(clsID3v1::genres().size(), 148);
    clsID3v1 t;
    t.setFilename(write(QStringLiteral("a.mp3"), audio(2) + id3v1("T", "A", 147)));
    EXPECT_EQ(t.Genre(), QStringLiteral("Synth Pop"));
    t.setFilename(write(QStringLiteral("b.mp3"), audio(2) + id3v1("T", "A", 148)));
    EXPECT_EQ(t.Genre(), QString());
    QByteArray nul = QByteArray("TAG") + QByteArray(125, '\0');
    t.setFilename(write(QStringLiteral("c.mp3"), audio(2) + nul));
    EXPECT_EQ(t.Genre(), QStringLiteral("Blues"));
    // NULs are not cut: the reader trims blanks only.
    EXPECT_EQ(t.Title(), QString(30, QChar(0)));
    // The genre survives a file without a tag; the texts do not.
    t.setFilename(write(QStringLiteral("d.mp3"), audio(2)));
    EXPECT_EQ(t.Genre(), QStringLiteral("Blues"));
    EXPECT_EQ(t.Title(), QString());
}

TEST_F(ID3v1, FieldsAreTrimmedOfBlanksAndTheWholeFileCanBeTheTag) {
    clsID3v1 t;
    t.setFilename(write(QStringLiteral("x.MP3"), id3v1("  Title\t ", "Artist", 13)));
    EXPECT_EQ(t.Title(), QStringLiteral("Title\t"));
    EXPECT_EQ(t.Artist(), QStringLiteral("Artist"));
    EXPECT_EQ(t.Year(), QStringLiteral("1999"));
    EXPECT_EQ(t.Genre(), QStringLiteral("Pop"));
    // 127 bytes are not opened.
    t.setFilename(write(QStringLiteral("short.mp3"), id3v1("T", "A", 1).left(127)));
    EXPECT_EQ(t.Title(), QString());
}

TEST_F(ID3v1, OnlyNamesWithAnMpegExtensionAnywhereAreRead) {
    EXPECT_TRUE(clsID3v1::IsMP3File(QStringLiteral("a.mp3.txt")));
    EXPECT_TRUE(clsID3v1::IsMP3File(QStringLiteral("/m/X.Mp1")));
    EXPECT_FALSE(clsID3v1::IsMP3File(QStringLiteral("song.ogg")));
    clsID3v1 t;
    t.setFilename(write(QStringLiteral("song.ogg"), audio(2) + id3v1("T", "A", 1)));
    EXPECT_EQ(t.Title(), QString());
    EXPECT_EQ(t.Filename(), home.file(QStringLiteral("song.ogg")));
}

TEST_F(ID3v1, WritingNeverChangesTheFileLength) {
    const QString path = write(QStringLiteral("w.mp3"), QByteArray(1000, 'a'));
    ID3v1Record r;
    r.Title = QStringLiteral("Title");
    r.Artist = QString(40, QLatin1Char('x')); // cut to 30
    r.Year = QStringLiteral("12345");
    r.Genre = 17;
    EXPECT_TRUE(media_WriteID3v1Record(path, r));
    const QByteArray out = TempHome::readFile(path);
    ASSERT_EQ(out.size(), 1000);
    EXPECT_EQ(out.left(872), QByteArray(872, 'a'));
    EXPECT_EQ(out.mid(872, 3), QByteArray("TAG"));
    EXPECT_EQ(out.mid(875, 30), QByteArray("Title").leftJustified(30, ' '));
    EXPECT_EQ(out.mid(905, 30), QByteArray(30, 'x'));
    EXPECT_EQ(out.mid(965, 4), QByteArray("1234"));
    EXPECT_EQ(uint8_t(out.at(999)), 17);

    // A second write goes over the same tag.
    r.Title = QStringLiteral("Again");
    EXPECT_TRUE(media_WriteID3v1Record(path, r));
    clsID3v1 t;
    t.setFilename(path);
    EXPECT_EQ(t.Title(), QStringLiteral("Again"));
    EXPECT_EQ(t.Genre(), QStringLiteral("Rock"));
    EXPECT_EQ(TempHome::readFile(path).size(), 1000);

    // Too short for a tag, or missing: nothing happens and nothing loops.
    const QString tiny = write(QStringLiteral("tiny.mp3"), QByteArray(50, 'a'));
    EXPECT_FALSE(media_WriteID3v1Record(tiny, r));
    EXPECT_EQ(TempHome::readFile(tiny), QByteArray(50, 'a'));
    EXPECT_FALSE(media_WriteID3v1Record(home.file(QStringLiteral("none.mp3")), r));
}
