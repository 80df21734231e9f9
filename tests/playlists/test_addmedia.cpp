#include "playlists/AddMediaFixture.h"

#include "core/Settings.h"
#include "playlists/RecentList.h"
#include "playlists/modRecentMedia.h"
#include "ui/FrmMessage.h"
#include "ui/ListView.h"

#include <QApplication>
#include <QFile>
#include <QMimeData>
#include <QPushButton>
#include <QTimer>
#include <fcntl.h>
#include <unistd.h>

using namespace PlaylistColumn;

namespace {
struct DropView : ListView {
    using ListView::dropEvent;
    using ListView::ListView;
};

QString nulJoin(const QStringList& parts) {
    return parts.join(QChar(0));
}
} // namespace

// ---- Add Files

TEST_F(AddMediaFixture, AddFilesTakesAHundredAndRefusesAHundredAndOne) {
    QStringList names;
    for (int i = 1; i <= 101; ++i)
        names << media(QStringLiteral("many/%1.mp3").arg(i, 3, 10, QLatin1Char('0')));
    for (QString& n : names)
        n = QFileInfo(n).fileName();
    const QString dir = home.file(QStringLiteral("music/many"));

    dialogs.answer(nulJoin(QStringList{dir} + names));
    click("mnuAddFiles");
    EXPECT_EQ(list().count(), 0);
    EXPECT_EQ(titles(), QStringList({QStringLiteral("Add Files To Playlist..."),
                                     QStringLiteral("Add Files Error")}));
    EXPECT_EQ(dialogs.asked().at(0).text, media_AddFilesFilter());
    EXPECT_EQ(dialogs.asked().at(0).flags, 524804);

    dialogs.clear();
    dialogs.answer(nulJoin(QStringList{dir} + names.mid(0, 100)));
    click("mnuAddFiles");
    ASSERT_EQ(list().count(), 100);
    EXPECT_EQ(list().text(0, Number).toInt(), 1);
    EXPECT_EQ(list().text(99, Artist), QStringLiteral("Tag 100"));
    EXPECT_EQ(settings_Read(QStringLiteral("Settings"), QStringLiteral("LastDirectoryUsed")), dir);
    // Several files are not recent media; one file is.
    EXPECT_EQ(recent_CountMedia(), 0);
    dialogs.answer(dir + QStringLiteral("/001.mp3"));
    click("mnuAddFiles");
    EXPECT_EQ(recent_Media().value(1), dir + QStringLiteral("/001.mp3"));
}

TEST_F(AddMediaFixture, AddFilesWithTagsOffLeavesArtistAndTitleEmpty) {
    ctx.commands().setChecked(QStringLiteral("mnuTagsShowTagsAsFilesAreAdded"), false);
    const QString wav = media(QStringLiteral("a.wav"));
    dialogs.answer(wav);
    click("mnuAddFiles");
    ASSERT_EQ(list().count(), 1);
    EXPECT_EQ(list().text(0, Artist), QString());
    EXPECT_EQ(list().text(0, Status), QStringLiteral("Play"));
    EXPECT_TRUE(log().contains(wav + QStringLiteral(" added to playlist.")));
    EXPECT_EQ(reader->reads, 0);
}

// ---- Add Directory

TEST_F(AddMediaFixture, AddDirectoryTakesOnlyMpegTypesWithRepeatedDeepFolders) {
    media(QStringLiteral("top/one.mp3"));
    media(QStringLiteral("top/LOUD.MP3"));
    media(QStringLiteral("top/two.mp2"));
    media(QStringLiteral("top/song.wav"));
    media(QStringLiteral("top/notes.txt"));
    media(QStringLiteral("top/A/B/C/deep.mp1"));
    dialogs.answer(home.file(QStringLiteral("music/top")));
    click("mnuAddDirectory");
    ASSERT_NE(DirectoryAdd::running(ctx), nullptr); // the menu returned while the add goes on
    FrmMessage* message = DirectoryAdd::running(ctx)->messageWindow();
    ASSERT_NE(message, nullptr);
    EXPECT_TRUE(message->isVisible());
    EXPECT_EQ(message->line(2), QStringLiteral("Adding media files to playlist, please wait..."));
    EXPECT_TRUE(ctx.PlaylistBusy);
    ASSERT_TRUE(waitForAdd());
    EXPECT_FALSE(ctx.PlaylistBusy);
    QStringList got = names();
    // Per folder mp3 first, then mp2, then mp1; a folder three deep is listed twice.
    ASSERT_EQ(got.size(), 5);
    EXPECT_EQ(QSet<QString>(got.begin(), got.begin() + 2),
              QSet<QString>({QStringLiteral("one.mp3"), QStringLiteral("LOUD.MP3")}));
    EXPECT_EQ(got.mid(2), QStringList({QStringLiteral("two.mp2"), QStringLiteral("deep.mp1"),
                                       QStringLiteral("deep.mp1")}));
    EXPECT_EQ(list().text(4, Number).toInt(), 5);
    EXPECT_EQ(list().text(0, Length), QStringLiteral("03:00"));
    EXPECT_EQ(settings_Read(QStringLiteral("Settings"), QStringLiteral("DirectoryPath")),
              home.file(QStringLiteral("music/top")));

    // Without the recursive scan only the folder itself; the same folder again doubles it.
    settings_Write(QStringLiteral("Settings"), QStringLiteral("DoRecursiveDirectoryScan"), "0");
    dialogs.answer(home.file(QStringLiteral("music/top")));
    click("mnuAddDirectory");
    ASSERT_TRUE(waitForAdd());
    EXPECT_EQ(list().count(), 8);
    // The duplicate scan, when on, keeps one row a file.
    settings_Write(QStringLiteral("Settings"), QStringLiteral("AlwaysScanPlaylistWhenAddingSongs"),
                   "1");
    dialogs.answer(home.file(QStringLiteral("music/top")));
    click("mnuAddDirectory");
    ASSERT_TRUE(waitForAdd());
    EXPECT_EQ(list().count(), 4);
    EXPECT_TRUE(titles().contains(QStringLiteral("Playlist Scan Information")));
}

