#include "library/LibraryFixture.h"

#include "core/Settings.h"
#include "playlists/Moods.h"

#include <QSignalSpy>
#include <unistd.h>

using LibraryMedia::id3v1;
using LibraryMedia::mpegFrames;

TEST_F(LibraryFixture, PlaylistRowsOfOtherMediaKeepTheirMisplacedCells) {
    const QString mp3 = song("a.mp3", "Tagged");
    const QString wav = media("b.wav", "RIFF");
    const QString gone = home.file("music/missing.mp3");
    open(playlist("mix", {mp3, wav, gone}));

    ListModel& set = lib.lstvFilenames();
    ASSERT_EQ(set.count(), 3);
    EXPECT_EQ(row(set, 0), (QStringList{"Tagged", "Title", "Album", "1999", "", "comment", mp3}));
    // Not MPEG audio and missing files: the playlist's own cells, under the wrong headers.
    EXPECT_EQ(row(set, 1),
              (QStringList{"02", "List Artist", "List Title", "1980", "Play", "01:00", wav}));
    EXPECT_EQ(set.text(2, LibraryColumn::Artist), "03");
    // The side lists read the cells as they stand, of files that exist.
    EXPECT_EQ(entries(lib.lstArtist()), (QStringList{"Tagged", "02"}));
    EXPECT_EQ(entries(lib.lstYear()), (QStringList{"1999", "1980"}));
    EXPECT_EQ(entries(lib.lstAlbum()), (QStringList{"Album", "List Title"}));
    EXPECT_EQ(lib.statusText(), "Status:  Waiting...");
    EXPECT_EQ(recent_Playlists().value(1), App::file("Playlists/mix.spp"));
}

TEST_F(LibraryFixture, AddingAPlaylistTwiceDoublesAndTheDuplicatesGo) {
    const QString path = playlist("two", {song("a.mp3", "A"), song("b.mp3", "B")});
    for (int i = 0; i < 2; ++i) {
        dialogs.answer(path);
        run("mnuAddPlaylist");
        lib.finishWork();
    }
    EXPECT_EQ(lib.lstvFilenames().count(), 4);
    EXPECT_EQ(entries(lib.lstArtist()), (QStringList{"A", "B"}));

    run("mnuRemoveDuplicateFilenames");
    EXPECT_EQ(lib.lstvFilenames().count(), 2);
    EXPECT_EQ(dialogs.asked().last().text, "These items have been removed.\n");
    EXPECT_TRUE(log().contains("Duplicate filenames removed from Media Librarys:  2."));
    run("mnuRemoveDuplicateFilenames");
    EXPECT_EQ(dialogs.asked().last().title, "Remove Duplicate Filenames Information");
    EXPECT_TRUE(dialogs.asked().last().text.startsWith("No duplicate filenames were found"));
}

TEST_F(LibraryFixture, ArtistsDifferingInCaseStandApartButFindEachOther) {
    const QString a = song("a.mp3", "abba"), b = song("b.mp3", "ABBA"), c = song("c.mp3", "Cher");
    open(playlist("case", {a, b, c}));
    EXPECT_EQ(entries(lib.lstArtist()), (QStringList{"abba", "ABBA", "Cher"}));

    lib.lstArtist().setSelected(1, true);
    lib.sideList_Click(lib.lstArtist());
    EXPECT_EQ(entries(lib.lstvResults(), ResultColumn::Path), (QStringList{a, b}));
    EXPECT_EQ(row(lib.lstvResults(), 0), (QStringList{"abba", "Title", "1999", "00:00", a}));
    lib.tmrWindowUpdate_Timer();
    EXPECT_EQ(lib.songsText(), "Songs:  2");
}

