// Tag writes cut short by a kill: the song is never lost or torn, and what the write left
// behind (a temporary copy, a journal) is dealt with by the next write or the next start.
#include "core/modFiles.h"
#include "support/TempHome.h"
#include "tags/TagShift.h"
#include "tags/clsID3v2.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

class TagSafety : public ::testing::Test {
protected:
    TagSafety() : oldState(qgetenv("XDG_STATE_HOME")) {
        qputenv("XDG_STATE_HOME", home.file("state").toUtf8());
    }
    ~TagSafety() override {
        TagShift::dieAtForTests(nullptr);
        oldState.isNull() ? qunsetenv("XDG_STATE_HOME") : qputenv("XDG_STATE_HOME", oldState);
    }
    // A song of `audio` bytes of noise without a tag.
    QString song(const QString& name, int audio = 1 << 20) {
        QByteArray bytes(audio, '\0');
        for (int i = 0; i < audio; ++i)
            bytes[i] = char((uint32_t(i) * 7919u) >> 3);
        const QString path = home.file("music/" + name);
        TempHome::writeFile(path, bytes);
        return path;
    }
    QStringList hidden() const {
        return QDir(home.file("music"))
            .entryList(QDir::Files | QDir::Hidden)
            .filter(QRegularExpression("^\\."));
    }
    QStringList pending() const {
        return QDir(home.file("state/veldor/pending")).entryList(QDir::Files);
    }

    TempHome home;
    QByteArray oldState;
};

} // namespace

TEST_F(TagSafety, AShiftCutShortLeavesARecognisableCopyThatTheNextWriteOrStartRemoves) {
    const QString a = song("a.mp3");
    const QByteArray before = TempHome::readFile(a);
    clsID3v2 t;
    t.setFilename(a);
    t.setTitle("New");
    TagShift::dieAtForTests("copy");
    EXPECT_FALSE(t.Save());
    // The song is whole; beside it lies one copy of the kind the writer makes.
    EXPECT_EQ(TempHome::readFile(a), before);
    ASSERT_EQ(hidden().size(), 1);
    EXPECT_TRUE(modFiles::file_IsLeftoverTemp(hidden().first()));
    EXPECT_EQ(pending().size(), 1);

    // The next write into that folder clears it.
    const QString b = song("b.mp3");
    clsID3v2 other;
    other.setFilename(b);
    other.setTitle("B");
    ASSERT_TRUE(other.Save());
    EXPECT_TRUE(hidden().isEmpty()) << hidden().join(' ').toStdString();

    // So does the next start, which knows the folder from the list of writes under way.
    TagShift::dieAtForTests("copy");
    EXPECT_FALSE(t.Save());
    ASSERT_EQ(hidden().size(), 1);
    EXPECT_GE(TagShift::recoverAll(), 1);
    EXPECT_TRUE(hidden().isEmpty());
    EXPECT_TRUE(pending().isEmpty());
    // Both songs still read.
    t.setFilename(b);
    EXPECT_EQ(t.Title(), "B");
}

TEST_F(TagSafety, AnInPlaceWriteCutShortIsRolledBackFromItsJournal) {
    const QString path = song("big.mp3", 2 << 20);
    clsID3v2 t;
    t.setFilename(path);
    const QString fields[] = {"Comment", "ArtistURL", "BuyURL",   "EncodedBy",
                              "Title",   "Artist",    "Composer", "Copyright"};
    for (const QString& f : fields)
        t.setPropertyByName(f, QString(100000, f.at(0)));
    ASSERT_TRUE(t.Save());
    const QByteArray before = TempHome::readFile(path);

    t.setFilename(path);
    t.setComment("short");
    TagShift::dieAtForTests("overwrite");
    EXPECT_FALSE(t.Save());
    // Torn on disk for now, with a journal the size of the tag beside it, not of the song.
    EXPECT_NE(TempHome::readFile(path), before);
    const QString journal = TagShift::journalPath(path);
    ASSERT_TRUE(QFile::exists(journal));
    EXPECT_GT(QFileInfo(journal).size(), 700000);
    EXPECT_LT(QFileInfo(journal).size(), 710000);

    // The next start puts the old tag back, byte for byte.
    EXPECT_GE(TagShift::recoverAll(), 1);
    EXPECT_EQ(TempHome::readFile(path), before);
    EXPECT_FALSE(QFile::exists(journal));
    t.setFilename(path);
    EXPECT_EQ(t.Comment(), QString(100000, 'C'));
    EXPECT_EQ(t.EncodedBy(), QString(100000, 'E'));

    // Cut short again, the next write to the file rolls back first and then goes through.
    t.setComment("short");
    TagShift::dieAtForTests("overwrite");
    EXPECT_FALSE(t.Save());
    ASSERT_TRUE(t.Save());
    t.setFilename(path);
    EXPECT_EQ(t.Comment(), "short");
    EXPECT_EQ(t.BuyURL(), QString(100000, 'B'));
    EXPECT_EQ(QFileInfo(path).size(), before.size());
    EXPECT_TRUE(hidden().isEmpty()) << hidden().join(' ').toStdString();
}

TEST_F(TagSafety, AWriteStillRunningElsewhereKeepsItsFiles) {
    // A temporary file whose writer holds it locked is not a leftover.
    const QString a = song("a.mp3");
    QByteArray name = QFile::encodeName(modFiles::file_TempTemplate(a));
    const int fd = ::mkstemp(name.data());
    ASSERT_GE(fd, 0);
    ASSERT_EQ(::flock(fd, LOCK_EX), 0);
    EXPECT_EQ(TagShift::recoverFolder(home.file("music")), 0);
    EXPECT_TRUE(QFile::exists(QFile::decodeName(name)));
    ::close(fd);
    EXPECT_EQ(TagShift::recoverFolder(home.file("music")), 1);
    EXPECT_FALSE(QFile::exists(QFile::decodeName(name)));
}
