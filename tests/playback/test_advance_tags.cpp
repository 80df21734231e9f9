// The advance and the lyrics window over the program's own tag readers.
#include "playback/AdvanceFixture.h"
#include "playback/FrmLyrics.h"
#include "playback/Lyrics.h"
#include "tags/TagsInstall.h"
#include "tags/clsID3v1.h"
#include "tags/clsID3v2.h"

#include <QPlainTextEdit>

class AdvanceTags : public AdvanceFixture {
protected:
    // Row `name` whose file carries an ID3v2 tag with this album and lyrics, and an ID3v1 tag
    // with another album.
    void addTagged(const QString& name, const QString& album, const QString& lyrics = {}) {
        addRow(name);
        const QString file = list().text(list().count() - 1, PlaylistColumn::Filename);
        TempHome::writeFile(file, QByteArray(4096, '\0'));
        clsID3v2 v2;
        v2.setFilename(file);
        v2.setAlbum(album);
        if (!lyrics.isEmpty()) v2.setLyrics(lyrics);
        ASSERT_TRUE(v2.Save());
        ID3v1Record v1;
        v1.Album = QStringLiteral("v1 ") + name;
        ASSERT_TRUE(media_WriteID3v1Record(file, v1));
    }
    void TearDown() override {
        lyrics_Close();
        lyrics_SetReader(nullptr);
        AdvanceFixture::TearDown();
    }
};

TEST_F(AdvanceTags, ShuffleByAlbumAndLyricsReadTheFilesTags) {
    Tags_install(ctx);
    lyrics_SetReader(tags_ReadLyrics);
    addTagged("A", "Blue", "first line");
    addTagged("B", "Red");
    addTagged("C", "blue");
    c().setChecked("mnuTagsUseID3v2Tags", true);
    setMode("mnuPlayingShuffleByAlbum");
    start(1);
    endSong();
    EXPECT_EQ(played(), QStringList({"A", "C"}));

    // With the ID3v1 tags every album differs: the run ends at once.
    c().setChecked("mnuTagsUseID3v2Tags", false);
    start(1);
    endSong();
    EXPECT_EQ(played(), QStringList({"A", "C", "A"}));

    lyrics_OpenFile(ctx, list().text(0, PlaylistColumn::Filename));
    EXPECT_TRUE(lyrics_IsOpened());
    EXPECT_EQ(lyrics_Window().txtLyrics()->toPlainText(), "first line");
    lyrics_OpenFile(ctx, list().text(1, PlaylistColumn::Filename));
    EXPECT_FALSE(lyrics_IsOpened());
}
