#include "ToolsFixture.h"

#include "core/PlaylistCombo.h"
#include "playlists/FrmGeneratePlaylist.h"
#include "playlists/FrmRandomSongsPlaylist.h"
#include "playlists/ListFiles.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/PlaylistGenerators.h"
#include "tags/TagBytes.h"
#include "tags/clsID3v1.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSet>
#include <QTest>

class GeneratorTest : public ToolsFixture {
protected:
    GeneratorTest() { PlaylistFiles_install(ctx); }
    FrmGeneratePlaylist* generate(int option, const QString& criteria) {
        auto* w = window<FrmGeneratePlaylist>();
        if (!w) w = FrmGeneratePlaylist::open(ctx);
        w->opOptions[option]->click();
        w->txtCriteria->setText(criteria);
        w->cmdCreate_Click();
        EXPECT_TRUE(QTest::qWaitFor([w] { return !w->generating(); }));
        return w;
    }
    // What Save writes for these rows.
    QByteArray saved(const std::vector<QStringList>& rows) {
        ListModel model(list().headers());
        model.appendRows(rows);
        const QString path = home.file("saved.spp");
        listview_SaveToFile(model, path);
        return TempHome::readFile(path);
    }
    QStringList row(int r) { return list().rowTexts(r); }
};

TEST_F(GeneratorTest, ArtistPlaylistIsWhatSaveWritesAndTakesWholeNamesOnly) {
    addSong("1", "Sigur Rós", "Glósóli", "/m/1.mp3", "2005", "Play", "06:15");
    addSong("2", "Sigur Rós Tribute", "X", "/m/2.wav");
    addSong("3", "SIGUR RÓS", "Hoppípolla", "/m/3.wav", "", "Skip", "04:28");
    const QByteArray before = ListFiles::encode(list());
    auto* w = generate(0, "sigur rós");
    EXPECT_EQ(w->txtCriteria->text(), "Sigur Rós");
    const QString path = playlist("Sigur Rós");
    ASSERT_TRUE(QFile::exists(path));
    QStringList one = row(0), three = row(2);
    one[0] = "001";
    three[0] = "002";
    EXPECT_EQ(TempHome::readFile(path), saved({one, three}));
    EXPECT_EQ(ListFiles::encode(list()), before);
    EXPECT_EQ(w->lblSearchResults->text(), "Songs Added To Playlist:  2");
    EXPECT_EQ(w->items->rowTexts(1), (QStringList{"02", "SIGUR RÓS", "Hoppípolla"}));
    EXPECT_TRUE(log().contains("Sigur Rós.spp saved as playlist."));
    // The window keeps its results and its inputs stay off.
    EXPECT_FALSE(w->cmdCreate->isEnabled());
    EXPECT_FALSE(w->cmdClose->isEnabled());
    EXPECT_TRUE(ctx.cmbPlaylists().items().contains("Sigur Rós"));
}

TEST_F(GeneratorTest, YearAndAlbumAndQuotesInTheCriterion) {
    ID3v1Record tag;
    tag.Album = "Say \"Hi\"";
    const QString mp3 = home.file("media/a.mp3");
    TempHome::writeFile(mp3, TagBytes::audio(2) + "TAG" + tag.bytes());
    addSong("1", "A", "T", mp3, "1999");
    addSong("2", "B", "T", "/m/b.wav", "1999");
    addSong("3", "Say \"hi\"", "T", "/m/c.wav"); // the album of a WAV row is never read
    generate(1, "say \"hi\"");
    EXPECT_EQ(TempHome::readFile(playlist("Say \"hi\"")),
              saved({{"001", "A", "T", "1999", "Play", "", mp3}}));
    window<FrmGeneratePlaylist>()->close();
    auto* w = generate(2, "1999");
    EXPECT_EQ(w->items->count(), 2);
    // Year boxes take four characters; a longer text from before stays.
    w = FrmGeneratePlaylist::open(ctx);
    w->txtCriteria->setText("Some Album Name");
    w->opOptions[2]->click();
    EXPECT_EQ(w->txtCriteria->text(), "Some Album Name");
    w->txtCriteria->clear();
    QTest::keyClicks(w->txtCriteria, "199912");
    EXPECT_EQ(w->txtCriteria->text(), "1999");
}

TEST_F(GeneratorTest, RefusalsLeaveNoFileAndOverwriteAsks) {
    addRows(2);
    auto* w = generate(0, "");
    generate(0, "nobody");
    generate(0, "../../escape");
    generate(0, ".hidden");
    const QString invalid = "The search critera that you entered was not valid.\n\nNo playlist "
                            "was created.\n";
    EXPECT_EQ(messages(), (QStringList{"It has been detected that you have not entered anything "
                                       "into the criteria section.\n\nPlease enter a creation "
                                       "criteria before continuing with this function.\n",
                                       invalid, invalid, invalid}));
    EXPECT_TRUE(w->cmdCreate->isEnabled());
    EXPECT_EQ(w->lblSearchResults->text(), "Songs Added To Playlist:  None");
    EXPECT_TRUE(QDir(home.file("Playlists")).entryList(QDir::Files).isEmpty());
    EXPECT_FALSE(QFile::exists(home.path() + "/../Escape.spp"));

    TempHome::writeFile(playlist("Artist 1"), "old");
    generate(0, "artist 1"); // answered No
    EXPECT_EQ(TempHome::readFile(playlist("Artist 1")), "old");
    EXPECT_EQ(asked().last(), "message|Overwrite Existing Playlist Confirmation");
    dialogs.answer("yes");
    generate(0, "artist 1");
    EXPECT_NE(TempHome::readFile(playlist("Artist 1")), "old");
}