TEST_F(LibraryFixture, SearchBoxActsOnWholeEntriesArtistFirst) {
    const QString a = song("a.mp3", "1999", "2001"), b = song("b.mp3", "Prince", "1999"),
                  c = song("c.mp3", "Other", "2001", "1999");
    open(playlist("search", {a, b, c}));
    QSignalSpy shown(&lib, &MediaLibrary::sideListSelected);

    lib.txtSearch_Change("Princ");
    EXPECT_EQ(lib.lstvResults().count(), 0);
    lib.txtSearch_Change("Prince");
    EXPECT_EQ(entries(lib.lstvResults(), ResultColumn::Path), QStringList{b});
    // A partial or unknown text leaves what is shown.
    for (const QString& text : {QString("Prin"), QString("*"), QString("\"Prince\""),
                                QString(10000, QLatin1Char('x')), QString("%s?[a-z]")}) {
        lib.txtSearch_Change(text);
        EXPECT_EQ(entries(lib.lstvResults(), ResultColumn::Path), QStringList{b});
    }
    // "1999" is an artist, a year and an album here: the artist list wins.
    lib.txtSearch_Change("1999");
    EXPECT_EQ(entries(lib.lstvResults(), ResultColumn::Path), QStringList{a});
    ASSERT_FALSE(shown.isEmpty());
    EXPECT_EQ(shown.last().at(0).value<ListModel*>(), &lib.lstArtist());
    // "2001" is a year and no artist.
    lib.txtSearch_Change("2001");
    EXPECT_EQ(entries(lib.lstvResults(), ResultColumn::Path), (QStringList{a, c}));
    EXPECT_EQ(shown.last().at(0).value<ListModel*>(), &lib.lstYear());
    EXPECT_FALSE(lib.lstArtist().hasSelection());
}

TEST_F(LibraryFixture, VanishedFilesLeaveResultsAtOnceAndSideListsAtTheNextRebuild) {
    const QString a = song("a.mp3", "Same"), b = song("b.mp3", "Same"), c = song("c.mp3", "Solo");
    open(playlist("vanish", {a, b, c}));
    QFile::remove(b);
    QFile::remove(c);
    lib.results_Find("same", LibraryColumn::Artist);
    EXPECT_EQ(entries(lib.lstvResults(), ResultColumn::Path), QStringList{a});
    EXPECT_EQ(entries(lib.lstArtist()), (QStringList{"Same", "Solo"}));
    lib.library_Update();
    EXPECT_EQ(entries(lib.lstArtist()), QStringList{"Same"});
    run("mnuRemoveAlDeadFilenames");
    EXPECT_EQ(entries(lib.lstvFilenames(), LibraryColumn::Path), QStringList{a});
}

TEST_F(LibraryFixture, TagsWithNulsUnterminatedFieldsAndOtherBytesReadSafely) {
    const QByteArray full30(30, 'W');
    const QString a = media(
        "a.mp3", mpegFrames() + id3v1("T", QByteArray("Ab\0cd", 5) + QByteArray(5, 'x'), full30,
                                      "19\xff"
                                      "9"));
    const QString b = media("b.mp3", mpegFrames() + id3v1(full30, "M\xf6tley", "", "2000"));
    const QString c = media("c.mp3", QByteArray(50, '\0')); // too short for any tag
    const QString d = media("d.mp3", QByteArray());
    open(playlist("odd", {a, b, c, d}));
    ListModel& set = lib.lstvFilenames();
    EXPECT_EQ(set.text(0, LibraryColumn::Album), QString(full30));
    EXPECT_EQ(set.text(1, LibraryColumn::Title), QString(full30));
    EXPECT_EQ(cell(set, 1, LibraryColumn::Artist), QString::fromLatin1("M\xf6tley"));
    // Files without a tag: empty cells, and the rows stay.
    EXPECT_EQ(set.text(2, LibraryColumn::Artist), "");
    EXPECT_EQ(set.count(), 4);
    lib.txtSearch_Change(set.text(0, LibraryColumn::Artist));
    EXPECT_EQ(entries(lib.lstvResults(), ResultColumn::Path), QStringList{a});
}

