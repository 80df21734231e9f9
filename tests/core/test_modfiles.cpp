#include "core/DialogScript.h"
#include "core/modFiles.h"
#include "support/TempHome.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QUrl>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

using namespace modFiles;

namespace {

// Dialogs answered by script for the length of a test.
struct Scripted {
    ScriptedResponder responder;
    explicit Scripted(QStringList answers = {}) : responder(std::move(answers)) {
        Dialogs::setResponder(&responder);
    }
    ~Scripted() { Dialogs::setResponder(nullptr); }
    const QList<Dialogs::Asked>& asked() const { return responder.asked(); }
};

// Points HOME and XDG_DATA_HOME into a temporary folder, so the Trash and the recent list are ours.
struct PrivateDesktop {
    QTemporaryDir dir;
    QByteArray oldHome = qgetenv("HOME"), oldData = qgetenv("XDG_DATA_HOME");
    PrivateDesktop() {
        qputenv("HOME", dir.path().toUtf8());
        qputenv("XDG_DATA_HOME", (dir.path() + "/data").toUtf8());
    }
    ~PrivateDesktop() {
        qputenv("HOME", oldHome);
        oldData.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", oldData);
    }
    QString data(const QString& rel) const { return dir.path() + "/data/" + rel; }
};

void makeReadOnly(const QString& path) {
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::ReadGroup);
}

} // namespace

TEST(ModFilesPaths, NamesAndExtensionsLookAtTheWholePath) {
    EXPECT_EQ(file_GetExtension("/music/song.Mp3"), "Mp3");
    EXPECT_EQ(file_GetExtension("/music.old/song"), "old/song");
    EXPECT_EQ(file_GetExtension("/music/song"), "/music/song");
    EXPECT_EQ(file_GetExtension("/music/song."), "");

    EXPECT_EQ(file_GetName("/music/a b.mp3"), "a b.mp3");
    EXPECT_EQ(file_GetName("song.mp3"), "song.mp3");
    EXPECT_EQ(file_GetName("/music/"), "");

    EXPECT_EQ(file_GetDirectory("/music/rock/a.mp3"), "/music/rock");
    EXPECT_EQ(file_GetDirectory("/a.mp3"), "");
    EXPECT_EQ(file_GetDirectory("a.mp3"), "");

    EXPECT_EQ(file_GetTitle("/music/live.at.home.mp3"), "live.at.home");
    EXPECT_EQ(file_GetTitle("/music.d/track"), "track");
}

TEST(ModFilesPaths, StripTrailingNullRemovesOnlyOneFinalNul) {
    EXPECT_EQ(text_StripTrailingNull(QString("abc") + QChar(0)), "abc");
    EXPECT_EQ(text_StripTrailingNull(QString("a") + QChar(0) + "b"), QString("a") + QChar(0) + "b");
    EXPECT_EQ(text_StripTrailingNull(QString(2, QChar(0))), QString(1, QChar(0)));
    EXPECT_EQ(text_StripTrailingNull(""), "");
}

TEST(ModFilesTests, ExistsAndAttributes) {
    TempHome home;
    const QString file = home.file("a.txt");
    TempHome::writeFile(file, "x");
    EXPECT_TRUE(file_Exists(file));
    EXPECT_TRUE(file_Exists(home.path()));
    EXPECT_FALSE(file_Exists(home.file("missing")));
    EXPECT_FALSE(file_Exists(""));

    EXPECT_FALSE(file_HasAttributes(file, 1));
    EXPECT_TRUE(file_HasAttributes(home.path(), 16));
    EXPECT_FALSE(file_HasAttributes(file, 16));
    makeReadOnly(file);
    EXPECT_TRUE(file_HasAttributes(file, 1));
    EXPECT_FALSE(file_HasAttributes(file, 1 | 16)); // every bit of the mask must be set
    // A missing path answers like the classic call: every attribute set.
    EXPECT_TRUE(file_HasAttributes(home.file("missing"), 1));
}

TEST(ModFilesSizes, BytesUpTo1024ThenMegabytesWithoutAKilobyteStep) {
    TempHome home;
    auto sized = [&](qint64 n) {
        const QString p = home.file(QString("f%1").arg(n));
        TempHome::writeFile(p, QByteArray(n, 'x'));
        return p;
    };
    EXPECT_EQ(file_GetSizeText(sized(0)), "0");
    EXPECT_EQ(file_GetSizeFormatted(sized(0), true), "0 Bytes");
    EXPECT_EQ(file_GetSizeFormatted(sized(1024), true), "1024 Bytes");
    EXPECT_EQ(file_GetSizeFormatted(sized(1024), false), "1024");
    EXPECT_EQ(file_GetSizeFormatted(sized(1025), true), "0 MB");
    EXPECT_EQ(file_GetSizeFormatted(sized(2000), false), "0");
    EXPECT_EQ(file_GetSizeFormatted(sized(1572864), true), "1.5 MB");
    EXPECT_EQ(file_GetSizeFormatted(sized(3 * 1048576 + 300000), true), "3.29 MB");
    EXPECT_EQ(file_GetSizeText(sized(3 * 1048576 + 300000)), "3445728");
}

