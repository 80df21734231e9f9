#include "playlists/AddMediaFixture.h"

#include "core/App.h"
#include "core/Settings.h"
#include "core/modControls.h"
#include "core/wmpPlayer.h"
#include "playback/Player.h"
#include "playlists/Bookmarks.h"
#include "playlists/FrmAddLocation.h"
#include "playlists/FrmAddMood.h"
#include "playlists/FrmEditBookmarks.h"
#include "playlists/FrmEditEntry.h"
#include "playlists/FrmEditMoods.h"
#include "playlists/LineFiles.h"
#include "playlists/MenuArray.h"
#include "playlists/Moods.h"
#include "playlists/RecentList.h"
#include "playlists/modRecentMedia.h"
#include "playlists/modRecentPlaylists.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

using namespace PlaylistColumn;

namespace {
QStringList captions(MenuArray& menu) {
    QStringList out;
    for (int i = 0; i < menu.count(); ++i)
        out << menu.item(i).caption;
    return out;
}
} // namespace

class MoodsFixture : public AddMediaFixture {
protected:
    MenuArray& array(const char* name) { return MenuArray::of(ctx, QString::fromLatin1(name)); }
    void selectRows(std::initializer_list<int> rows) {
        list().clearSelection();
        for (int r : rows)
            list().setSelected(r - 1, true);
    }
    void addSongs(const QStringList& paths) {
        for (const QString& p : paths)
            playlist_AddSong(ctx, {}, {}, {}, p);
        listview_Renumber(list());
    }
};

TEST_F(MoodsFixture, MoodsAreFiledOpenedAndReset) {
    MenuArray& open = array("mnuMoodOpen");
    MenuArray& send = array("mnuSendToMood");
    ASSERT_EQ(open.count(), 11);
    EXPECT_EQ(open.item(1).caption, QStringLiteral("Happy"));
    EXPECT_FALSE(open.item(0).visible);
    // A mood without a file cannot be opened, but songs can be sent to it.
    EXPECT_FALSE(open.item(1).enabled);
    EXPECT_TRUE(send.item(1).enabled);

    const QString a = media(QStringLiteral("a.mp3")), b = media(QStringLiteral("b,c.wav"));
    addSongs({a, b});
    selectRows({1, 2});
    mnuSendToMood_Click(ctx, 1);
    const QString happy = App::file(QStringLiteral("Moods/Happy.mlst"));
    EXPECT_EQ(TempHome::readFile(happy), (a + "\r\n" + b + "\r\n").toUtf8());
    EXPECT_TRUE(open.item(1).enabled);
    EXPECT_TRUE(log().contains(a + QStringLiteral(" added to 'Happy' Mood.")));
    selectRows({1});
    mnuSendToMood_Click(ctx, 1);
    EXPECT_TRUE(titles().contains(QStringLiteral("Song/Video Already In Mood")));

    // Opening: a new list of the mood's songs; the comma splits a path, as the reader does.
    mnuMoodOpen_Click(ctx, 1);
    EXPECT_EQ(names(),
              QStringList({QStringLiteral("a.mp3"), QStringLiteral("b"), QStringLiteral("c.wav")}));
    EXPECT_TRUE(log().contains(QStringLiteral("Happy Mood opened.")));

    // Reset: names stay, songs go; No keeps everything.
    dialogs.answer(QStringLiteral("no"));
    click("mnuResetMoods");
    EXPECT_TRUE(QFile::exists(happy));
    dialogs.answer(QStringLiteral("yes"));
    click("mnuResetMoods");
    EXPECT_FALSE(QFile::exists(happy));
    EXPECT_EQ(open.count(), 11);
    EXPECT_FALSE(open.item(1).enabled);
}

