#include "ToolsFixture.h"

#include "core/PlaylistCombo.h"
#include "core/Settings.h"
#include "playlists/FrmManagePlaylists.h"
#include "playlists/FrmRenamePlaylist.h"
#include "playlists/ManagePlaylists.h"
#include "playlists/PlaylistFiles.h"
#include "playlists/RecentList.h"
#include "playlists/modRecentPlaylists.h"

#include <QFile>
#include <QLineEdit>
#include <QTest>
#include <unistd.h>

class ManageTest : public ToolsFixture {
protected:
    ManageTest() {
        PlaylistFiles_install(ctx);
        recent_Playlists().loadLimit();
    }
    void write(const QString& name, int rows) {
        QByteArray bytes;
        for (int i = 0; i < rows; ++i)
            bytes += spp({QString::number(i + 1), "A", "T", "", "Play", "", "/m/" + name});
        TempHome::writeFile(playlist(name), bytes);
    }
    void showCombo(const QString& title) {
        ctx.cmbPlaylists().clear();
        window_InstallPlaylists(ctx);
        playlist_Select(ctx, title);
    }
    QStringList combo() { return ctx.cmbPlaylists().items(); }
    QString recent(int key) { return recent_Playlists().value(key); }
    FrmRenamePlaylist* rename(const QString& name) {
        auto* w = window<FrmRenamePlaylist>();
        if (!w) return nullptr;
        w->txtName->setText(name);
        w->cmdRename_Click();
        return w;
    }
};

TEST_F(ManageTest, ListsSongsBySevenLinesAndLeavesDefaultOut) {
    write("Rock", 1);
    TempHome::writeFile(playlist("Rock"), TempHome::readFile(playlist("Rock")) + "\"x\"\r\n");
    write("empty", 0);
    write("default", 3);
    write("Jazz", 3);
    const auto found = manage_ListPlaylists();
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(found[0].title, "empty");
    EXPECT_EQ(found[0].songs, "0");
    EXPECT_EQ(found[1].title, "Jazz");
    EXPECT_EQ(found[1].songs, "3");
    EXPECT_EQ(found[2].songs, "1"); // eight lines
    EXPECT_FALSE(found[2].created.isEmpty());

    QDir(home.file("Playlists")).removeRecursively();
    EXPECT_TRUE(manage_ListPlaylists().empty());
    ctx.commands().run("mnuManagePlaylists");
    auto* w = window<FrmManagePlaylists>();
    ASSERT_TRUE(w);
    EXPECT_EQ(w->items->count(), 0);
    EXPECT_FALSE(w->mnuDelete->isEnabled());
}

TEST_F(ManageTest, RenameRefusesBadNamesAndNeverReplacesAFile) {
    write("Rock", 2);
    write("Jazz", 1);
    showCombo("Rock");
    ctx.commands().run("mnuRenameCurrentPlaylist");
    auto* w = window<FrmRenamePlaylist>();
    ASSERT_TRUE(w);
    EXPECT_EQ(w->txtName->text(), "Rock");
    EXPECT_EQ(w->RenameRow, -1);
    for (const char* bad : {"", "a/b", "..", "x:y"})
        rename(bad);
    rename("Jazz");
    const QString notSupported =
        "It has been detected that you have entered a character that is not supported.\n\nYou "
        "cannot use any of the following characters:\n\\ / : * ? \" < > |\n\nThis function will "
        "not be proformed.\n";
    EXPECT_EQ(messages(),
              (QStringList{"It has been detected that you have not entered a new playlist "
                           "name.\n\nThis function will not be proformed.\n",
                           notSupported, notSupported, notSupported,
                           "An error has occur while trying to rename the playlists filename.  "
                           "Make sure that the file is not in use."}));
    EXPECT_EQ(asked().last(), "message|Renaming Playlist Name Error");
    EXPECT_TRUE(window<FrmRenamePlaylist>());
    EXPECT_EQ(QDir(home.file("Playlists")).entryList(QDir::Files, QDir::Name),
              (QStringList{"Jazz.spp", "Rock.spp"}));
    EXPECT_EQ(TempHome::readFile(playlist("Jazz")).count('\n'), 7);
    EXPECT_TRUE(QDir(home.path()).entryList({"*.spp"}, QDir::Files).isEmpty());
}