TEST_F(LibraryFixture, DamagedAndMissingListsLeaveAUsableLibrary) {
    const QString binary = App::file("Playlists/binary.spp");
    QByteArray junk;
    for (int i = 0; i < 100000; ++i)
        junk += char((i * 7919) & 0xff);
    TempHome::writeFile(binary, junk);
    open(binary);
    EXPECT_EQ(dialogs.asked().last().title, "Error Loading List");
    // The reader keeps what it read before the damage; none of it names a real song.
    EXPECT_TRUE(lib.lstvResults().count() == 0 || lib.lstvFilenames().count() > 0);

    // A mood of 10,000 files that are not there: rows kept, nothing listed, nothing found.
    QStringList lines;
    for (int i = 0; i < 10000; ++i)
        lines << QStringLiteral("/nowhere/%1.mp3").arg(i);
    TempHome::writeFile(App::file("Moods/Ghosts.mlst"), lines.join("\r\n").toUtf8());
    MoodNames() = "Ghosts";
    lib.window_SelectOption("Moods", "Ghosts");
    lib.finishWork();
    EXPECT_EQ(lib.lstvFilenames().count(), 10000);
    EXPECT_EQ(lib.lstArtist().count(), 0);
    lib.results_Find("", LibraryColumn::Artist);
    EXPECT_EQ(lib.lstvResults().count(), 0);
    // A mood whose file is gone does nothing at all.
    lib.window_SelectOption("Moods", "Elsewhere");
    EXPECT_EQ(lib.lstvFilenames().count(), 10000);
    lib.window_SelectOption("NowPlaying", "Ghosts");
    EXPECT_EQ(lib.lstvFilenames().count(), 10000);
}

TEST_F(LibraryFixture, FolderWalkSurvivesLoopsAndUnreadableFolders) {
    song("top/a.mp3", "A");
    song("top/sub/b.MP3", "B");
    media("top/sub/notes.txt");
    song("top/sub/deeper/c.mp2", "C");
    ASSERT_EQ(
        ::symlink(qPrintable(home.file("music/top")), qPrintable(home.file("music/top/sub/loop"))),
        0);
    folder("top/locked");
    song("top/locked/d.mp3", "D");
    QFile::setPermissions(home.file("music/top/locked"), QFileDevice::Permissions());

    dialogs.answer(home.file("music/top"));
    run("mnuAddDirectory");
    lib.finishWork();
    QFile::setPermissions(home.file("music/top/locked"),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    QStringList names;
    for (const QString& p : entries(lib.lstvFilenames(), LibraryColumn::Path))
        names << p.mid(home.file("music/top/").size());
    // Readable anyway when the tests run as root.
    names.removeAll("locked/d.mp3");
    QStringList artists = entries(lib.lstArtist());
    artists.removeAll("D");
    EXPECT_EQ(names, (QStringList{"a.mp3", "sub/b.MP3", "sub/deeper/c.mp2"}));
    EXPECT_EQ(artists, (QStringList{"A", "B", "C"}));
    EXPECT_EQ(settings_Read("Settings", "DirectoryPath"), home.file("music/top"));
    EXPECT_TRUE(log().contains(home.file("music/top/a.mp3") + " added to Media Library."));
}

TEST_F(LibraryFixture, LoadingAnotherSetStopsTheWorkUnderWay) {
    QStringList paths;
    for (int i = 0; i < 3000; ++i)
        paths << song(QStringLiteral("many/%1.mp3").arg(i), "Many");
    const QString first = playlist("first", paths);
    const QString second = playlist("second", {song("one.mp3", "One")});
    dialogs.answer(first);
    run("mnuOpen");
    ASSERT_TRUE(lib.isWorking());
    QSignalSpy finished(&lib, &MediaLibrary::workFinished);
    QCoreApplication::processEvents(); // one slice
    EXPECT_EQ(cell(lib.lstvFilenames(), 0, 0), "Many");
    EXPECT_EQ(lib.lstvFilenames().text(2999, 0), "3000"); // not read yet
    lib.window_SelectOption("Playlists", "second");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !finished.isEmpty(); }, 5000));
    EXPECT_EQ(entries(lib.lstvFilenames()), QStringList{"One"});
    EXPECT_EQ(entries(lib.lstArtist()), QStringList{"One"});
    QTest::qWait(50);
    EXPECT_EQ(lib.lstvFilenames().count(), 1);

    // Clearing mid-way, and a library gone mid-way, stop as cleanly.
    dialogs.answer(first);
    run("mnuOpen");
    run("mnuNew");
    EXPECT_FALSE(lib.isWorking());
    EXPECT_EQ(lib.lstvFilenames().count(), 0);
    auto* other = new MediaLibrary(ctx);
    dialogs.answer(first);
    other->commands().run("mnuOpen");
    QTest::qWait(20);
    delete other;
    QTest::qWait(20);
}