TEST_F(GeneratorTest, OpenOnceCreatedLoadsItAndTellsTheRecentList) {
    addRows(3);
    QStringList recent;
    ctx.recentPlaylists_Add = [&](const QString& p) { recent << p; };
    auto* w = FrmGeneratePlaylist::open(ctx);
    w->chkOpenPlaylist->setChecked(true);
    generate(0, "artist 2");
    EXPECT_EQ(list().count(), 1);
    EXPECT_EQ(list().text(0, 1), "Artist 2");
    EXPECT_EQ(ctx.cmbPlaylists().text(), "Artist 2");
    EXPECT_EQ(recent, QStringList{playlist("Artist 2")});
}

TEST_F(GeneratorTest, LockedListOpensNeitherWindow) {
    addRows(2);
    ctx.commands().action("mnuLockPlaylist")->setCheckable(true);
    ctx.commands().setChecked("mnuLockPlaylist", true);
    ctx.commands().run("mnuGeneratePlaylist");
    ctx.commands().run("mnuUseRandomSongsForPlaylist");
    EXPECT_FALSE(window<FrmGeneratePlaylist>());
    EXPECT_FALSE(window<FrmRandomSongsPlaylist>());
}

class RandomTest : public GeneratorTest {
protected:
    FrmRandomSongsPlaylist* create(const QString& name, const QString& count, int option = 0) {
        auto* w = window<FrmRandomSongsPlaylist>();
        if (!w) {
            ctx.commands().run("mnuUseRandomSongsForPlaylist");
            w = window<FrmRandomSongsPlaylist>();
        }
        w->txtPlaylistName->setText(name);
        w->txtSongCount->setText(count);
        w->cmbOptions->setCurrentIndex(option);
        w->cmdCreate_Click();
        return w;
    }
    std::vector<QStringList> rowsOf(const QString& name) {
        ListModel model(list().headers());
        listview_LoadFromFile(model, playlist(name));
        std::vector<QStringList> out;
        for (int i = 0; i < model.count(); ++i)
            out.push_back(model.rowTexts(i));
        return out;
    }
};

TEST_F(RandomTest, AllRowsOnceInSomeOrderWithEmptyNumbers) {
    addRows(30);
    auto* w = create("All Of Them", "30");
    const auto rows = rowsOf("All Of Them");
    ASSERT_EQ(rows.size(), 30u);
    QSet<QString> files;
    for (const QStringList& r : rows) {
        EXPECT_EQ(r[0], "");
        files.insert(r[6]);
    }
    EXPECT_EQ(files.size(), 30);
    EXPECT_EQ(TempHome::readFile(playlist("All Of Them")), saved(rows));
    // The window is reset for the next one.
    EXPECT_EQ(w->txtPlaylistName->text(), "");
    EXPECT_EQ(w->txtSongCount->text(), "20");
    EXPECT_TRUE(ctx.cmbPlaylists().items().contains("All Of Them"));
}

TEST_F(RandomTest, BadCountsAndNamesAreRefused) {
    addRows(3);
    list().setText(0, 4, "Skip");
    list().setText(1, 4, "Skip");
    TempHome::writeFile(playlist("Taken"), "x");
    create("", "2");
    create("N", "");
    create("N", "two");
    create("N", "-1");
    create("N", "1.5");
    create("Taken", "1");
    create("N", "4");
    create("N", "2", 1); // only one row is not set to skip: the draw could never end
    create("a/b", "1");
    const QString tail = "\n\nThis function will not be proformed.\n";
    const QString invalid = "It has been detected that the song count you have entered is "
                            "invalid." +
                            tail;
    const QString higher = "The song count you have entered is higher than the number of songs "
                           "in the active playlist." +
                           tail;
    EXPECT_EQ(
        messages(),
        (QStringList{
            "It has been detected that you have not entered a playlist name." + tail,
            "It has been detected that you have not entered a number of songs to include "
            "in the playlist." +
                tail,
            invalid, invalid, invalid,
            "It has been detected that the playlist name you have entered already exists." + tail,
            higher, higher,
            "An error occured while trying to create the new random songs playlist." + tail}));
    EXPECT_EQ(asked().last(), "message|Creating Random Songs Playlist");
    EXPECT_EQ(QDir(home.file("Playlists")).entryList(QDir::Files), QStringList{"Taken.spp"});
    EXPECT_FALSE(QFile::exists(home.file("Playlists/a")));
}

TEST_F(RandomTest, ZeroWritesNothingAndSkippedRowsStayOut) {
    addRows(4);
    list().setText(1, 4, "Skip");
    create("Zero", "0");
    EXPECT_FALSE(QFile::exists(playlist("Zero")));
    auto* w = create("NoSkip", "3", 1);
    Q_UNUSED(w);
    const auto rows = rowsOf("NoSkip");
    ASSERT_EQ(rows.size(), 3u);
    for (const QStringList& r : rows)
        EXPECT_NE(r[4], "Skip");
    window<FrmRandomSongsPlaylist>()->opOptions[1]->setChecked(true);
    create("Closing", "1");
    EXPECT_FALSE(window<FrmRandomSongsPlaylist>());
}