TEST_F(ManageTest, RenameFromTheMenuMovesComboRecentAndOpenPlaylist) {
    write("Rock", 2);
    write("Jazz", 1);
    recent_AddPlaylist(playlist("Jazz"), ctx);
    recent_AddPlaylist(playlist("rock"), ctx); // the same file by its other spelling
    showCombo("Rock");
    ctx.commands().run("mnuRenameCurrentPlaylist");
    rename("Stoner Rock");
    EXPECT_FALSE(window<FrmRenamePlaylist>());
    EXPECT_FALSE(QFile::exists(playlist("Rock")));
    EXPECT_TRUE(QFile::exists(playlist("Stoner Rock")));
    EXPECT_EQ(combo(), (QStringList{"((Select Playlist))", "Jazz", "Stoner Rock"}));
    EXPECT_EQ(ctx.cmbPlaylists().text(), "Stoner Rock");
    EXPECT_EQ(recent(1), playlist("Stoner Rock"));
    EXPECT_EQ(recent(2), playlist("Jazz"));
    EXPECT_TRUE(log().contains("Playlist Rock.spp was renamed to Stoner Rock.spp."));
}

TEST_F(ManageTest, ReadOnlyPlaylistAsksBeforeRenaming) {
    write("Rock", 1);
    QFile(playlist("Rock")).setPermissions(QFile::ReadOwner);
    FrmRenamePlaylist::open(ctx, playlist("Rock"), -1);
    rename("Hard Rock"); // answered No
    EXPECT_TRUE(QFile::exists(playlist("Rock")));
    dialogs.answer("yes");
    rename("Hard Rock");
    EXPECT_TRUE(QFile::exists(playlist("Hard Rock")));
    EXPECT_EQ(asked(), (QStringList{"message|Renaming Playlist Name Confirmation",
                                    "message|Renaming Playlist Name Confirmation"}));
}

TEST_F(ManageTest, RenameInTheWindowShowsAtOnceAndTheComboFollowsOnClosing) {
    write("Ambient", 1);
    write("Rock", 1);
    showCombo("Rock");
    auto* w = FrmManagePlaylists::open(ctx);
    listview_SelectItem(*w->items, 2);
    w->mnuRename->trigger();
    rename("Drone");
    EXPECT_EQ(w->items->text(1, 0), "Drone");
    EXPECT_EQ(ctx.cmbPlaylists().text(), "Rock");
    listview_SelectItem(*w->items, 2);
    w->mnuRename->trigger();
    rename("Doom");
    w->close();
    EXPECT_EQ(combo(), (QStringList{"((Select Playlist))", "Ambient", "Doom"}));
    EXPECT_EQ(ctx.cmbPlaylists().text(), "Doom");
}

TEST_F(ManageTest, DeleteCurrentGoesToTheTrashAndEmptiesTheList) {
    write("Rock", 2);
    write("Jazz", 1);
    recent_AddPlaylist(playlist("Rock"), ctx);
    showCombo("Rock");
    addRows(2);
    ctx.commands().run("mnuDeleteCurrentPlaylist"); // answered No
    EXPECT_TRUE(QFile::exists(playlist("Rock")));
    EXPECT_EQ(messages().value(0), "You are about to physically delete the file from your "
                                   "computer:\n" +
                                       playlist("Rock") + "\n\nDo you wish to continue?\n");
    dialogs.answer("yes");
    ctx.commands().run("mnuDeleteCurrentPlaylist");
    EXPECT_FALSE(QFile::exists(playlist("Rock")));
    EXPECT_EQ(trash(), QStringList{"Rock.spp"});
    EXPECT_EQ(list().count(), 0);
    EXPECT_EQ(combo(), (QStringList{"((Select Playlist))", "Jazz"}));
    EXPECT_EQ(ctx.cmbPlaylists().listIndex(), 0);
    EXPECT_EQ(recent(1), "");
    EXPECT_TRUE(log().contains(playlist("Rock") + " was deleted."));
}