TEST_F(MoodsFixture, EditMoodsAddsInProperCaseAndRemovesWithItsSongs) {
    const QString sad = App::file(QStringLiteral("Moods/Sad.mlst"));
    TempHome::writeFile(sad, "/x/1.mp3\r\n/x/2.mp3\r\n");
    click("mnuEditMoods");
    FrmEditMoods* edit = FrmEditMoods::instance();
    ASSERT_NE(edit, nullptr);
    ListModel& items = edit->lstvItems();
    ASSERT_EQ(items.count(), 10);
    EXPECT_EQ(items.text(2, 1), QStringLiteral("2"));

    edit->findChild<QPushButton*>(QStringLiteral("cmdAdd"))->click();
    auto* add = edit->findChild<FrmAddMood*>();
    ASSERT_NE(add, nullptr);
    add->findChild<QPushButton*>(QStringLiteral("cmdAdd"))->click();
    EXPECT_TRUE(titles().contains(QStringLiteral("Adding Mood Error")));
    add->txtName()->setText(QStringLiteral("rainy DAY"));
    add->cmdAdd_Click();
    EXPECT_EQ(items.text(10, 0), QStringLiteral("Rainy Day"));

    // Remove Sad: it holds songs, so the question comes; Yes deletes its file.
    listview_SelectItem(items, 3);
    dialogs.answer(QStringLiteral("yes"));
    edit->menuAction(QStringLiteral("mnuRemove"))->trigger();
    EXPECT_TRUE(titles().contains(QStringLiteral("Remove Mood Confirmation")));
    EXPECT_FALSE(QFile::exists(sad));
    // Move the first down, then save.
    listview_SelectItem(items, 1);
    edit->tmrWindowUpdate_Timer();
    EXPECT_FALSE(edit->menuAction(QStringLiteral("mnuMoveUpOne"))->isEnabled());
    edit->menuAction(QStringLiteral("mnuMoveDownOne"))->trigger();
    edit->findChild<QPushButton*>(QStringLiteral("cmdSave"))->click();
    const QString saved = settings_Read(QStringLiteral("Advanced"), QStringLiteral("Moods"));
    EXPECT_EQ(saved,
              QStringLiteral("Annoyed|Happy|Low|Hyper|Bored|Slow|Fast|Angry|Other|Rainy Day"));
    EXPECT_EQ(captions(array("mnuSendToMood")).mid(1), saved.split(QLatin1Char('|')));
}

TEST_F(MoodsFixture, DamagedMoodFilesAndUnsafeNamesWriteNothingOutside) {
    // A name with "/" has no file: nothing is written, least of all outside the data folder.
    MoodNames() = QStringLiteral("../../escape|a/b|Calm");
    window_RemoveMoodMenus(ctx);
    window_InstallMoods(ctx);
    window_UpdateMoods(ctx);
    addSongs({media(QStringLiteral("s.mp3"))});
    selectRows({1});
    mnuSendToMood_Click(ctx, 1);
    mnuSendToMood_Click(ctx, 2);
    EXPECT_FALSE(QFile::exists(home.file(QStringLiteral("../escape.mlst"))));
    EXPECT_TRUE(QDir(App::file(QStringLiteral("Moods")))
                    .entryList(QDir::NoDotAndDotDot | QDir::AllEntries)
                    .isEmpty());
    mnuMoodOpen_Click(ctx, 2); // nothing to open, nothing happens
    EXPECT_EQ(list().count(), 1);

    // Binary bytes and a 10 MB line: what cannot be a path is passed over.
    QByteArray junk(10 * 1024 * 1024, 'x');
    junk += "\r\n/ok/song.mp3\r\n";
    for (int i = 0; i < 256; ++i)
        junk += char(i);
    TempHome::writeFile(App::file(QStringLiteral("Moods/Calm.mlst")), junk);
    window_UpdateMoods(ctx);
    mnuMoodOpen_Click(ctx, 3);
    ASSERT_GE(list().count(), 1);
    EXPECT_EQ(list().text(0, Filename), QStringLiteral("/ok/song.mp3"));
    for (int i = 0; i < list().count(); ++i)
        EXPECT_LE(list().text(i, Filename).size(), 4096);
}

