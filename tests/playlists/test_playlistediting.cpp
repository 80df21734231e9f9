#include "RowsFixture.h"

#include "core/Colors.h"
#include "core/PlaylistCombo.h"
#include "core/Settings.h"
#include "core/wmpPlayer.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>

using namespace PlaylistColumn;

class PlaylistEditingTest : public RowsFixture {
protected:
    void play(int row) {
        ctx.TransportState = 0;
        ctx.PlayingRowIndex = row;
        playlist_UpdatePlaylist(ctx, row);
    }
    int boldRow() {
        for (int i = 0; i < list().count(); ++i)
            if (list().isBold(i, Artist)) return i + 1;
        return 0;
    }
    const Dialogs::Asked& lastAsked() { return dialogs.asked().last(); }
};

TEST_F(PlaylistEditingTest, OnlyTheMovedPlayingRowTakesItsIndexAlong) {
    addRows(4);
    play(2);
    select({2});
    mnuSelectedMoveUp_Click(ctx);
    EXPECT_EQ(artists(), QStringList({"B", "A", "C", "D"}));
    EXPECT_EQ(ctx.PlayingRowIndex, 1);
    EXPECT_EQ(boldRow(), 1);
    EXPECT_TRUE(list().multiSelect());

    select({1});
    mnuSelectedMoveDown_Click(ctx);
    EXPECT_EQ(ctx.PlayingRowIndex, 2);
    EXPECT_EQ(boldRow(), 2);
    // The selection stays where the move began, so a second move takes A past the playing row,
    // which shifts without its index following.
    EXPECT_EQ(listview_SelectedIndex(list()), 1);
    mnuSelectedMoveDown_Click(ctx);
    EXPECT_EQ(artists(), QStringList({"B", "A", "C", "D"}));
    EXPECT_EQ(ctx.PlayingRowIndex, 2);

    ctx.TransportState = 1; // stopped: the index follows, the highlight goes
    select({2});
    mnuSelectedMoveDown_Click(ctx);
    EXPECT_EQ(ctx.PlayingRowIndex, 3);
    EXPECT_EQ(boldRow(), 0);
    EXPECT_EQ(column(Number), QStringList({"01", "02", "03", "04"}));

    select({1});
    mnuSelectedMoveUp_Click(ctx);
    select({4});
    mnuSelectedMoveDown_Click(ctx);
    EXPECT_EQ(artists(), QStringList({"B", "C", "A", "D"})) << "no move off either end";
}

TEST_F(PlaylistEditingTest, RemoveSelectedSparesTheSongThatPlaysAndFollowsIt) {
    addRows(5);
    play(3);
    select({3});
    mnuRemoveSelected_Click(ctx);
    EXPECT_EQ(list().count(), 5);
    select({1, 3, 5});
    mnuRemoveSelected_Click(ctx);
    EXPECT_EQ(artists(), QStringList({"B", "C", "D"}));
    EXPECT_EQ(ctx.PlayingRowIndex, 2) << "one row above the playing row went";
    EXPECT_EQ(column(Number), QStringList({"01", "02", "03"}));
    EXPECT_EQ(jumps, 2);

    ctx.TransportState = 1; // stopped: the playing row may go; the selection moves on
    select({3, 1, 2});
    list().setCurrentRow(1);
    mnuRemoveSelected_Click(ctx);
    EXPECT_EQ(list().count(), 0);
    addRows(3);
    ctx.PlayingRowIndex = 3;
    select({2});
    mnuRemoveSelected_Click(ctx);
    EXPECT_EQ(ctx.PlayingRowIndex, 2);
    EXPECT_EQ(listview_SelectedIndex(list()), 2) << "the row that took its place";
    mnuRemoveSelected_Click(ctx);
    EXPECT_EQ(listview_SelectedIndex(list()), 1) << "the last row went: the new last";
    EXPECT_EQ(jumps, 2);
}