TEST_F(LibraryFixture, ResultsSaveAsAPlaylistAndGoToMoods) {
    const QString a = song("a.mp3", "Al, \"Q\""), b = song("b.mp3", "Al, \"Q\"");
    open(playlist("src", {a, b}));
    lib.results_Find("al, \"q\"", LibraryColumn::Artist);
    ASSERT_EQ(lib.lstvResults().count(), 2);

    const QString target = App::file("Playlists/saved.spp");
    dialogs.answer(target);
    run("mnuSaveAs");
    // The cells as they stand, NULs of the tag included.
    QByteArray expected;
    for (int i = 0; i < 2; ++i) {
        const QStringList r = lib.lstvResults().rowTexts(i);
        EXPECT_EQ(row(lib.lstvResults(), i),
                  (QStringList{"Al, \"Q\"", "Title", "1999", "00:00", i ? b : a}));
        expected += ListFiles::encodeRow({"", r[0], r[1], r[2], "Play", r[3], r[4]});
    }
    EXPECT_EQ(TempHome::readFile(target), expected);
    EXPECT_TRUE(log().contains(target + " saved as playlist."));
    // An existing name asks; No leaves the file alone.
    lib.lstvResults().removeRow(1);
    dialogs.answer(target);
    dialogs.answer("No");
    run("mnuSaveAs");
    EXPECT_EQ(dialogs.asked().last().title, "Overwrite Existing File Confirmation");
    EXPECT_EQ(TempHome::readFile(target), expected);
    dialogs.answer(target);
    dialogs.answer("Yes");
    run("mnuSaveAs");
    EXPECT_EQ(TempHome::readFile(target), expected.left(expected.size() / 2));

    MoodNames() = "Calm|Loud";
    window_InstallMoods(ctx);
    EXPECT_EQ(MenuArray::of(lib, "mnuSendToOp").item(2).caption, "Loud");
    listview_SelectItem(lib.lstvResults(), 1);
    lib.mnuSendToOp_Click(2);
    EXPECT_EQ(TempHome::readFile(App::file("Moods/Loud.mlst")), (a + "\r\n").toUtf8());
    EXPECT_TRUE(log().contains(a + " added to 'Loud' Mood."));
    lib.mnuSendToOp_Click(2);
    EXPECT_EQ(dialogs.asked().last().title, "Song/Video Already In Mood");
}

TEST_F(LibraryFixture, CommandsFollowTheRows) {
    Commands& c = lib.commands();
    lib.tmrWindowUpdate_Timer();
    EXPECT_EQ(lib.songsText(), "Songs:  None");
    for (const char* name : {"mnuExportToVELDOR", "mnuSaveAs", "mnuSendTo", "mnuRemoveSelected",
                             "mnuImportCurrentPlaylist", "mnuRemoveDuplicateFilenames"})
        EXPECT_FALSE(c.isEnabled(name)) << name;

    const QString a = song("a.mp3", "A"), b = song("b.mp3", "B");
    playlist_AddSong(ctx, {}, {}, {}, a);
    playlist_AddSong(ctx, {}, {}, {}, b);
    QTest::qWait(1); // the enabling follows the lists on the next turn of the loop
    EXPECT_TRUE(c.isEnabled("mnuImportCurrentPlaylist"));
    run("mnuImportCurrentPlaylist");
    lib.finishWork();
    EXPECT_TRUE(
        log().contains("Playlist from the main window was imported into the Media Library."));
    EXPECT_EQ(entries(lib.lstArtist()), (QStringList{"A", "B"}));
    lib.results_Find("b", LibraryColumn::Artist);
    QTest::qWait(1);
    EXPECT_TRUE(c.isEnabled("mnuExportToVELDOR"));
    EXPECT_EQ(lib.songsText(), "Songs:  1");

    // Removing a result takes its file out of the set and the side lists.
    listview_SelectItem(lib.lstvResults(), 1);
    run("mnuRemoveSelected");
    EXPECT_EQ(lib.lstvResults().count(), 0);
    EXPECT_EQ(entries(lib.lstvFilenames(), LibraryColumn::Path), QStringList{a});
    EXPECT_EQ(entries(lib.lstArtist()), QStringList{"A"});
}

