#include "tags/MassTagEdit.h"
#include "tags/MoveToFolder.h"
#include "tags/TagToolsFixture.h"
#include "tags/clsID3v2.h"

#include <sys/stat.h>

using namespace PlaylistColumn;

namespace {

class MassTags : public TagToolsFixture {
protected:
    void edit(const MassTagEdit::Options& options) {
        MassTagEdit run(ctx, options);
        run.runToEnd();
    }
    ListModel moved{
        {QStringLiteral("Number:"), QStringLiteral("Artist"), QStringLiteral("Title:")}};
    void move(const MoveToFolder::Options& options) {
        MoveToFolder run(ctx, options, moved);
        run.runToEnd();
    }
};

} // namespace

TEST_F(MassTags, EmptyBoxesKeepEachTagButTheGenre) {
    const QString tagged = mp3(QStringLiteral("a.mp3"), v1("Art", "Tit", "Alb", "2001", 17));
    const QString bare = mp3(QStringLiteral("b.mp3"), {});
    const QByteArray bareBefore = TempHome::readFile(bare);
    addFile(tagged);
    addFile(bare);
    MassTagEdit::Options o;
    o.genre = 9;
    edit(o);
    EXPECT_EQ(TempHome::readFile(tagged).right(128), v1("Art", "Tit", "Alb", "2001", 9));
    // A file without a tag gets one with empty fields over its last 128 bytes.
    const QByteArray after = TempHome::readFile(bare);
    EXPECT_EQ(after.size(), bareBefore.size());
    EXPECT_EQ(after.left(after.size() - 128), bareBefore.left(bareBefore.size() - 128));
    EXPECT_EQ(after.right(128), v1("", "", "", "", 9));
    EXPECT_EQ(list().text(0, Artist), QStringLiteral("Art"));
    EXPECT_TRUE(log().contains(tagged + QStringLiteral(" ID3 tag modified.")));
}

TEST_F(MassTags, ID3v2TakesTheTypedOrTheID3v1ValueAndAudioStays) {
    const QString f = mp3(QStringLiteral("a.mp3"), v1("V1 Artist", "V1 Title", "V1 Album"));
    {
        clsID3v2 t;
        t.setFilename(f);
        t.setArtist(QStringLiteral("V2 Artist"));
        t.setComposer(QStringLiteral("Someone"));
        ASSERT_TRUE(t.Save());
    }
    const QByteArray audio = audioOf(f);
    addFile(f);
    MassTagEdit::Options o;
    o.album = QStringLiteral("A new album name longer than thirty characters");
    o.editID3v2 = true;
    o.clearTitle = true;
    o.genre = 1;
    edit(o);
    clsID3v2 t;
    t.setFilename(f);
    EXPECT_EQ(t.Artist(), QStringLiteral("V1 Artist")); // an empty box is not kept from ID3v2
    EXPECT_EQ(t.Album(), o.album);                      // uncut in ID3v2
    EXPECT_EQ(t.Title(), QString());
    EXPECT_EQ(t.Composer(), QStringLiteral("Someone"));
    EXPECT_EQ(TempHome::readFile(f).right(128),
              v1("V1 Artist", "", "A new album name longer than t", "1999", 1));
    EXPECT_EQ(audioOf(f), audio);
}

TEST_F(MassTags, FilesThatCannotBeEditedAreReportedAndTheRunGoesOn) {
    const QString playing = mp3(QStringLiteral("p.mp3"), v1("P", "P"));
    const QString locked = mp3(QStringLiteral("r.mp3"), v1("R", "R"));
    const QString fine = mp3(QStringLiteral("f.mp3"), v1("F", "F"));
    ::chmod(QFile::encodeName(locked).constData(), 0444);
    const QByteArray lockedBefore = TempHome::readFile(locked);
    for (const QString& f : {playing, missing(QStringLiteral("gone.mp3")), locked, fine})
        addFile(f);
    ctx.player().setFileName(playing);
    MassTagEdit::Options o;
    o.artist = QStringLiteral("New");
    edit(o);
    EXPECT_EQ(TempHome::readFile(fine).right(128), v1("New", "F", "", "1999", 0));
    EXPECT_EQ(TempHome::readFile(playing).right(128), v1("P", "P"));
    EXPECT_EQ(TempHome::readFile(locked), lockedBefore);
    const QStringList m = messages();
    ASSERT_EQ(m.size(), 3);
    EXPECT_EQ(m[0], QStringLiteral("Mass Tag Editing Error: It has been detected that the song you "
                                   "are trying to edit is being used by VELDOR:\n\n") +
                        playing + QStringLiteral("\n\nThis file will not be edited."));
    EXPECT_TRUE(m[1].contains(QStringLiteral("does not exist:\n\n")));
    EXPECT_TRUE(m[2].contains(locked));
}

TEST_F(MassTags, MoveMatchesWholeFieldsBlindToCaseAndNeverReplaces) {
    const QString dest = home.file(QStringLiteral("dest"));
    const QString a = mp3(QStringLiteral("a.mp3"), v1("The Band", "One"));
    const QString b = mp3(QStringLiteral("b.mp3"), v1("The Band Live", "Two"));
    const QString c = mp3(QStringLiteral("c.mp3"), v1("THE BAND", "Three"));
    TempHome::writeFile(dest + QStringLiteral("/c.mp3"), "keep me");
    for (const QString& f : {a, b, c})
        addFile(f);
    MoveToFolder::Options o;
    o.search = QStringLiteral("the band");
    o.destination = dest;
    move(o);
    EXPECT_FALSE(QFileInfo::exists(a));
    EXPECT_TRUE(QFileInfo::exists(b));
    EXPECT_TRUE(QFileInfo::exists(dest + QStringLiteral("/a.mp3")));
    EXPECT_EQ(TempHome::readFile(dest + QStringLiteral("/c.mp3")), "keep me");
    EXPECT_EQ(audioOf(dest + QStringLiteral("/c (2).mp3")), TagBytes::audio(40));
    ASSERT_EQ(moved.count(), 2);
    EXPECT_EQ(moved.text(1, 2), QStringLiteral("Three"));
    EXPECT_TRUE(log().contains(a + QStringLiteral(" was moved to txtDestination.Text.")));
    // The rows keep their old names.
    EXPECT_EQ(list().text(0, Filename), a);
}

TEST_F(MassTags, CopyByYearLeavesSourcesAndRefusesThePlayingFile) {
    const QString dest = home.file(QStringLiteral("dest"));
    const QString a = mp3(QStringLiteral("a.mp3"), v1("A", "One", "", "1984"));
    const QString b = mp3(QStringLiteral("b.mp3"), v1("B", "Two", "", "1984"));
    QDir().mkpath(dest);
    addFile(a);
    addFile(b);
    ctx.player().setFileName(b);
    MoveToFolder::Options o;
    o.searchOption = 2;
    o.search = QStringLiteral("1984");
    o.destination = dest;
    o.copyFiles = true;
    move(o);
    EXPECT_TRUE(QFileInfo::exists(a));
    EXPECT_EQ(TempHome::readFile(dest + QStringLiteral("/a.mp3")), TempHome::readFile(a));
    EXPECT_FALSE(QFileInfo::exists(dest + QStringLiteral("/b.mp3")));
    EXPECT_TRUE(log().contains(a + QStringLiteral(" was copied to txtDestination.Text.")));
    ASSERT_EQ(dialogs.asked().size(), 1);
    EXPECT_EQ(dialogs.asked()[0].title, QStringLiteral("Move Music To Folder Error"));
}