TEST_F(PlaylistEditingTest, RemoveDeadAndDuplicateFilenamesCountTellAndFollowThePlayingRow) {
    add("A", missing("a.mp3"));
    add("B", makeFile("b.mp3"));
    add("C", missing("c.mp3"));
    add("D", makeFile("d.mp3"));
    add("E", missing("e.mp3"));
    play(4);
    QStringList busy;
    QObject::connect(&ctx, &MainContext::busyChanged,
                     [&](bool on) { busy << (on ? ctx.statusText() : "done"); });
    mnuRemoveAlDeadFilenames_Click(ctx);
    EXPECT_EQ(artists(), QStringList({"B", "D"}));
    EXPECT_EQ(ctx.PlayingRowIndex, 2);
    EXPECT_EQ(column(Number), QStringList({"01", "02"}));
    EXPECT_EQ(lastAsked().title, "Remove Dead Filenames Information");
    EXPECT_EQ(lastAsked().text, "It has been detected that you had 3 dead filenames in the "
                                "playlist.\n\nThese items have been removed.\n");
    EXPECT_TRUE(log().endsWith("Dead filenames removed:  3.\r\n"));
    EXPECT_EQ(busy,
              QStringList({"Removing dead entries from the playlist, please wait...", "done"}));
    mnuRemoveAlDeadFilenames_Click(ctx);
    EXPECT_EQ(lastAsked().text, "No dead filenames were found within the playlist.\n\nNo items "
                                "have been removed from the playlist.\n");

    list().clear();
    for (const char* f : {"/m/Song.mp3", "/m/other.mp3", "/M/SONG.MP3", "/m/song.mp3", "/m/x.mp3"})
        add(QString::number(list().count() + 1), f);
    play(5);
    mnuRemoveDuplicateFilenames_Click(ctx);
    EXPECT_EQ(artists(), QStringList({"2", "4", "5"})) << "the last of equal names stays";
    EXPECT_EQ(ctx.PlayingRowIndex, 3);
    EXPECT_EQ(lastAsked().title, "Remove Duplicate Filenames Information");
    EXPECT_EQ(lastAsked().text, "It has been detected that you had 2 duplicate filenames in the "
                                "playlist.\n\nThese items have been removed.\n");
    EXPECT_TRUE(log().endsWith("Duplicate filenames removed:  2.\r\n"));
    mnuRemoveDuplicateFilenames_Click(ctx);
    EXPECT_EQ(lastAsked().text, "No duplicate filenames were found within the playlist.\n\nNo "
                                "items have been removed from the playlist.\n");
    EXPECT_FALSE(ctx.PlaylistBusy);
}

TEST_F(PlaylistEditingTest, CopyCutAndPasteThroughTheRowClipboard) {
    addRows(5);
    list().setText(1, Status, "Skip");
    list().setText(3, Artist, "");
    play(4);
    PlaylistEditState& clip = PlaylistEditState::of(ctx);
    select({2, 4});
    mnuCopy_Click(ctx);
    EXPECT_EQ(list().count(), 5);
    EXPECT_TRUE(clip.hasClip());
    mnuPaste_Click(ctx);
    mnuPaste_Click(ctx);
    EXPECT_EQ(artists(), QStringList({"A", "B", "C", "", "E", "B", "B"}))
        << "a row whose Artist was empty pastes nothing";
    EXPECT_EQ(list().rowTexts(6), QStringList({"07", "B", "", "", "Skip", "", makeFile("B.mp3")}));

    select({1, 2});
    ctx.commands().action("mnuCut")->trigger();
    EXPECT_EQ(artists(), QStringList({"C", "", "E", "B", "B"}));
    EXPECT_EQ(ctx.PlayingRowIndex, 4) << "a cut leaves the playing index";
    EXPECT_FALSE(ctx.commands().isChecked("mnuCut"));
    EXPECT_FALSE(ctx.commands().action("mnuCut")->isCheckable());
    EXPECT_EQ(column(Number), QStringList({"01", "02", "03", "04", "05"}));

    mnuClear_Click(ctx);
    EXPECT_FALSE(clip.hasClip());
    mnuPaste_Click(ctx);
    EXPECT_EQ(list().count(), 5);
}

