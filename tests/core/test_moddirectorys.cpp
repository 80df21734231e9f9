#include "core/DialogScript.h"
#include "core/modDirectorys.h"
#include "support/TempHome.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTimer>

#include <gtest/gtest.h>

using namespace modDirectorys;

namespace {

void mkpath(const TempHome& home, const QString& rel) {
    ASSERT_TRUE(QDir().mkpath(home.file(rel)));
}

} // namespace

TEST(ModDirectorys, ExistsByListingAndCreateMakesOneFolder) {
    TempHome home;
    TempHome::writeFile(home.file("file.mp3"), "x");
    EXPECT_TRUE(directory_Exists(home.path()));
    EXPECT_TRUE(directory_Exists(home.file("file.mp3"))); // a listing of a file names the file
    EXPECT_FALSE(directory_Exists(home.file("missing")));

    directory_Create(home.file("Logs"));
    EXPECT_TRUE(QFileInfo(home.file("Logs")).isDir());
    directory_Create(home.file("a/b")); // parents must exist
    EXPECT_FALSE(QFileInfo::exists(home.file("a")));
    directory_Create(home.file("Logs")); // already there: nothing happens
    EXPECT_TRUE(QFileInfo(home.file("Logs")).isDir());
}

TEST(ModDirectorys, BrowseShowsTheFixedPromptAndCutsAtNul) {
    TempHome home;
    ScriptedResponder responder({QString("/music") + QChar(0) + "junk", "cancel"});
    Dialogs::setResponder(&responder);
    EXPECT_EQ(directory_Browse(nullptr, home.path()), "/music");
    EXPECT_EQ(directory_Browse(nullptr, home.path()), "");
    Dialogs::setResponder(nullptr);
    ASSERT_EQ(responder.asked().size(), 2);
    EXPECT_EQ(responder.asked()[0].kind, "folder");
    EXPECT_EQ(responder.asked()[0].title, "Please select the directory and then click OK:");
    EXPECT_EQ(responder.asked()[0].text, home.path());
}

TEST(ModDirectorys, SubdirectoriesOfMissingAndEmptyFolders) {
    TempHome home;
    EXPECT_TRUE(directory_GetSubdirectories(home.file("missing"), 1).isEmpty());
    mkpath(home, "empty");
    EXPECT_EQ(directory_GetSubdirectories(home.file("empty"), 1), QStringList{""});
}

TEST(ModDirectorys, DeeperFoldersComeBackRepeatedly) {
    TempHome home;
    mkpath(home, "A/B/C");
    TempHome::writeFile(home.file("A/song.mp3"), "x"); // files are not folders
    const QString root = home.path();
    EXPECT_EQ(directory_GetSubdirectories(root, 1),
              (QStringList{"", root + "/A", root + "/A/B", root + "/A/B/C", root + "/A/B/C"}));
    // A trailing separator is not doubled.
    EXPECT_EQ(directory_GetSubdirectories(root + "/", 1).value(1), root + "/A");

    // A folder at depth d is listed 2^(d-2) times.
    mkpath(home, "A/B/C/D/E");
    const QStringList list = directory_GetSubdirectories(root, 1);
    EXPECT_EQ(list.count(root + "/A"), 1);
    EXPECT_EQ(list.count(root + "/A/B"), 1);
    EXPECT_EQ(list.count(root + "/A/B/C"), 2);
    EXPECT_EQ(list.count(root + "/A/B/C/D"), 4);
    EXPECT_EQ(list.count(root + "/A/B/C/D/E"), 8);
    EXPECT_EQ(list.count(""), 1);
    EXPECT_EQ(list.size(), 1 + 1 + 1 + 2 + 4 + 8);
}

TEST(ModDirectorys, SiblingsAndHiddenFolders) {
    TempHome home;
    mkpath(home, "Rock/Live");
    mkpath(home, "pop");
    mkpath(home, ".hidden");
    const QString root = home.path();
    const QStringList list = directory_GetSubdirectories(root, 1);
    EXPECT_EQ(list, (QStringList{"", root + "/pop", root + "/Rock", root + "/Rock/Live"}));
}

TEST(ModDirectorys, LinkLoopsEndAndLinkedFoldersAreListed) {
    TempHome home;
    mkpath(home, "A/B");
    mkpath(home, "X/Y");
    const QString root = home.path();
    ASSERT_TRUE(QFile::link(root + "/A", root + "/A/B/back")); // a link to its own parent
    ASSERT_TRUE(QFile::link(root + "/X", root + "/A/toX"));    // a link elsewhere
    ASSERT_TRUE(QFile::link(root + "/A", root + "/X/Y/toA"));  // and back again
    QElapsedTimer timer;
    timer.start();
    const QStringList list = directory_GetSubdirectories(root + "/A", 1);
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_TRUE(list.contains(root + "/A/B"));
    EXPECT_TRUE(list.contains(root + "/A/toX"));
    EXPECT_TRUE(list.contains(root + "/A/toX/Y"));
    EXPECT_FALSE(list.contains(root + "/A/B/back"));
    EXPECT_FALSE(list.contains(root + "/A/toX/Y/toA"));
}

TEST(ModDirectorys, ServesTheEventQueueWhileWalking) {
    TempHome home;
    mkpath(home, "A");
    bool fired = false;
    QTimer::singleShot(0, [&] { fired = true; });
    directory_GetSubdirectories(home.path(), 1);
    EXPECT_TRUE(fired);
}

TEST(ModDirectorys, FilesListInNameOrderWhateverTheCase) {
    TempHome home;
    mkpath(home, "album/sub.mp3");
    // Created out of order, so neither creation nor hash order can pass for name order.
    for (const char* name : {"b.MP3", "10.mp3", "03.mp3", "A.mp3", "01.mp3", "notes.txt", "02.Mp3"})
        TempHome::writeFile(home.file(QStringLiteral("album/") + QString::fromLatin1(name)), "x");
    EXPECT_EQ(directory_ListFiles(home.file("album"), "*.mp3"),
              (QStringList{"01.mp3", "02.Mp3", "03.mp3", "10.mp3", "A.mp3", "b.MP3"}));
    EXPECT_TRUE(directory_ListFiles(home.file("gone"), "*.mp3").isEmpty());
}