TEST_F(MoodsFixture, BookmarksAddOpenEditAndClear) {
    const QString a = media(QStringLiteral("a.mp3")), b = media(QStringLiteral("b.mp3")),
                  outside = media(QStringLiteral("far/c.mp3"));
    MenuArray& menu = array("mnuBookmark");
    EXPECT_EQ(captions(menu), QStringList{QStringLiteral("[None]")});
    EXPECT_FALSE(menu.item(0).enabled);
    addSongs({a, b});
    selectRows({1, 2});
    click("mnuAddSelected");
    click("mnuAddSelected");
    EXPECT_EQ(titles().count(QStringLiteral("Song/Video Already In Bookmarks")), 2);
    LineFiles::append(bookmarks_Path(), outside);
    window_InstallBookmarks(ctx);
    EXPECT_EQ(captions(menu).mid(1), QStringList({QStringLiteral("a.mp3"), QStringLiteral("b.mp3"),
                                                  QStringLiteral("c.mp3")}));
    EXPECT_FALSE(menu.item(0).visible);

    // A bookmark in the list plays its row; one outside replaces the list.
    int played2 = 0;
    ctx.commands().setHandler(QStringLiteral("mnuPlay"),
                              [&] { played2 = listview_SelectedIndex(list()); });
    mnuBookmark_Click(ctx, 2);
    EXPECT_EQ(played2, 2);
    mnuBookmark_Click(ctx, 3);
    EXPECT_EQ(column(Filename), QStringList{outside});
    EXPECT_EQ(played, QList<int>{1});

    // The editor: move the last up, remove the first, save.
    click("mnuEditBookmarks");
    FrmEditBookmarks* edit = FrmEditBookmarks::instance();
    ASSERT_NE(edit, nullptr);
    listview_SelectItem(edit->lstBookmarks(), 3);
    edit->menuAction(QStringLiteral("mnuMoveUpOne"))->trigger();
    listview_SelectItem(edit->lstBookmarks(), 1);
    edit->menuAction(QStringLiteral("mnuRemoveSelected"))->trigger();
    edit->cmdSave_Click();
    EXPECT_EQ(TempHome::readFile(bookmarks_Path()), (outside + "\r\n" + b + "\r\n").toUtf8());
    EXPECT_TRUE(log().contains(QStringLiteral("Bookmarks were modified from the Edit window.")));

    dialogs.answer(QStringLiteral("yes"));
    click("mnuClearBookmarks");
    EXPECT_FALSE(QFile::exists(bookmarks_Path()));
    EXPECT_EQ(captions(menu), QStringList{QStringLiteral("[None]")});
}

TEST_F(MoodsFixture, RecentListsKeepOrderLimitAndNumbering) {
    QObject window; // a second window with its own array, as the Media Library has
    RecentList& r = recent_Media();
    r.setLimit(5);
    for (int i = 1; i <= 6; ++i)
        recent_AddMedia(QStringLiteral("/m/%1.mp3").arg(i), ctx);
    EXPECT_EQ(recent_CountMedia(), 5);
    EXPECT_EQ(r.value(1), QStringLiteral("/m/6.mp3"));
    EXPECT_EQ(r.value(5), QStringLiteral("/m/2.mp3"));
    recent_AddMedia(QStringLiteral("/M/4.MP3"), ctx); // known in any case: no change
    EXPECT_EQ(r.value(1), QStringLiteral("/m/6.mp3"));
    recent_RemoveMedia(2, ctx);
    EXPECT_EQ(r.value(2), QStringLiteral("/m/4.mp3"));
    EXPECT_EQ(recent_CountMedia(), 4);
    recent_UpdateMediaMenu(window);
    EXPECT_EQ(captions(MenuArray::of(window, QStringLiteral("mnuRecentMedia"))).first(),
              QStringLiteral("1.  6.mp3"));

    r.setLimit(30);
    for (int i = 7; i <= 12; ++i)
        recent_AddMedia(QStringLiteral("/m/%1.mp3").arg(i), ctx);
    MenuArray& menu = array("mnuRecentMedia");
    EXPECT_EQ(menu.count(), 10);
    EXPECT_EQ(menu.item(0).caption, QStringLiteral("01.  12.mp3"));
    EXPECT_EQ(menu.item(9).caption, QStringLiteral("10.  2.mp3"));

    recent_ClearMedia();
    recent_UpdateMediaMenu(ctx);
    EXPECT_EQ(captions(menu), QStringList{QStringLiteral("(None)")});
    EXPECT_FALSE(menu.item(0).enabled);
}