TEST_F(AddMediaFixture, AnAlbumsTracksComeInNameOrder) {
    for (const char* name : {"05 e.mp3", "01 a.mp3", "03 c.MP3", "04 d.mp3", "02 b.mp3"})
        media(QStringLiteral("album/") + QString::fromLatin1(name));
    dialogs.answer(home.file(QStringLiteral("music/album")));
    click("mnuAddDirectory");
    ASSERT_TRUE(waitForAdd());
    EXPECT_EQ(names(), (QStringList{"01 a.mp3", "02 b.mp3", "03 c.MP3", "04 d.mp3", "05 e.mp3"}));
    EXPECT_EQ(playlist_AddDirectory(ctx, home.file(QStringLiteral("music/album")), "mp3"), 5);
    EXPECT_EQ(names().mid(5), names().mid(0, 5));
}

TEST_F(AddMediaFixture, TheTagQuestionComesAboveTwoHundredRowsOfTheWholeList) {
    media(QStringLiteral("one/only.mp3"));
    const QString dir = home.file(QStringLiteral("music/one"));
    fillRows(199);
    dialogs.answer(dir);
    click("mnuAddDirectory");
    ASSERT_TRUE(waitForAdd());
    EXPECT_EQ(list().count(), 200);
    EXPECT_FALSE(titles().contains(QStringLiteral("Use Simple Filenames Confirmation")));
    EXPECT_EQ(list().text(199, Artist), QStringLiteral("Tag only"));

    // One more file on a list of 200: the question, and Yes means filenames only.
    dialogs.clear();
    reader->reads = 0;
    dialogs.answer(dir);
    dialogs.answer(QStringLiteral("yes"));
    click("mnuAddDirectory");
    ASSERT_TRUE(waitForAdd());
    EXPECT_EQ(list().count(), 201);
    EXPECT_TRUE(titles().contains(QStringLiteral("Use Simple Filenames Confirmation")));
    EXPECT_EQ(reader->reads, 0);
    EXPECT_EQ(list().text(200, Artist), QStringLiteral("only"));
}

TEST_F(AddMediaFixture, ALongAddKeepsTheLoopAliveAndCancelKeepsTheRows) {
    for (int i = 0; i < 300; ++i)
        media(QStringLiteral("slow/%1.mp3").arg(i));
    reader->delayMs = 2;
    int ticks = 0;
    QTimer beat;
    QObject::connect(&beat, &QTimer::timeout, [&ticks] { ++ticks; });
    beat.start(10);
    dialogs.answer(home.file(QStringLiteral("music/slow")));
    dialogs.answer(QStringLiteral("no")); // read the tags
    click("mnuAddDirectory");
    DirectoryAdd* add = DirectoryAdd::running(ctx);
    ASSERT_NE(add, nullptr);
    // Cancel by the window's button once some tags are read.
    ASSERT_TRUE(QTest::qWaitFor([this] { return reader->reads >= 20; }, 10000));
    add->messageWindow()->findChild<QPushButton*>(QStringLiteral("cmdCancel"))->click();
    ASSERT_TRUE(waitForAdd());
    EXPECT_EQ(list().count(), 300);
    EXPECT_LT(reader->reads, 300);
    EXPECT_GE(ticks, 3);
    EXPECT_EQ(list().text(299, Number).toInt(), 300);
    // A second add cannot start while one runs.
    reader->delayMs = 0;
    dialogs.answer(home.file(QStringLiteral("music/slow")));
    click("mnuAddDirectory");
    EXPECT_EQ(DirectoryAdd::start(ctx, home.path(), QString()), nullptr);
    ASSERT_TRUE(waitForAdd());
}

