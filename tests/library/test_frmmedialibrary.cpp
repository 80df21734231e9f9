#include "library/LibraryFixture.h"

#include "core/Settings.h"
#include "library/FrmMediaLibrary.h"
#include "library/LibraryInstall.h"
#include "playlists/Moods.h"
#include "ui/ListView.h"

#include <QLineEdit>
#include <QTreeWidget>

class LibraryWindow : public LibraryFixture {
protected:
    void SetUp() override {
        LibraryFixture::SetUp();
        MediaLibrary_install(ctx);
    }
    void TearDown() override {
        mediaLibrary_Close(ctx);
        LibraryFixture::TearDown();
    }
    FrmMediaLibrary& window() {
        mediaLibrary_Open(ctx);
        return *FrmMediaLibrary::instance();
    }
    QStringList tree() {
        QStringList out;
        for (QTreeWidgetItemIterator it(window().tvOptions); *it; ++it)
            out << QString((*it)->parent() ? "  " : "") + (*it)->text(0);
        return out;
    }
    QTreeWidgetItem* node(const QString& text) {
        const auto found =
            window().tvOptions->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
        return found.isEmpty() ? nullptr : found.first();
    }
    MediaLibrary& shown() { return window().library(); }
};

TEST_F(LibraryWindow, TreeListsPlaylistsButTheDefaultAndLoadsByClickOrName) {
    playlist("default", {song("d.mp3", "Default")});
    playlist("Rock", {song("r.mp3", "Rocker")});
    playlist("jazz", {song("j.mp3", "Jazzer")});
    MoodNames() = "Calm";
    EXPECT_EQ(tree(),
              (QStringList{"Now Playing:", "  Import Current Playlist...", "  Export To VELDOR...",
                           "Playlists:", "  jazz", "  Rock", "Moods:", "  Calm"}));

    window().tvOptions_NodeClick(node("jazz"));
    shown().finishWork();
    EXPECT_EQ(entries(shown().lstArtist()), QStringList{"Jazzer"});
    // A root's name, or nothing, in the option search loads nothing.
    window().txtOptionSearch_Change("PLAYLISTS:");
    window().txtOptionSearch_Change("");
    window().tvOptions_NodeClick(node("Playlists:"));
    EXPECT_EQ(entries(shown().lstArtist()), QStringList{"Jazzer"});
    window().txtOptionSearch_Change("rock");
    shown().finishWork();
    EXPECT_EQ(entries(shown().lstArtist()), QStringList{"Rocker"});
    EXPECT_EQ(window().tvOptions->currentItem()->text(0), "Rock");
    // Export with no results is disabled: the node does nothing.
    playlist_AddSong(ctx, {}, {}, {}, "/keep/me.mp3");
    window().tvOptions_NodeClick(node("Export To VELDOR..."));
    EXPECT_EQ(column(PlaylistColumn::Filename), QStringList{"/keep/me.mp3"});

    // A new mood in the main window shows in the tree and the library's mood menu.
    MoodNames() = "Calm|Party";
    window_RemoveMoodMenus(ctx);
    window_InstallMoods(ctx);
    QTest::qWait(1);
    EXPECT_TRUE(node("Party"));
    EXPECT_EQ(MenuArray::of(shown(), "mnuSendToOp").item(2).caption, "Party");
}

TEST_F(LibraryWindow, SideListsActOnTheUsersChoiceOnly) {
    playlist("p", {song("a.mp3", "A", "2000"), song("b.mp3", "B", "2000")});
    window().tvOptions_NodeClick(node("p"));
    shown().finishWork();
    ListView* artists = window().lstArtist;
    artists->setCurrentIndex(artists->model()->index(1, 0));
    EXPECT_EQ(entries(shown().lstvResults(), ResultColumn::Artist), QStringList{"B"});
    // Focus in another side list drops the first one's mark.
    window().lstYear->setFocus();
    QFocusEvent focus(QEvent::FocusIn);
    QApplication::sendEvent(window().lstYear, &focus);
    EXPECT_FALSE(shown().lstArtist().hasSelection());
    // Typing selects in code: the list shows it, and the search runs once.
    int clears = 0;
    QObject::connect(&shown().lstvResults(), &QAbstractItemModel::modelReset, [&] { ++clears; });
    window().txtSearch->setText("2000");
    Q_EMIT window().txtSearch->textEdited("2000");
    EXPECT_EQ(clears, 1);
    EXPECT_EQ(shown().lstYear().selectedItem(), 0);
    EXPECT_EQ(shown().lstvResults().count(), 2);
}

TEST_F(LibraryWindow, OpensTogglesAndClosesAtExitKeepingItsPlace) {
    ctx.commands().run("mnuOpenMediaLibrary");
    ASSERT_TRUE(FrmMediaLibrary::instance());
    EXPECT_TRUE(ctx.commands().isChecked("mnuOpenMediaLibrary"));
    EXPECT_TRUE(log().contains("Media Library opened at "));
    EXPECT_EQ(FrmMediaLibrary::instance()->lstvResults->columnWidth(0), 200); // 3000 twips
    EXPECT_EQ(shown().commands().caption("mnuClose"), "&Close\tAlt+F4");

    ctx.call(ctx.window_CloseAll);
    EXPECT_FALSE(FrmMediaLibrary::instance());
    EXPECT_FALSE(ctx.commands().isChecked("mnuOpenMediaLibrary"));
    EXPECT_NE(settings_Read("Position_MediaLibrary", "Window_Width", "none"), "none");
    EXPECT_EQ(settings_Read("ColumnHeaders_MediaLibrary", "Artist"), "3000");

    ctx.commands().run("mnuOpenMediaLibrary");
    ctx.commands().run("mnuOpenMediaLibrary");
    EXPECT_FALSE(FrmMediaLibrary::instance());
}

TEST_F(LibraryWindow, MoreOnThisArtistOrYearOpensOnTheRowsValue) {
    const QString a = song("a.mp3", "Alpha", "1990"), b = song("b.mp3", "Beta", "1990"),
                  c = song("c.mp3", "Alpha", "2000");
    for (const auto& [artist, path] : {std::pair{"Alpha", a}, {"Beta", b}, {"Alpha", c}})
        playlist_AddSong(ctx, artist, "T", "1990", path);
    listview_SelectItem(list(), 3);
    ctx.commands().run("mnuMoreOnThisArtist");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !shown().isWorking(); }, 5000));
    EXPECT_EQ(entries(shown().lstvResults(), ResultColumn::Path), (QStringList{a, c}));
    EXPECT_EQ(shown().lstArtist().selectedItem(), 0);

    listview_SelectItem(list(), 2);
    ctx.mediaLibrary_ShowMore(LibraryColumn::Year, "1990");
    EXPECT_EQ(entries(shown().lstvResults(), ResultColumn::Path), (QStringList{a, b}));
}

TEST_F(LibraryWindow, FoldersFromTheLocationWindowLandHere) {
    song("loc/one.mp3", "One");
    song("loc/deep/two.mp3", "Two");
    ctx.mediaLibrary_AddLocation(home.file("music/loc"));
    ASSERT_TRUE(FrmMediaLibrary::instance());
    shown().finishWork();
    EXPECT_EQ(entries(shown().lstArtist()), (QStringList{"One", "Two"}));
    EXPECT_EQ(shown().statusText(), "Status:  Waiting...");
}
