#include "core/Settings.h"
#include "playlists/RowsFixture.h"
#include "tags/TagBytes.h"
#include "tags/TagsInstall.h"
#include "tags/clsID3v2.h"

#include <QClipboard>
#include <QGuiApplication>

using namespace TagBytes;
using namespace PlaylistColumn;

namespace {

class TagRows : public RowsFixture {
protected:
    void SetUp() override {
        RowsFixture::SetUp();
        Tags_install(ctx);
        ctx.commands().setChecked(QStringLiteral("mnuTagsShowTagsAsFilesAreAdded"), true);
    }
    void TearDown() override {
        playlist_SetTagReader(nullptr);
        RowsFixture::TearDown();
    }
    // An MP3 of about 10 s with both tags; the ID3v2 year "2004" ties with the ID3v1 "1999".
    QString song(const QString& name, const QString& v1Artist, const QString& v2Artist,
                 const QString& title = QStringLiteral("T")) {
        const QString path = home.file(QStringLiteral("media/") + name);
        TempHome::writeFile(path, audio(383) + id3v1(title.toLatin1(), v1Artist.toLatin1(), 0));
        clsID3v2 t;
        t.setFilename(path);
        t.setArtist(v2Artist);
        t.setTitle(QString());
        t.setYear(QStringLiteral("2004"));
        EXPECT_TRUE(t.Save());
        return path;
    }
    QStringList row(int i) {
        return {list().text(i, Artist), list().text(i, Title), list().text(i, Year),
                list().text(i, Length)};
    }
};

} // namespace

TEST_F(TagRows, RowsShowTheChosenTagAndTheLength) {
    add(QString(), song(QStringLiteral("a.mp3"), QStringLiteral("One"), QStringLiteral("Two")));
    add(QStringLiteral("old"), missing(QStringLiteral("b.mp3")));
    list().setText(1, Year, QStringLiteral("1990"));
    mnuPlaylistRefreshTags_Click(ctx);
    // ID3v1; the length counts the whole file (tags included) at the one bitrate.
    EXPECT_EQ(row(0), (QStringList{"One", "T", "1999", "00:10"}));
    EXPECT_EQ(row(1), (QStringList{"[None]", "[None]", "1990", ""}));

    settings_Write(QStringLiteral("Settings"), QStringLiteral("AskConfirmationToUpdatePlaylist"),
                   QStringLiteral("0"));
    ctx.commands().run(QStringLiteral("mnuTagsUseID3v2Tags"));
    EXPECT_TRUE(ctx.commands().isChecked(QStringLiteral("mnuTagsUseID3v2Tags")));
    EXPECT_EQ(settings_Read(QStringLiteral("Settings"), QStringLiteral("UseID3v2Tags")),
              QStringLiteral("1"));
    // An empty title in the tag shows as "[None]"; the year may stay empty but here is set.
    EXPECT_EQ(row(0), (QStringList{"Two", "[None]", "2004", "00:10"}));

    // Copy TAG puts what the selected rows show on the clipboard, in the list's order.
    list().setSelected(1, true);
    list().setSelected(0, true);
    ctx.commands().run(QStringLiteral("mnuSelectedCopyTAG"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "Two - [None]\n[None] - [None]");
}

TEST_F(TagRows, TheLongerTagWinsFieldByFieldAndATieGoesToVersionOne) {
    settings_Write(QStringLiteral("Settings"), QStringLiteral("UseLargerTAGSWhenAvailable"),
                   QStringLiteral("1"));
    add(QString(), song(QStringLiteral("a.mp3"), QStringLiteral("Abc"), QStringLiteral("Xyz")));
    add(QString(), song(QStringLiteral("b.mp3"), QStringLiteral("Ab"), QStringLiteral("Longer")));
    playlist_ShowMP3Data(ctx, false);
    EXPECT_EQ(row(0).mid(0, 3), (QStringList{"Abc", "T", "1999"}));
    EXPECT_EQ(row(1).mid(0, 3), (QStringList{"Longer", "T", "1999"}));
}

TEST_F(TagRows, SwitchingTheTagAsksBeforeRefreshingAndNotForAnEmptyList) {
    ctx.commands().run(QStringLiteral("mnuTagsUseID3v2Tags"));
    EXPECT_TRUE(dialogs.asked().isEmpty());
    ctx.commands().run(QStringLiteral("mnuTagsUseID3v2Tags"));
    EXPECT_FALSE(ctx.commands().isChecked(QStringLiteral("mnuTagsUseID3v2Tags")));

    add(QString(), song(QStringLiteral("a.mp3"), QStringLiteral("One"), QStringLiteral("Two")));
    dialogs.answer(QStringLiteral("no"));
    ctx.commands().run(QStringLiteral("mnuTagsUseID3v2Tags"));
    ASSERT_EQ(dialogs.asked().size(), 1);
    EXPECT_EQ(dialogs.asked().at(0).title, QStringLiteral("Update Playlist Confirmation"));
    EXPECT_EQ(list().text(0, Artist), QString()); // not refreshed
    dialogs.answer(QStringLiteral("yes"));
    ctx.commands().run(QStringLiteral("mnuTagsUseID3v2Tags"));
    EXPECT_EQ(list().text(0, Artist), QStringLiteral("One"));
}

TEST_F(TagRows, SongTagsAndLyricsForThePlayer) {
    const QString path =
        song(QStringLiteral("a.mp3"), QStringLiteral("One"), QStringLiteral("Two"));
    EXPECT_EQ(tags_ReadSongTags(path, false).artist, QStringLiteral("One"));
    EXPECT_EQ(tags_ReadSongTags(path, true).artist, QStringLiteral("Two"));
    EXPECT_EQ(tags_ReadLyrics(path), QString());
    clsID3v2 t;
    t.setFilename(path);
    t.setLyrics(QStringLiteral("Line one\r\nLine two"));
    ASSERT_TRUE(t.Save());
    EXPECT_EQ(tags_ReadLyrics(path), QStringLiteral("Line one\r\nLine two"));
}