TEST(ModFilesText, ContainsEntryReadsValuesLikeAListFile) {
    TempHome home;
    const QString list = home.file("list.mlst");
    TempHome::writeFile(list, "\"/Music/Rock/A.mp3\"\r\n"
                              "   /music/plain value.mp3   \r\n"
                              "/music/x,/music/y\n"
                              "\"/music/quoted, comma.mp3\" junk behind\r\n"
                              "\"/music/last.mp3\"");
    EXPECT_TRUE(file_ContainsEntry(list, "/music/rock/a.MP3"));
    EXPECT_TRUE(file_ContainsEntry(list, "/music/plain value.mp3"));
    EXPECT_TRUE(file_ContainsEntry(list, "/music/x"));
    EXPECT_TRUE(file_ContainsEntry(list, "/music/y"));
    EXPECT_FALSE(file_ContainsEntry(list, "/music/x,/music/y")); // a comma splits a plain value
    EXPECT_TRUE(file_ContainsEntry(list, "/music/quoted, comma.mp3"));
    // Text behind a closing quote is the next value, for this reader as for the list reader.
    EXPECT_TRUE(file_ContainsEntry(list, "junk behind"));
    EXPECT_TRUE(file_ContainsEntry(list, "/music/last.mp3"));
    EXPECT_FALSE(file_ContainsEntry(list, "/music/rock"));
    EXPECT_FALSE(file_ContainsEntry(home.file("missing"), "x"));
}

TEST(ModFilesText, CountAndReadLinesWithAnyLineEnd) {
    TempHome home;
    const QString crlf = home.file("crlf.txt"), lf = home.file("lf.txt"), empty = home.file("e");
    TempHome::writeFile(crlf, "one\r\ntwo\r\n\r\nfour");
    TempHome::writeFile(lf, "a\nb\n");
    TempHome::writeFile(empty, "");
    EXPECT_EQ(file_CountLines(crlf), 4);
    EXPECT_EQ(file_CountLines(lf), 2);
    EXPECT_EQ(file_CountLines(empty), 0);
    EXPECT_EQ(file_CountLines(home.file("missing")), 0);

    EXPECT_EQ(file_ReadLine(crlf, 1), "one");
    EXPECT_EQ(file_ReadLine(crlf, 2), "two");
    EXPECT_EQ(file_ReadLine(crlf, 3), "");
    EXPECT_EQ(file_ReadLine(crlf, 4), "four");
    EXPECT_EQ(file_ReadLine(crlf, 5), "");
    EXPECT_EQ(file_ReadLine(crlf, 0), "");
    EXPECT_EQ(file_ReadLine(lf, 2), "b");
    EXPECT_EQ(file_ReadLine(home.file("missing"), 1), "");
}

TEST(ModFilesChanges, DeleteLeavesReadOnlyFilesAndFoldersSilently) {
    TempHome home;
    Scripted dialogs;
    const QString plain = home.file("plain.mp3"), locked = home.file("locked.mp3");
    TempHome::writeFile(plain, "x");
    TempHome::writeFile(locked, "keep");
    makeReadOnly(locked);
    QDir().mkdir(home.file("folder"));

    file_Delete(plain);
    file_Delete(locked);
    file_Delete(home.file("folder"));
    file_Delete(home.file("missing"));
    EXPECT_FALSE(QFile::exists(plain));
    EXPECT_EQ(TempHome::readFile(locked), "keep");
    EXPECT_TRUE(QFileInfo(home.file("folder")).isDir());
    EXPECT_TRUE(dialogs.asked().isEmpty());
}

TEST(ModFilesChanges, RecycleBinUsesTheDesktopTrashAndWarnsWhenItCannot) {
    PrivateDesktop desktop;
    Scripted dialogs;
    const QString song = desktop.dir.path() + "/song.mp3";
    TempHome::writeFile(song, "music");

    file_SendToRecycleBin(song, false, false);
    EXPECT_FALSE(QFile::exists(song));
    EXPECT_EQ(TempHome::readFile(desktop.data("Trash/files/song.mp3")), "music");
    EXPECT_TRUE(dialogs.asked().isEmpty());

    const QString missing = desktop.dir.path() + "/gone.mp3";
    file_SendToRecycleBin(missing, false, true);
    ASSERT_EQ(dialogs.asked().size(), 1);
    EXPECT_EQ(dialogs.asked()[0].title, "Error Deleting File");
    EXPECT_EQ(dialogs.asked()[0].text, "An error occured while trying to delete the filename\n" +
                                           missing + "\n\nThis function will not continue.\n");
    EXPECT_EQ(dialogs.asked()[0].flags, 48);
}