TEST_F(AddMediaFixture, AwkwardFoldersEndWithoutHangingOrWritingOutside) {
    const QString top = folder(QStringLiteral("odd"));
    media(QStringLiteral("odd/a.mp3"));
    media(QStringLiteral("odd/line\nbreak.mp3"));
    // A name whose bytes are not UTF-8.
    const QByteArray raw = QFile::encodeName(top) + "/caf\xe9.mp3";
    const int fd = ::open(raw.constData(), O_CREAT | O_WRONLY, 0644);
    ASSERT_GE(fd, 0);
    ::close(fd);
    // A link back to its own parent, and a folder nobody may read.
    folder(QStringLiteral("odd/sub"));
    media(QStringLiteral("odd/sub/b.mp3"));
    ASSERT_TRUE(QFile::link(top, top + QStringLiteral("/sub/loop")));
    const QString locked = folder(QStringLiteral("odd/locked"));
    media(QStringLiteral("odd/locked/c.mp3"));
    QFile::setPermissions(locked, QFileDevice::Permissions());
    QStringList before = QDir(home.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    before.removeAll(QStringLiteral("settings.ini"));

    dialogs.answer(top);
    click("mnuAddDirectory");
    ASSERT_TRUE(waitForAdd(30000));
    QFile::setPermissions(locked,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    ::unlink(raw.constData()); // a name that does not decode cannot be removed by its text
    const QStringList got = names();
    EXPECT_TRUE(got.contains(QStringLiteral("a.mp3")));
    EXPECT_TRUE(got.contains(QStringLiteral("line\nbreak.mp3")));
    EXPECT_TRUE(got.contains(QStringLiteral("b.mp3")));
    EXPECT_EQ(got.count(QStringLiteral("b.mp3")), 1);
    // A name that does not decode is passed over by the listing; nothing else is lost.
    EXPECT_EQ(got.size(), got.count(QStringLiteral("c.mp3")) + 3);
    // Only settings.ini changed in the data folder.
    QStringList after = QDir(home.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    after.removeAll(QStringLiteral("settings.ini"));
    EXPECT_EQ(after, before);
}

// ---- Add Playlist and drops

TEST_F(AddMediaFixture, AddPlaylistAppendsAndIsRemembered) {
    QStringList recent;
    ctx.recentPlaylists_Add = [&recent](const QString& p) { recent << p; };
    fillRows(2);
    const QString spp = home.file(QStringLiteral("Playlists/x.spp"));
    TempHome::writeFile(spp,
                        "\"\"\r\n\"Ar\"\r\n\"Ti\"\r\n\"\"\r\n\"Play\"\r\n\"\"\r\n\"/m/z.mp3\"\r\n");
    dialogs.answer(spp);
    click("mnuAddPlaylist");
    ASSERT_EQ(list().count(), 3);
    EXPECT_EQ(list().text(2, Artist), QStringLiteral("Ar"));
    EXPECT_EQ(list().text(2, Number).toInt(), 3);
    EXPECT_EQ(recent, QStringList{spp});
    EXPECT_TRUE(log().contains(spp + QStringLiteral(" added onto to the current playlist (")));
}

TEST_F(AddMediaFixture, ADropStopsAtTheFirstUnknownFileAndTakesOnlyLocalFiles) {
    const QString txt = media(QStringLiteral("readme.txt"));
    QStringList songs;
    for (int i = 0; i < 10; ++i)
        songs << media(QStringLiteral("d/%1.mp3").arg(i));
    lstvPlaylist_FilesDropped(ctx, QStringList{txt} + songs);
    EXPECT_EQ(list().count(), 0);

    const QString wav = media(QStringLiteral("d/x.WAV"));
    lstvPlaylist_FilesDropped(ctx, {songs[0], wav, txt, songs[1]});
    EXPECT_EQ(names(), QStringList({QStringLiteral("0.mp3"), QStringLiteral("x.WAV")}));
    EXPECT_EQ(recent_Media().value(1), wav); // each dropped file is recent media

    // Through the view: web addresses are no files.
    DropView view(&list());
    AddMedia_connectView(ctx, &view);
    auto* mime = new QMimeData;
    mime->setUrls({QUrl(QStringLiteral("https://example.org/a.mp3")),
                   QUrl(QStringLiteral("ftp://h/b.mp3")), QUrl::fromLocalFile(songs[2])});
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, mime, Qt::LeftButton, Qt::NoModifier);
    view.dropEvent(&drop); // a synthetic drop is refused by the application's own routing
    EXPECT_EQ(names().last(), QStringLiteral("2.mp3"));
    EXPECT_EQ(list().count(), 3);
    delete mime;
}