TEST_F(PlaylistEditingTest, CropKeepsTheSelectionAndLeavesThePlayingIndex) {
    addRows(5);
    play(1);
    select({2, 4});
    mnuSelectedCrop_Click(ctx);
    EXPECT_EQ(artists(), QStringList({"B", "D"}));
    EXPECT_EQ(column(Number), QStringList({"01", "02"}));
    EXPECT_EQ(ctx.PlayingRowIndex, 1);
}

TEST_F(PlaylistEditingTest, LockTakesAwayTheListAndUnlockGivesItBack) {
    Commands& cmd = ctx.commands();
    int closes = 0;
    ctx.window_CloseAll = [&] { ++closes; };
    settings_Write("Appearance", "BackgroundColour", "12345");
    for (const char* name : {"mnuPlay", "mnuStop", "mnuPrint", "tbPlay"})
        cmd.setEnabled(name, false);
    settings_Write("Settings", "LockPlaylist", "1");
    window_RestoreLock(ctx);
    EXPECT_TRUE(cmd.isChecked("mnuLockPlaylist"));
    EXPECT_EQ(closes, 1);
    EXPECT_FALSE(list().isEnabled());
    EXPECT_FALSE(ctx.cmbPlaylists().isEnabled());
    EXPECT_EQ(list().backColor(), Colors::SystemButtonFace);
    EXPECT_EQ(PlaylistEditState::of(ctx).comboBackColor(), Colors::SystemButtonFace);
    for (const char* name : {"mnuAddFiles", "mnuPrevious", "mnuSave", "mnuEdit", "mnuSort",
                             "tbAddFiles", "tbPrevious", "tbNextPlaylist", "lblOptions"})
        EXPECT_FALSE(cmd.isEnabled(name)) << name;
    for (const char* name : {"mnuPlay", "mnuStop", "mnuPrint", "tbPlay"})
        EXPECT_TRUE(cmd.isEnabled(name)) << name;

    cmd.action("mnuLockPlaylist")->trigger();
    EXPECT_FALSE(cmd.isChecked("mnuLockPlaylist"));
    EXPECT_EQ(settings_Read("Settings", "LockPlaylist"), "0");
    EXPECT_TRUE(list().isEnabled());
    EXPECT_TRUE(ctx.cmbPlaylists().isEnabled());
    EXPECT_EQ(list().backColor(), 12345);
    EXPECT_EQ(PlaylistEditState::of(ctx).comboBackColor(), 12345);
    for (const char* name : {"mnuAddFiles", "mnuEdit", "tbAddFiles", "lblOptions"})
        EXPECT_TRUE(cmd.isEnabled(name)) << name;
    // The rest comes back through the window's periodic enabling.
    for (const char* name : {"mnuPrevious", "mnuSave", "mnuSort", "tbPrevious"})
        EXPECT_FALSE(cmd.isEnabled(name)) << name;
}