TEST(ModFilesChanges, RecycleBinAsksWhenConfirmationIsWanted) {
    PrivateDesktop desktop;
    Scripted dialogs({"no", "yes"});
    const QString song = desktop.dir.path() + "/song.mp3";
    TempHome::writeFile(song, "music");
    file_SendToRecycleBin(song, true, false);
    EXPECT_TRUE(QFile::exists(song));
    file_SendToRecycleBin(song, true, false);
    EXPECT_FALSE(QFile::exists(song));
    EXPECT_EQ(dialogs.asked().size(), 2);
}

TEST(ModFilesChanges, CopyOverwritesAtomicallyAndKeepsTime) {
    TempHome home;
    Scripted dialogs;
    const QString src = home.file("a.mp3"), dst = home.file("out/b.mp3");
    TempHome::writeFile(src, "new content");
    TempHome::writeFile(dst, "old");
    const QDateTime stamp = QDateTime::currentDateTime().addDays(-3);
    {
        QFile f(src);
        ASSERT_TRUE(f.open(QIODevice::ReadWrite));
        f.setFileTime(stamp, QFileDevice::FileModificationTime);
    }
    file_Copy(src, dst);
    EXPECT_EQ(TempHome::readFile(dst), "new content");
    EXPECT_EQ(TempHome::readFile(src), "new content");
    EXPECT_EQ(QFileInfo(dst).lastModified().toSecsSinceEpoch(), stamp.toSecsSinceEpoch());

    file_Copy(src, home.file("out")); // into a folder, under the source's name
    EXPECT_EQ(TempHome::readFile(home.file("out/a.mp3")), "new content");

    file_Copy(src, src); // onto itself must not truncate it
    EXPECT_EQ(TempHome::readFile(src), "new content");
    EXPECT_TRUE(dialogs.asked().isEmpty());
}

TEST(ModFilesChanges, CopyFailuresWarnAndLeaveTheTarget) {
    TempHome home;
    Scripted dialogs;
    const QString src = home.file("a.mp3"), locked = home.file("locked.mp3");
    TempHome::writeFile(src, "data");
    TempHome::writeFile(locked, "keep");
    makeReadOnly(locked);

    file_Copy(src, locked);
    file_Copy(home.file("missing.mp3"), home.file("x.mp3"));
    file_Copy(src, home.file("no/such/folder/x.mp3"));
    EXPECT_EQ(TempHome::readFile(locked), "keep");
    EXPECT_FALSE(QFile::exists(home.file("x.mp3")));
    ASSERT_EQ(dialogs.asked().size(), 3);
    EXPECT_EQ(dialogs.asked()[1].title, "Error Copying File");
    EXPECT_EQ(dialogs.asked()[1].text, "An error occured while trying to copy the filename\n" +
                                           home.file("missing.mp3") +
                                           "\n\nThis function will not continue.\n");
}

TEST(ModFilesChanges, MoveRenamesOrCopiesAcrossFileSystems) {
    TempHome home;
    Scripted dialogs;
    const QString src = home.file("a.mp3"), dst = home.file("sub/b.mp3");
    TempHome::writeFile(src, "one");
    TempHome::writeFile(dst, "replaced");
    file_Move(src, dst);
    EXPECT_FALSE(QFile::exists(src));
    EXPECT_EQ(TempHome::readFile(dst), "one");

    QTemporaryDir other(QStringLiteral("/dev/shm/veldor-test-XXXXXX"));
    if (other.isValid()) {
        file_Move(dst, other.path()); // another file system: copy, then remove the source
        EXPECT_FALSE(QFile::exists(dst));
        EXPECT_EQ(TempHome::readFile(other.path() + "/b.mp3"), "one");
    }
    EXPECT_TRUE(dialogs.asked().isEmpty());
}

TEST(ModFilesChanges, MoveFailuresWarnAndLoseNothing) {
    TempHome home;
    Scripted dialogs;
    const QString src = home.file("a.mp3"), locked = home.file("locked.mp3");
    TempHome::writeFile(src, "data");
    TempHome::writeFile(locked, "keep");
    makeReadOnly(locked);

    file_Move(src, locked);
    file_Move(home.file("missing.mp3"), home.file("x.mp3"));
    EXPECT_EQ(TempHome::readFile(src), "data");
    EXPECT_EQ(TempHome::readFile(locked), "keep");
    ASSERT_EQ(dialogs.asked().size(), 2);
    EXPECT_EQ(dialogs.asked()[0].title, "Error Moving File");
    EXPECT_EQ(dialogs.asked()[0].text, "An error occured while trying to move the filename\n" +
                                           src + "\n\nThis function will not continue.\n");
}