TEST_F(LibraryFixture, ExportReplacesTheMainList) {
    const QString a = song("a.mp3", "X"), b = song("b.mp3", "Y"), c = song("c.mp3", "X");
    playlist_AddSong(ctx, {}, {}, {}, b);
    open(playlist("exp", {a, b, c}));
    lib.results_Find("x", LibraryColumn::Artist);
    run("mnuExportToVELDOR");
    EXPECT_EQ(column(PlaylistColumn::Filename), (QStringList{a, c}));
    EXPECT_TRUE(
        log().contains("Playlist from the Media Library was exported into the main window."));
}

TEST_F(LibraryFixture, ID3v2ChoiceIsTheLibrarysOwn) {
    const QString path =
        media("v2.mp3", LibraryMedia::id3v2("V2 Artist", "V2 Title") + mpegFrames() +
                            id3v1("V1 Title", "V1 Artist", "V1 Album", "1977", 17));
    open(playlist("v2", {path}));
    EXPECT_EQ(cell(lib.lstvFilenames(), 0, LibraryColumn::Artist), "V1 Artist");
    run("mnuUseID3v2Tags");
    lib.finishWork();
    EXPECT_TRUE(lib.commands().isChecked("mnuUseID3v2Tags"));
    EXPECT_EQ(settings_Read("MediaLibrarySettings", "UseID3v2Tags"), "1");
    const QStringList cells = row(lib.lstvFilenames(), 0);
    EXPECT_EQ(cells.mid(0, 2), (QStringList{"V2 Artist", "V2 Title"}));
    EXPECT_EQ(cells[LibraryColumn::Genre], "Rock"); // the genre always comes from ID3v1
    EXPECT_FALSE(ctx.commands().isChecked("mnuUseID3v2Tags"));
    // The side lists wait for the next rebuild.
    EXPECT_EQ(entries(lib.lstArtist()), QStringList{"V1 Artist"});
}

// Rebuilds remember by row whether a file exists; a link's target, a changed path and a file
// removed between rebuilds must still be seen at the next one.
TEST_F(LibraryFixture, RebuildsSeeFilesThatChangedSinceTheLast) {
    QStringList paths;
    for (int i = 0; i < 80; ++i) // enough rows to be added in bulk
        paths << song(QStringLiteral("s%1.mp3").arg(i), "Band " + QByteArray::number(i % 3));
    const QString target = song("target.mp3", "Linked");
    const QString link = App::file("link.mp3");
    ASSERT_EQ(::symlink(qPrintable(target), qPrintable(link)), 0);
    open(playlist("rows", paths + QStringList{link}));
    EXPECT_EQ(entries(lib.lstArtist()), (QStringList{"Band 0", "Band 1", "Band 2", "Linked"}));

    QFile::remove(target); // nothing tells the link's folder: links are asked every time
    lib.library_Update();
    EXPECT_EQ(entries(lib.lstArtist()), (QStringList{"Band 0", "Band 1", "Band 2"}));

    for (int i = 0; i < 80; i += 3)
        QFile::remove(paths[i]);
    lib.library_Update();
    EXPECT_EQ(entries(lib.lstArtist()), (QStringList{"Band 1", "Band 2"}));

    // A row now names another file: the missing one it named before no longer counts.
    lib.lstvFilenames().setText(0, LibraryColumn::Path, paths[1]);
    lib.library_Update();
    EXPECT_EQ(entries(lib.lstArtist()), (QStringList{"Band 0", "Band 1", "Band 2"}));
}