TEST_F(PlaylistEditingTest, SortingOrdersByTextAndTheMenusKeepTheirGroups) {
    Commands& cmd = ctx.commands();
    EXPECT_FALSE(cmd.isEnabled("mnuSortByLength")) << "disabled while the list is not sorted";
    add("a", "/m/a", "09:59");
    add("b", "/m/b", "");
    add("c", "/m/c", "10:02");
    add("d", "/m/d", "03:41");
    cmd.run("mnuSortByLength");
    EXPECT_EQ(artists(), QStringList({"a", "b", "c", "d"})) << "no direction yet: no sort";
    EXPECT_TRUE(log().endsWith("Sort mode set to:  Length.\r\n"));
    cmd.run("mnuSortViaDecending");
    EXPECT_EQ(column(Length), QStringList({"10:02", "09:59", "03:41", ""}));
    EXPECT_EQ(column(Number), QStringList({"01", "02", "03", "04"}));
    EXPECT_TRUE(log().endsWith("Sorting set to:  Descending.\r\n"));
    EXPECT_TRUE(cmd.isEnabled("mnuSortByLength"));
    EXPECT_FALSE(cmd.isEnabled("mnuShuffleThePlaylist"));
    cmd.run("mnuSortByArtist");
    EXPECT_EQ(artists(), QStringList({"d", "c", "b", "a"}));
    EXPECT_FALSE(cmd.isChecked("mnuSortByLength"));
    EXPECT_EQ(settings_Read("ListSorting", "SortByLength"), "0");
    EXPECT_EQ(settings_Read("ListSorting", "SortByArtist"), "1");
    EXPECT_EQ(settings_Read("ListSorting", "SortViaDescendingOrder"), "1");

    const QString before = log();
    cmd.run("mnuDontSort");
    EXPECT_EQ(log(), before);
    EXPECT_FALSE(cmd.isChecked("mnuSortViaDecending"));
    EXPECT_TRUE(cmd.isEnabled("mnuShuffleThePlaylist"));
    EXPECT_EQ(settings_Read("ListSorting", "DoNotSortTheList"), "1");
    EXPECT_EQ(settings_Read("ListSorting", "SortViaDescendingOrder"), "0");
    add("0", "/m/0");
    EXPECT_EQ(artists(), QStringList({"d", "c", "b", "a", "0"})) << "the rows keep their order";

    // The next start takes the first column and the first direction that hold 1.
    settings_Write("ListSorting", "SortByLength", "1");
    settings_Write("ListSorting", "SortViaAscendingOrder", "1");
    MainContext next;
    PlaylistEditing_install(next);
    next.lstvPlaylist().appendRows(
        {{"", "y", "", "", "", "02:00", ""}, {"", "x", "", "", "", "01:00", ""}});
    window_RestoreSortModes(next);
    EXPECT_TRUE(next.commands().isChecked("mnuSortByArtist"));
    EXPECT_FALSE(next.commands().isChecked("mnuSortByLength"));
    EXPECT_TRUE(next.commands().isChecked("mnuSortViaAcending"));
    EXPECT_FALSE(next.commands().isChecked("mnuDontSort"));
    EXPECT_EQ(next.lstvPlaylist().text(0, Artist), "x");
}

TEST_F(PlaylistEditingTest, TheSortKeysOfAFirstStartAndTheirRestoreLaterWriteNothingTwice) {
    const QByteArray first = "[ListSorting]\r\nSortByArtist=0\r\nSortByTitle=0\r\nSortByYear=0\r\n"
                             "SortByLength=0\r\nSortByFilename=1\r\nSortViaAscendingOrder=0\r\n"
                             "SortViaDescendingOrder=0\r\nDoNotSortTheList=1\r\n";
    EXPECT_EQ(TempHome::readFile(home.settingsFile()), first);
    const auto inode = [this] {
        struct stat st {};
        ::stat(QFile::encodeName(home.settingsFile()).constData(), &st);
        return st.st_ino;
    };
    const auto before = inode();
    MainContext next;
    PlaylistEditing_install(next);
    window_RestoreSortModes(next);
    EXPECT_EQ(inode(), before) << "a returning start leaves the file alone";

    // The chosen column keeps its place among the keys.
    QFile::remove(home.settingsFile());
    ctx.commands().run("mnuSortViaAcending");
    ctx.commands().run("mnuSortByArtist");
    EXPECT_TRUE(TempHome::readFile(home.settingsFile())
                    .endsWith("SortByArtist=1\r\nSortByTitle=0\r\nSortByYear=0"
                              "\r\nSortByLength=0\r\nSortByFilename=0\r\n"));
}

TEST_F(PlaylistEditingTest, ShuffleKeepsEveryRowAndFindsThePlayingRowAgain) {
    addRows(20);
    const QStringList before = artists();
    mnuShuffleThePlaylist_Click(ctx);
    QStringList after = artists();
    after.sort();
    EXPECT_EQ(after, before);
    EXPECT_EQ(jumps, 1);
    EXPECT_TRUE(log().contains("Playlist was shuffled at "));
}