TEST(ModFilesChanges, RenameNeverReplacesAndNeverAsks) {
    TempHome home;
    Scripted dialogs;
    const QString a = home.file("a.spp"), b = home.file("b.spp");
    TempHome::writeFile(a, "A");
    EXPECT_TRUE(file_Rename(a, b));
    EXPECT_EQ(TempHome::readFile(b), "A");
    TempHome::writeFile(a, "other");
    EXPECT_FALSE(file_Rename(a, b));
    EXPECT_EQ(TempHome::readFile(a), "other");
    EXPECT_EQ(TempHome::readFile(b), "A");
    EXPECT_FALSE(file_Rename(home.file("missing"), home.file("c")));
    EXPECT_FALSE(file_Rename(a, home.file("no/folder/c")));
    EXPECT_TRUE(dialogs.asked().isEmpty());
}

TEST(ModFilesChanges, WriteAtomicReplacesButRespectsReadOnly) {
    TempHome home;
    Scripted dialogs;
    const QString p = home.file("w.txt");
    EXPECT_TRUE(file_WriteAtomic(p, "first"));
    QFile::setPermissions(p, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    EXPECT_TRUE(file_WriteAtomic(p, "second"));
    EXPECT_EQ(TempHome::readFile(p), "second");
    EXPECT_EQ(QFileInfo(p).permissions(),
              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadUser |
                  QFileDevice::WriteUser); // the file keeps its mode

    makeReadOnly(p);
    EXPECT_FALSE(file_WriteAtomic(p, "third"));
    EXPECT_EQ(TempHome::readFile(p), "second");
    EXPECT_FALSE(file_WriteAtomic(home.file("no/folder/x"), "x"));
    EXPECT_FALSE(file_WriteAtomic(home.path(), "x"));
    EXPECT_EQ(QDir(home.path()).entryList(QDir::Files | QDir::Hidden).size(), 1); // no temporary
    // A read-only file loses the write silently; the other failures are told, once each.
    EXPECT_FALSE(file_WriteAtomic(home.path(), "x"));
    ASSERT_EQ(dialogs.asked().size(), 2);
    EXPECT_EQ(dialogs.asked()[0].title, "Error Saving File");
    EXPECT_TRUE(dialogs.asked()[0].text.contains(home.file("no/folder/x")));
    EXPECT_TRUE(dialogs.asked()[1].text.contains("Is a directory"));
}

TEST(ModFilesRecent, AddsToTheDesktopListAndKeepsOtherEntries) {
    PrivateDesktop desktop;
    const QString xbel = desktop.data("recently-used.xbel");
    const QString song = desktop.dir.path() + "/My Song & Co.mp3";
    TempHome::writeFile(song, "x");

    file_AddToRecentDocuments(song);
    QByteArray doc = TempHome::readFile(xbel);
    ASSERT_FALSE(doc.isEmpty());
    QByteArray href = QUrl::fromLocalFile(song).toEncoded();
    href.replace("&", "&amp;");
    EXPECT_TRUE(doc.contains("href=\"" + href + "\""));
    QXmlStreamReader reader(doc);
    int bookmarks = 0;
    while (!reader.atEnd())
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == u"bookmark")
            ++bookmarks;
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    EXPECT_EQ(bookmarks, 1);

    // Another program's entry stays byte for byte; adding the same file again adds no entry.
    const QByteArray foreign =
        "  <bookmark href=\"file:///other/doc.txt\" added=\"2020-01-01T00:00:00Z\" "
        "modified=\"2020-01-01T00:00:00Z\" visited=\"2020-01-01T00:00:00Z\"/>\n";
    doc.insert(doc.lastIndexOf("</xbel>"), foreign);
    TempHome::writeFile(xbel, doc);
    file_AddToRecentDocuments(song);
    doc = TempHome::readFile(xbel);
    EXPECT_TRUE(doc.contains(foreign));
    EXPECT_EQ(doc.count("<bookmark href="), 2);

    // Not a list it can read: left alone. A missing file is not added.
    TempHome::writeFile(xbel, "garbage");
    file_AddToRecentDocuments(song);
    EXPECT_EQ(TempHome::readFile(xbel), "garbage");
    QFile::remove(xbel);
    file_AddToRecentDocuments(desktop.dir.path() + "/missing.mp3");
    EXPECT_FALSE(QFile::exists(xbel));
}
