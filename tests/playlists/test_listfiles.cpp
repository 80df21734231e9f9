#include "PlaylistFilesFixture.h"

#include "playlists/ListFiles.h"

#include <QDir>
#include <QFile>
#include <csignal>
#include <sys/resource.h>

class ListFilesTest : public PlaylistFilesFixture {
protected:
    bool loadBytes(const QByteArray& bytes) {
        TempHome::writeFile(path, bytes);
        return listview_LoadFromFile(list(), path);
    }
    // The one failure path: a warning, then an empty list.
    void expectLoadError(const QString& file) {
        ASSERT_EQ(dialogs.asked().size(), 1);
        EXPECT_EQ(dialogs.asked()[0].title, "Error Loading List");
        EXPECT_EQ(dialogs.asked()[0].text, "An error occured while trying to open the list:\n" +
                                               file +
                                               "\n\nThis list will not be opened and this "
                                               "function closed.\n");
        EXPECT_EQ(dialogs.asked()[0].flags, 48);
        EXPECT_EQ(list().count(), 0);
    }
    QString path = playlist("list");
};

TEST_F(ListFilesTest, RoundTripAppendsEveryCellUnchanged) {
    addSong("007", "Björk", "Jóga", "/music/a, b/Jóga.mp3", "1997", "Skip", "05:05");
    addSong("2", "", "", "/music/日本語/歌.ogg", "", "", "");
    addSong("3", "  blanks kept  ", "tab\there", "/music/comma,,.mp3");
    ASSERT_TRUE(listview_SaveToFile(list(), path));
    EXPECT_TRUE(TempHome::readFile(path).startsWith(
        spp({"007", "Björk", "Jóga", "1997", "Skip", "05:05", "/music/a, b/Jóga.mp3"})));

    ListModel loaded(list().headers());
    loaded.addRow({"kept", "", "", "", "", "", "/first"});
    ASSERT_TRUE(listview_LoadFromFile(loaded, path));
    ASSERT_EQ(loaded.count(), 4);
    EXPECT_EQ(loaded.text(0, 0), "kept");
    for (int r = 0; r < 3; ++r)
        EXPECT_EQ(loaded.rowTexts(r + 1), list().rowTexts(r));
    EXPECT_FALSE(loaded.hasSelection());

    // An empty list writes an empty file, which loads as nothing and says nothing.
    list().clear();
    ASSERT_TRUE(listview_SaveToFile(list(), path));
    EXPECT_EQ(QFileInfo(path).size(), 0);
    EXPECT_TRUE(listview_LoadFromFile(loaded, path));
    EXPECT_EQ(loaded.count(), 4);
    EXPECT_TRUE(dialogs.asked().isEmpty());
}

TEST_F(ListFilesTest, QuoteInsideATagSplitsThatValueAndShiftsTheFields) {
    for (int i = 1; i <= 7; ++i)
        addSong(QString::number(i), "Artist", "Rock \"n\" Roll", QString("/m/%1.mp3").arg(i),
                "1970", "Play", "02:00");
    ASSERT_TRUE(listview_SaveToFile(list(), path));
    list().clear();
    ASSERT_TRUE(listview_LoadFromFile(list(), path));
    ASSERT_EQ(list().count(), 8); // 56 values make eight rows of seven
    EXPECT_EQ(list().rowTexts(0),
              QStringList({"1", "Artist", "Rock ", "n\" Roll\"", "1970", "Play", "02:00"}));
    EXPECT_EQ(list().text(1, 0), "/m/1.mp3");
}