TEST_F(ManageTest, DeleteFromTheWindowKeepsTheRowsAndTheOtherPlaylists) {
    write("Rock", 2);
    write("Jazz", 1);
    showCombo("Rock");
    addRows(2);
    auto* w = FrmManagePlaylists::open(ctx);
    listview_SelectItem(*w->items, 2);
    dialogs.answer("yes");
    QTest::keyClick(w, Qt::Key_Delete);
    EXPECT_FALSE(QFile::exists(playlist("Rock")));
    EXPECT_EQ(w->items->count(), 1);
    EXPECT_EQ(list().count(), 2);
    EXPECT_EQ(combo(), (QStringList{"((Select Playlist))", "Jazz"}));
    EXPECT_EQ(asked().value(0), "message|Delete Current Playlist Confirmation");
}

TEST_F(ManageTest, DeleteAllTakesDefaultTooAndLeavesTheRows) {
    write("Rock", 1);
    write("default", 1);
    addRows(1);
    ctx.commands().run("mnuDeleteAllPlaylists");
    EXPECT_EQ(QDir(home.file("Playlists")).entryList(QDir::Files).size(), 2);
    dialogs.answer("yes");
    ctx.commands().run("mnuDeleteAllPlaylists");
    EXPECT_TRUE(QDir(home.file("Playlists")).entryList(QDir::Files).isEmpty());
    EXPECT_EQ(trash(), (QStringList{"Rock.spp", "default.spp"}));
    EXPECT_EQ(list().count(), 1);
    EXPECT_EQ(messages().value(0), "You are about to physically delete all of the playlists from "
                                   "your computer.\n\nDo you wish to continue?\n");
    EXPECT_TRUE(log().contains(playlist("default") + " playlist was deleted."));
}

TEST_F(ManageTest, ReadOnlyFolderRefusesWithOneMessageEach) {
    if (geteuid() == 0) GTEST_SKIP() << "permissions do not bind the superuser";
    write("Rock", 1);
    write("Jazz", 1);
    auto* w = FrmManagePlaylists::open(ctx);
    QFile(home.file("Playlists")).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    listview_SelectItem(*w->items, 2);
    dialogs.answer("yes");
    w->mnuDelete->trigger();
    dialogs.answer("yes");
    w->mnuClear->trigger();
    EXPECT_TRUE(QFile::exists(playlist("Rock")));
    EXPECT_EQ(w->items->count(), 2);
    // One message for the single delete, one for the whole Delete All.
    EXPECT_EQ(messages().filter("An error occured while trying to delete").size(), 2);
    listview_SelectItem(*w->items, 1);
    w->mnuRename->trigger();
    rename("Bebop");
    EXPECT_TRUE(messages().last().startsWith("An error has occur while trying to rename"));
    QFile(home.file("Playlists"))
        .setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(ManageTest, FolderRemovedWhileTheWindowIsOpen) {
    write("Rock", 1);
    write("Jazz", 1);
    showCombo("Rock");
    auto* w = FrmManagePlaylists::open(ctx);
    QDir(home.file("Playlists")).removeRecursively();
    listview_SelectItem(*w->items, 1);
    w->mnuRename->trigger();
    rename("Bebop");
    EXPECT_EQ(messages().value(0), "It has been detected that the playlist you are trying to "
                                   "rename does not exist.\n\nThis function will not be "
                                   "proformed.\n");
    window<FrmRenamePlaylist>()->close();
    dialogs.answer("yes");
    w->mnuDelete->trigger();
    dialogs.answer("yes");
    w->mnuClear->trigger();
    w->close();
    EXPECT_EQ(combo(), QStringList{"((Select Playlist))"});
    EXPECT_FALSE(QDir(home.file("Playlists")).exists());
}
