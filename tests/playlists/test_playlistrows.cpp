#include "RowsFixture.h"

#include "core/Colors.h"
#include "core/Settings.h"

using namespace PlaylistColumn;

namespace {

// Tags by filename; counts what was read.
class FakeTags : public PlaylistTagReader {
public:
    QHash<QString, Texts> v1, v2;
    int reads = 0;
    Texts readID3v1(const QString& f) override { return ++reads, v1.value(f); }
    Texts readID3v2(const QString& f) override { return ++reads, v2.value(f); }
    QString lengthText(const QString&) override { return "03:41"; }
};

} // namespace

class PlaylistRowsTest : public RowsFixture {
protected:
    void TearDown() override {
        playlist_SetTagReader(nullptr);
        RowsFixture::TearDown();
    }
};

TEST_F(PlaylistRowsTest, RenumberPadsToTheDigitsOfTheCountAndNeverBelowTwo) {
    const struct {
        int rows;
        const char *padding, *first, *last;
    } cases[] = {{9, "1", "01", "09"},   {10, "1", "01", "10"}, {100, "1", "001", "100"},
                 {100, "0", "1", "100"}, {9, "0", "1", "9"},    {1000, "1", "0001", "1000"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(QString("%1 rows, padding %2").arg(c.rows).arg(c.padding).toStdString());
        list().clear();
        settings_Write("Settings", "UseNumberPaddingInPlaylists", c.padding);
        for (int i = 0; i < c.rows; ++i)
            playlist_AddSong(ctx, "a", "t", "", "/m/x.mp3");
        listview_Renumber(list());
        EXPECT_EQ(list().text(0, Number), c.first);
        EXPECT_EQ(list().text(c.rows - 1, Number), c.last);
    }
}

TEST(RowNumbers, TheHandWrittenTextIsWhatArgGives) {
    for (int width : {0, 2, 3, 6})
        for (int index : {0, 1, 7, 9, 10, 99, 100, 12345, 999999, 1000000, 2147483647}) {
            const QString want = width > 0 ? QString("%1").arg(index, width, 10, QChar('0'))
                                           : QString::number(index);
            EXPECT_EQ(listview_NumberText(index, width), want) << index << " " << width;
        }
}

TEST_F(PlaylistRowsTest, UpdateItemFillsFromTheFileTitleOrFromAnInstalledTagReader) {
    const QString a = makeFile("a.MP3"), b = makeFile("b.mp2");
    list().addRow({"", "", "T", "2001", "Play", "04:00", "/m/Song One.wav"});
    list().addRow({"", "Kept", "T", "", "Play", "04:00", a});
    list().addRow({"", "old", "old", "1977", "Play", "09:00", missing("gone.mp3")});
    list().addRow({"", "", "", "", "Play", "", b});
    // No reader yet: every row goes the way without tags.
    for (int i = 1; i <= 4; ++i)
        playlist_UpdateItem(ctx, i, false);
    EXPECT_EQ(list().rowTexts(0),
              QStringList({"", "Song One", "T", "2001", "Play", "", "/m/Song One.wav"}));
    EXPECT_EQ(list().rowTexts(1).mid(1, 5), QStringList({"Kept", "T", "", "Play", ""}));
    EXPECT_EQ(list().text(3, Artist), "b");

    auto tags = std::make_shared<FakeTags>();
    playlist_SetTagReader(tags);
    tags->v1[a] = {"Short", "Same", "1990"};
    tags->v2[a] = {"Much longer", "Same", ""};
    tags->v1[b] = {"", "", "2004"};
    tags->v2[b] = {"V2 artist", "V2 title", "2005"};
    for (int i = 1; i <= 4; ++i)
        playlist_UpdateItem(ctx, i, false);
    EXPECT_EQ(list().text(0, Artist), "Song One") << "not an MPEG file";
    EXPECT_EQ(list().rowTexts(1).mid(1, 5),
              QStringList({"Short", "Same", "1990", "Play", "03:41"}));
    EXPECT_EQ(list().rowTexts(2).mid(1, 5), QStringList({"[None]", "[None]", "1977", "Play", ""}))
        << "a missing file keeps its year and loses its length";
    EXPECT_EQ(list().rowTexts(3).mid(1, 3), QStringList({"[None]", "[None]", "2004"}));

    ctx.commands().setChecked("mnuTagsUseID3v2Tags", true);
    playlist_UpdateItem(ctx, 4, false);
    EXPECT_EQ(list().rowTexts(3).mid(1, 3), QStringList({"V2 artist", "V2 title", "2005"}));
    // The longer text wins and a tie goes to ID3v1, whatever the menu says.
    settings_Write("Settings", "UseLargerTAGSWhenAvailable", "1");
    playlist_UpdateItem(ctx, 2, false);
    EXPECT_EQ(list().rowTexts(1).mid(1, 3), QStringList({"Much longer", "Same", "1990"}));

    const int reads = tags->reads;
    playlist_UpdateItem(ctx, 4, true);
    EXPECT_EQ(tags->reads, reads) << "no tags asked, no tags read";
    EXPECT_EQ(list().text(3, Length), "");
}

TEST_F(PlaylistRowsTest, ShowMP3DataReadsTagsOnlyWhenTheMenuAsks) {
    auto tags = std::make_shared<FakeTags>();
    playlist_SetTagReader(tags);
    const QString a = makeFile("a.mp3");
    tags->v1[a] = {"Tag artist", "", ""};
    add("", a);
    QStringList busy;
    QObject::connect(&ctx, &MainContext::busyChanged,
                     [&](bool on) { busy << (on ? ctx.statusText() : "done"); });
    playlist_ShowMP3Data(ctx, false);
    EXPECT_EQ(list().text(0, Artist), "a");
    ctx.commands().setChecked("mnuTagsShowTagsAsFilesAreAdded", true);
    ctx.commands().run("mnuPlaylistRefreshTags");
    EXPECT_EQ(list().text(0, Artist), "Tag artist");
    EXPECT_EQ(busy.count("Updating the playlist entries, please wait..."), 2);
    EXPECT_EQ(busy.last(), "done");
}

TEST_F(PlaylistRowsTest, UpdatePlaylistMovesTheHighlightAndSparesThePlayNextRow) {
    addRows(4);
    playlist_UpdatePlaylist(ctx, 1);
    EXPECT_EQ(list().foreColor(0, Filename), 192) << "the default playing colour";
    playlist_UpdatePlaylist(ctx, 0);
    EXPECT_EQ(list().foreColor(0, Number), Colors::SystemWindowText);

    settings_Write("Appearance", "FontColour", "255");
    settings_Write("Appearance", "PlayingFontColour", "&HFF00");
    list().setRowStyle(2, true, 12582912);
    ctx.PlayNextRowIndex = 3;
    playlist_UpdatePlaylist(ctx, 2);
    for (int c = 0; c < 7; ++c) {
        EXPECT_TRUE(list().isBold(1, c));
        EXPECT_EQ(list().foreColor(1, c), 0xFF00);
    }
    EXPECT_EQ(list().foreColor(3, Artist), ListModel::DefaultColor) << "a plain row is untouched";
    EXPECT_EQ(list().foreColor(2, Artist), 12582912) << "the Play Next row keeps its look";
    EXPECT_TRUE(list().isBold(2, Artist));

    playlist_UpdatePlaylist(ctx, 3); // the Play Next row itself starts
    EXPECT_EQ(list().foreColor(2, Title), 0xFF00);
    EXPECT_FALSE(list().isBold(1, Year));
    EXPECT_EQ(list().foreColor(1, Year), 255);
}

TEST_F(PlaylistRowsTest, CheckEntriesRemovesDeadAndEarlierDuplicatesOnlyWhenSwitchedOn) {
    const QString a = makeFile("a.mp3"), b = makeFile("b.mp3");
    const QString aUpper = QString(a).replace("a.mp3", "A.MP3"); // another file to the disk
    for (const QString& f : {a, missing("x.mp3"), b, aUpper, a, b})
        add(QString::number(list().count() + 1), f);
    listview_Renumber(list());
    playlist_CheckEntries(ctx);
    EXPECT_EQ(list().count(), 6) << "off by default";

    settings_Write("Settings", "AlwaysScanPlaylistWhenAddingSongs", "1");
    playlist_CheckEntries(ctx);
    // 1 and 4 see a later copy, 2 is dead, 3 sees 6; the last of each group stays.
    EXPECT_EQ(artists(), QStringList({"5", "6"}));
    EXPECT_EQ(column(Number), QStringList({"05", "06"})) << "the scan does not renumber";
    ASSERT_EQ(dialogs.asked().size(), 1);
    EXPECT_EQ(dialogs.asked()[0].title, "Playlist Scan Information");
    EXPECT_EQ(dialogs.asked()[0].text, "It has been detected that you had 4 dead or duplicate "
                                       "filenames in the playlist.\n\nThese items have been "
                                       "removed.\n");
    EXPECT_EQ(dialogs.asked()[0].flags, 64);
    EXPECT_TRUE(log().endsWith("Dead/Duplicate filenames removed:  4.\r\n"));

    playlist_CheckEntries(ctx);
    EXPECT_EQ(dialogs.asked().size(), 1) << "a scan that removes nothing says nothing";
}

TEST_F(PlaylistRowsTest, ColumnClickSetsTheDirectionThenTheColumn) {
    add("b", "/m/2", "10:02");
    add("a", "/m/3", "");
    add("c", "/m/1", "09:59");
    lstvPlaylist_ColumnClick(ctx, 2); // from "don't sort": ascending
    EXPECT_TRUE(ctx.commands().isChecked("mnuSortByArtist"));
    EXPECT_EQ(artists(), QStringList({"a", "b", "c"}));
    lstvPlaylist_ColumnClick(ctx, 2); // ascending becomes descending
    EXPECT_TRUE(ctx.commands().isChecked("mnuSortViaDecending"));
    EXPECT_EQ(artists(), QStringList({"c", "b", "a"}));
    lstvPlaylist_ColumnClick(ctx, 7); // descending goes back to ascending
    EXPECT_EQ(column(Filename), QStringList({"/m/1", "/m/2", "/m/3"}));

    const QString before = log();
    lstvPlaylist_ColumnClick(ctx, 1);
    lstvPlaylist_ColumnClick(ctx, 5);
    EXPECT_EQ(log(), before) << "No. and Status: are not sortable";
    lstvPlaylist_ColumnClick(ctx, 6);
    EXPECT_EQ(column(Length), QStringList({"10:02", "09:59", ""}));
}

TEST_F(PlaylistRowsTest, KeysWalkTheRowsRoundAndPlayAPausedSongAfresh) {
    QStringList ran;
    for (const char* name : {"mnuStop", "mnuPlay"})
        ctx.commands().setHandler(name, [&ran, name] { ran << name; });
    EXPECT_TRUE(lstvPlaylist_KeyDown(ctx, 39)); // an empty list: nothing to do
    addRows(3);
    lstvPlaylist_DblClick(ctx);
    EXPECT_TRUE(ran.isEmpty()) << "nothing selected";
    select({3});
    lstvPlaylist_KeyDown(ctx, 39);
    EXPECT_EQ(listview_SelectedIndex(list()), 1);
    lstvPlaylist_KeyDown(ctx, 37);
    lstvPlaylist_KeyDown(ctx, 37);
    EXPECT_EQ(listview_SelectedIndex(list()), 2);
    EXPECT_EQ(listview_SelectedCount(list()), 1);

    EXPECT_TRUE(lstvPlaylist_KeyDown(ctx, 13));
    ctx.PlayerPaused = true;
    lstvPlaylist_DblClick(ctx);
    EXPECT_EQ(ran, QStringList({"mnuPlay", "mnuStop", "mnuPlay"}));
    EXPECT_FALSE(lstvPlaylist_KeyDown(ctx, 93)) << "the view pops up the menu";
}

TEST_F(PlaylistRowsTest, ADraggedRowLandsAboveATargetUpAndBelowATargetDown) {
    addRows(5);
    list().setRowStyle(0, true, 192); // the look stays with its row
    const auto drag = [&](int from, int to) {
        select({from});
        lstvPlaylist_OLEStartDrag(ctx, from);
        EXPECT_TRUE(ctx.PlaylistDragActive);
        EXPECT_TRUE(lstvPlaylist_OLEDragDrop(ctx, to));
        EXPECT_FALSE(ctx.PlaylistDragActive);
    };
    drag(4, 2);
    EXPECT_EQ(artists(), QStringList({"A", "D", "B", "C", "E"}));
    EXPECT_EQ(listview_SelectedIndex(list()), 2);
    EXPECT_TRUE(list().isBold(0, Artist));
    drag(2, 4);
    EXPECT_EQ(artists(), QStringList({"A", "B", "C", "D", "E"}));
    EXPECT_EQ(list().rowTexts(3), QStringList({"04", "D", "", "", "Play", "", makeFile("D.mp3")}));
    EXPECT_EQ(listview_SelectedIndex(list()), 4);
    drag(1, 5);
    EXPECT_EQ(artists(), QStringList({"B", "C", "D", "E", "A"}));

    list().setText(0, Number, "x");
    drag(2, 2); // onto itself
    drag(2, 0); // onto no row
    EXPECT_EQ(artists(), QStringList({"B", "C", "D", "E", "A"}));
    EXPECT_EQ(list().text(0, Number), "01");
    EXPECT_EQ(jumps, 5);
    EXPECT_FALSE(lstvPlaylist_OLEDragDrop(ctx, 1)) << "no drag under way: files from outside";
}

TEST_F(PlaylistRowsTest, RowRoutinesOfOtherLists) {
    addRows(3);
    list().setRowStyle(0, true, 192);
    listview_SwapRows(list(), 1, 3, true);
    EXPECT_EQ(artists(), QStringList({"C", "B", "A"}));
    EXPECT_TRUE(list().isBold(0, Artist)) << "texts trade places, the look stays";
    EXPECT_TRUE(list().isSelected(2));

    select({2});
    listview_RemoveSelected(list());
    EXPECT_EQ(listview_SelectedIndex(list()), 2) << "the row that took its place";
    listview_RemoveSelected(list());
    EXPECT_EQ(artists(), QStringList({"C"}));
    EXPECT_EQ(listview_SelectedIndex(list()), 1) << "the new last row";

    ListModel volumes({"File", "Volume"});
    for (const QString& f : {makeFile("a.mp3"), missing("b.mp3"), missing("c.mp3")})
        volumes.addRow({f, "10"});
    EXPECT_EQ(listview_RemoveDeadEntries(volumes, 0), 2);
    EXPECT_EQ(listview_RemoveDeadEntries(volumes, 0), 0);
    EXPECT_EQ(volumes.count(), 1);
    ASSERT_EQ(dialogs.asked().size(), 2);
    EXPECT_EQ(dialogs.asked()[0].title, "Remove Dead Filenames Information");
    EXPECT_EQ(dialogs.asked()[0].text, "It has been detected that you had 2 dead filenames in the "
                                       "list.\n\nThese items have been removed.\n");
    EXPECT_EQ(dialogs.asked()[1].text, "No dead filenames were found within the list.\n\nNo items "
                                       "have been removed from the list.\n");
}