TEST_F(ListFilesTest, DamagedFilesKeepTheRowsReadAndAreMovedAsideBeforeAnythingCanOverwrite) {
    QStringList thirteen;
    for (int i = 1; i <= 13; ++i)
        thirteen << QString::number(i);
    const QByteArray row = spp({"1", "a", "say \"hi\"", "y", "Play", "", "/m/a.mp3"});
    const QByteArray good = spp({"1", "a", "t", "y", "Play", "", "/m/a.mp3"});
    const struct {
        const char* what;
        QByteArray bytes;
        int rows; // rows the file gives before the damage
        int line; // where the broken row starts
    } cases[] = {
        {"13 values", spp(thirteen), 1, 8},
        {"a quote in a tag of the only row", row, 1, 7},
        {"cut inside the last value", good + row.left(row.size() - 5), 2, 14},
        {"cut between values", good + good + row.left(row.indexOf("\"y\"")), 2, 15},
    };
    for (const auto& k : cases) {
        SCOPED_TRACE(k.what);
        QFile::remove(path + ".damaged");
        ConsoleLog::instance().setText({});
        list().clear();
        addSong("9", "held", "before", "/m/held.mp3");
        EXPECT_FALSE(loadBytes(k.bytes));
        // The rows held and the rows read before the damage stay.
        ASSERT_EQ(list().count(), 1 + k.rows);
        EXPECT_EQ(list().text(0, 1), "held");
        EXPECT_EQ(list().text(1, 0), "1");
        // The file is aside, whole, and the place is free for the next save.
        EXPECT_FALSE(QFile::exists(path));
        EXPECT_EQ(TempHome::readFile(path + ".damaged"), k.bytes);
        const QString where = QString("row %1 (line %2)").arg(k.rows + 1).arg(k.line);
        EXPECT_TRUE(log().contains(path + " could not be read from " + where))
            << log().toStdString();
        EXPECT_TRUE(log().contains(path + ".damaged"));
    }
    // Told on screen once for the file, with the standing warning's first words.
    ASSERT_EQ(asked(), QStringList({"message|Error Loading List"}));
    EXPECT_TRUE(dialogs.asked()[0].text.startsWith("An error occured while trying to open the "
                                                   "list:\n" +
                                                   path + "\n"));
    EXPECT_TRUE(dialogs.asked()[0].text.contains("row 2 (line 8)"));

    // A file that cannot be opened at all is no list: the standing warning, an empty list.
    for (const QString& bad : {playlist("missing"), home.file("Playlists")}) {
        dialogs.clear();
        addSong("9", "held", "before", "/m/held.mp3");
        EXPECT_FALSE(listview_LoadFromFile(list(), bad));
        expectLoadError(bad);
    }
}

TEST_F(ListFilesTest, AQuoteInTheDefaultPlaylistNeverCostsItsRows) {
    for (int i = 1; i <= 50; ++i)
        addSong(QString::number(i), "Artist", i == 30 ? "Blue Monday 12\" Mix" : "Song",
                QString("/m/%1.mp3").arg(i));
    const QString def = playlist_DefaultPath();
    ASSERT_TRUE(listview_SaveToFile(list(), def));
    const QByteArray saved = TempHome::readFile(def);
    list().clear();
    playlist_LoadDefault(ctx);
    // The quote shifts the fields from its row on, and the last row breaks off: all 50 are kept.
    EXPECT_EQ(list().count(), 50);
    EXPECT_EQ(list().text(28, 2), "Song");
    // The exit after a failed load never takes the only whole copy with it.
    playlist_SaveDefault(ctx);
    EXPECT_EQ(TempHome::readFile(def + ".damaged"), saved);
    list().clear();
    playlist_SaveDefault(ctx);
    EXPECT_EQ(TempHome::readFile(def + ".damaged"), saved);
}

TEST_F(ListFilesTest, ARemovedPlaylistsFolderIsMadeAgainWhenTheListIsWritten) {
    for (int i = 1; i <= 5; ++i)
        addSong(QString::number(i), "A", "T", QString("/m/%1.mp3").arg(i));
    ASSERT_TRUE(QDir(home.file("Playlists")).removeRecursively());
    playlist_SaveDefault(ctx);
    ListModel back(list().headers());
    ASSERT_TRUE(listview_LoadFromFile(back, playlist_DefaultPath()));
    EXPECT_EQ(back.count(), 5);
    EXPECT_TRUE(
        log().contains(home.file("Playlists") + " was missing and has been created again."));
}