class PhysicalDeleteTest : public PlaylistEditingTest {
protected:
    void SetUp() override {
        PlaylistEditingTest::SetUp();
        savedDataHome = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", home.file("xdg").toUtf8());
        QDir().mkpath(home.file("xdg"));
        for (const char* name : {"a.mp3", "b.mp3", "c.mp3"})
            add(QString(name).left(1), makeFile(name));
    }
    void TearDown() override {
        qputenv("XDG_DATA_HOME", savedDataHome);
        PlaylistEditingTest::TearDown();
    }
    QString file(int row) { return list().text(row - 1, Filename); }
    QStringList trash() {
        return QDir(home.file("xdg/Trash/files")).entryList(QDir::Files, QDir::Name);
    }
    QByteArray savedDataHome;
};

TEST_F(PhysicalDeleteTest, ConfirmedFilesGoToTheTrashButNotTheLoadedOne) {
    const QString a = file(1), b = file(2), c = file(3);
    ctx.player().setFileName(c.toUpper()); // compared blind to case
    ctx.PlayingRowIndex = 3;
    select({3, 2, 1}); // SelectedItem is row 1
    dialogs.answer("yes");
    mnuRemovePhysicallyDeleteSelected_Click(ctx);
    ASSERT_EQ(dialogs.asked().size(), 1);
    EXPECT_EQ(lastAsked().title, "Physically Delete Files Confirmation");
    EXPECT_EQ(lastAsked().flags, 52);
    EXPECT_EQ(lastAsked().text, QString("You are about to physically delete these files from your "
                                        "computer:\n\n%1\n%2\n\nDo you wish to continue?\n")
                                    .arg(a, b));
    EXPECT_EQ(artists(), QStringList({"c"}));
    EXPECT_EQ(ctx.PlayingRowIndex, 1);
    EXPECT_EQ(trash(), QStringList({"a.mp3", "b.mp3"}));
    EXPECT_FALSE(QFile::exists(a));
    EXPECT_TRUE(log().contains(a + " was physically deleted from playlist.\r\n"));

    settings_Write("Settings", "SendMediaFilesToRecycleBin", "0");
    ctx.player().setFileName(QStringLiteral("1"));
    select({1});
    dialogs.answer("yes");
    mnuRemovePhysicallyDeleteSelected_Click(ctx);
    EXPECT_FALSE(QFile::exists(c));
    EXPECT_EQ(trash().size(), 2) << "deleted for good";
    EXPECT_EQ(list().count(), 0);
}

TEST_F(PhysicalDeleteTest, RefusalsAndANoKeepEverything) {
    mnuRemovePhysicallyDeleteSelected_Click(ctx); // nothing selected
    EXPECT_EQ(lastAsked().title, "Physically Delete File Error");
    select({1});
    ctx.player().setFileName(file(1));
    mnuRemovePhysicallyDeleteSelected_Click(ctx);
    EXPECT_EQ(lastAsked().text, "The filename that you have selected from the list is being used "
                                "by VELDOR.\n\nThis function will not continue.\n");
    EXPECT_EQ(lastAsked().flags, 48);
    QFile::remove(file(2));
    select({2});
    mnuRemovePhysicallyDeleteSelected_Click(ctx);
    EXPECT_EQ(lastAsked().text, "The filename that you have selected from the list does not "
                                "exist.\n\nThis function will not continue.\n");
    select({3});
    dialogs.answer("no");
    mnuRemovePhysicallyDeleteSelected_Click(ctx);
    EXPECT_EQ(lastAsked().title, "Physically Delete Files Confirmation");
    EXPECT_TRUE(QFile::exists(file(3)));
    EXPECT_EQ(list().count(), 3);
    EXPECT_TRUE(trash().isEmpty());
}