TEST_F(MoodsFixture, OpeningAMissingRecentEntryWarnsAndDropsIt) {
    const QString song = media(QStringLiteral("here.mp3"));
    recent_AddMedia(QStringLiteral("/gone/x.mp3"), ctx);
    recent_AddMedia(song, ctx);
    mnuRecentMedia_Click(ctx, 0);
    EXPECT_EQ(column(Filename), QStringList{song});
    EXPECT_EQ(played, QList<int>{1});
    mnuRecentMedia_Click(ctx, 1);
    EXPECT_TRUE(titles().contains(QStringLiteral("Recent Filename Not Found")));
    EXPECT_EQ(recent_CountMedia(), 1);

    // Playlists: the hook of the other roads fills the list; a gone file is dropped likewise.
    ctx.recentPlaylists_Add(QStringLiteral("/gone/p.spp"));
    EXPECT_EQ(recent_Playlists().value(1), QStringLiteral("/gone/p.spp"));
    mnuRecentPlaylist_Click(ctx, 0);
    EXPECT_TRUE(titles().contains(QStringLiteral("Recent Playlist Filename Not Found")));
    EXPECT_EQ(recent_CountPlaylist(), 0);
}

TEST_F(MoodsFixture, AddLocationChecksRemembersOnceAndSurvivesADamagedLog) {
    media(QStringLiteral("loc/a.mp3"));
    const QString where = home.file(QStringLiteral("music/loc"));
    TempHome::writeFile(location_LogPath(),
                        QByteArray(10 * 1024 * 1024, '\x01') + "\r\n/x/one,two\r\n");
    click("mnuAddLocation");
    FrmAddLocation* w = FrmAddLocation::instance();
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(w->cmbLocation->count(), 2); // the comma splits; the huge line is no path
    w->cmbLocation->setEditText(QString());
    w->cmdAdd->click();
    w->cmbLocation->setEditText(home.file(QStringLiteral("nothere")));
    w->cmdAdd->click();
    EXPECT_EQ(titles().count(QStringLiteral("Adding Location Error")), 2);
    for (int i = 0; i < 2; ++i) {
        w->cmbLocation->setEditText(where);
        w->cmdAdd->click();
        ASSERT_TRUE(waitForAdd());
    }
    EXPECT_EQ(list().count(), 2);
    EXPECT_EQ(TempHome::readFile(location_LogPath()).count(where.toUtf8()), 1);
    w->close();
}

TEST_F(MoodsFixture, EditEntryChangesOnlyTheRow) {
    addSongs({media(QStringLiteral("clip.avi"))});
    FrmEditEntry* e = FrmEditEntry::open(ctx, 1);
    e->txtArtist->setText(QStringLiteral("Band"));
    e->txtTitle->clear();
    e->txtYear->setText(QStringLiteral("1999"));
    e->cmdUpdate_Click();
    EXPECT_EQ(
        list().rowTexts(0).mid(1, 3),
        QStringList({QStringLiteral("Band"), QStringLiteral("[None]"), QStringLiteral("1999")}));
    EXPECT_TRUE(log().contains(QStringLiteral("clip.avi entry modified.")));
}

// The real player plays the selection: a song opened from outside the list must be selected.
TEST_F(MoodsFixture, ASongOutsideTheListPlaysFromABookmarkOrTheRecentList) {
    Player_install(ctx);
    const QString inList = media(QStringLiteral("in.mp3")), marked = media(QStringLiteral("m.mp3")),
                  recent = media(QStringLiteral("r.mp3"));
    addSongs({inList});
    list().clearSelection();
    LineFiles::append(bookmarks_Path(), marked);
    mnuBookmark_Click(ctx, 1);
    EXPECT_EQ(column(Filename), QStringList{marked});
    EXPECT_EQ(ctx.player().FileName(), marked);
    EXPECT_EQ(ctx.PlayingRowIndex, 1);

    recent_AddMedia(recent, ctx);
    mnuRecentMedia_Click(ctx, 0);
    EXPECT_EQ(column(Filename), QStringList{recent});
    EXPECT_EQ(ctx.player().FileName(), recent);
    EXPECT_FALSE(titles().contains(QStringLiteral("Error Playing Media File")));
}