TEST_F(ListFilesTest, HandMadeFilesLoad) {
    // Comma-separated rows, bare and quoted values, LF or CR LF, blanks around values, blank
    // lines at the end, a byte order mark, and a file in a single-byte code page.
    const QByteArray bytes = "\xEF\xBB\xBF"
                             "1, Artist A , Title, 2001,Play, 03:41, /music/a.mp3\r\n"
                             "\"2\",\"B, with comma\",\"T\",\"\",\"Skip\",\"\",\"/m/b.mp3\"\n"
                             "  \"3\"  \n\"C\"\n\n\"\"\n\"Play\"\n\"\"\n\"/m/c.mp3\"\r\n\r\n\n";
    ASSERT_TRUE(loadBytes(bytes));
    ASSERT_TRUE(loadBytes("4,Bj\xF6rk,,,,,/m/d.mp3"));
    ASSERT_EQ(list().count(), 4);
    EXPECT_EQ(list().rowTexts(0),
              QStringList({"1", "Artist A", "Title", "2001", "Play", "03:41", "/music/a.mp3"}));
    EXPECT_EQ(list().rowTexts(1),
              QStringList({"2", "B, with comma", "T", "", "Skip", "", "/m/b.mp3"}));
    EXPECT_EQ(list().rowTexts(2), QStringList({"3", "C", "", "", "Play", "", "/m/c.mp3"}));
    EXPECT_EQ(list().text(3, 1), "Björk");
    EXPECT_TRUE(dialogs.asked().isEmpty());
}

TEST_F(ListFilesTest, AFailedSaveLeavesTheOldFileWhole) {
    const QByteArray old = spp({"1", "old", "rows", "", "Play", "", "/m/old.mp3"});
    TempHome::writeFile(path, old);
    for (int i = 0; i < 2000; ++i)
        addSong(QString::number(i), "New artist", "New title", QString("/m/new%1.mp3").arg(i));

    QFile::setPermissions(path, QFileDevice::ReadOwner); // a protected target stays
    EXPECT_FALSE(listview_SaveToFile(list(), path));
    EXPECT_EQ(TempHome::readFile(path), old);
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);

    // The disk takes only part of the new file (a size limit stands in for a full disk).
    rlimit saved{};
    getrlimit(RLIMIT_FSIZE, &saved);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit tight = saved;
    tight.rlim_cur = 4096;
    setrlimit(RLIMIT_FSIZE, &tight);
    const bool written = listview_SaveToFile(list(), path);
    setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_FALSE(written);
    EXPECT_EQ(TempHome::readFile(path), old);
    EXPECT_EQ(QDir(home.file("Playlists")).entryList(QDir::Files), QStringList{"list.spp"});

    EXPECT_TRUE(listview_SaveToFile(list(), path));
    EXPECT_EQ(TempHome::readFile(path), ListFiles::encode(list()));
}

TEST_F(ListFilesTest, DefaultPlaylistAtExitAndStartUp) {
    addSong("1", "a", "b", "/m/absent.mp3");
    playlist_SaveDefault(ctx);
    MainContext next;
    playlist_LoadDefault(next);
    ASSERT_EQ(next.lstvPlaylist().count(), 1);
    EXPECT_EQ(next.lstvPlaylist().text(0, 6), "/m/absent.mp3"); // not scanned

    list().clear();
    playlist_SaveDefault(ctx); // a run that ends empty leaves no default.spp
    EXPECT_FALSE(QFile::exists(playlist("default")));
    MainContext empty;
    playlist_LoadDefault(empty);
    EXPECT_EQ(empty.lstvPlaylist().count(), 0);
    EXPECT_TRUE(dialogs.asked().isEmpty());
}
