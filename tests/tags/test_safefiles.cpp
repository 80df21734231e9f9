#include "support/TempHome.h"
#include "tags/RenameRules.h"
#include "tags/SafeFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

// Names a file system takes and a careless tool breaks.
QStringList awkwardNames() {
    return {QStringLiteral("two  spaces .mp3"), QStringLiteral("it's \"quoted\".mp3"),
            QStringLiteral("Björk – Jóga ☂.mp3"), QStringLiteral("-rf --help.mp3"),
            QString(251, QLatin1Char('x')) + QStringLiteral(".mp3")};
}

} // namespace

TEST(RenameNames, PatternsNumberingAndCleaning) {
    const QString a = QStringLiteral("Art"), t = QStringLiteral("Tit"), al = QStringLiteral("Alb");
    const QStringList expected{"Art - Tit.mp3",       "Tit - Art.mp3",       "Art - Alb - Tit.mp3",
                               "Art - Tit - Alb.mp3", "Tit - Art - Alb.mp3", "Alb - Art - Tit.mp3",
                               "Alb - Tit - Art.mp3"};
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(rename_BuildName(i, a, t, al, -1, QStringLiteral("mp3")), expected[i]) << i;
    EXPECT_EQ(rename_Patterns().size(), 7);
    EXPECT_EQ(rename_Patterns().at(2), QStringLiteral("3.  Artist - Album - Title"));
    // Position 7 gets two digits, 120 keeps three; the extension is lower-cased.
    EXPECT_EQ(rename_BuildName(0, a, t, al, 7, QStringLiteral("MP3")), "07 - Art - Tit.mp3");
    EXPECT_EQ(rename_BuildName(0, a, t, al, 120, QStringLiteral("mp2")), "120 - Art - Tit.mp2");
    // An empty tag gives " - .mp3": nothing guards it.
    EXPECT_EQ(rename_BuildName(0, {}, {}, {}, -1, QStringLiteral("mp3")), " - .mp3");
    EXPECT_EQ(rename_CleanName(QStringLiteral("a/b:c?d\\e*f\"g<h>i|j.mp3")), "abcdefghij.mp3");
    EXPECT_TRUE(rename_HasForbidden(QStringLiteral("a?b")));
    EXPECT_FALSE(rename_HasForbidden(QStringLiteral("a-b (c) [d] 'e'.mp3")));
}

TEST(RenameNames, NamesThatCannotStandInAFolder) {
    for (const QString& bad : {QString(), QStringLiteral("."), QStringLiteral(".."),
                               QStringLiteral("a/b"), QString(256, QLatin1Char('x'))})
        EXPECT_FALSE(rename_IsUsableName(bad)) << bad.left(20).toStdString();
    // Bytes count, not characters: 128 two-byte characters are 256 bytes.
    EXPECT_FALSE(rename_IsUsableName(QString(128, QChar(0xE9))));
    EXPECT_TRUE(rename_IsUsableName(QString(255, QLatin1Char('x'))));
    EXPECT_TRUE(rename_IsUsableName(QStringLiteral("..mp3")));
}

TEST(SafeFiles, RenameNeverReplacesAndKeepsAwkwardNames) {
    TempHome home;
    const QString a = home.file(QStringLiteral("a.mp3")), b = home.file(QStringLiteral("b.mp3"));
    TempHome::writeFile(a, "AAAA");
    TempHome::writeFile(b, "BB");
    const SafeFiles::Outcome taken = SafeFiles::renameNoReplace(a, b);
    EXPECT_FALSE(taken.ok);
    EXPECT_EQ(taken.error, EEXIST);
    EXPECT_EQ(TempHome::readFile(a), "AAAA");
    EXPECT_EQ(TempHome::readFile(b), "BB");
    EXPECT_TRUE(SafeFiles::renameNoReplace(a, a).ok); // onto itself: nothing to do

    QString from = a;
    for (const QString& name : awkwardNames()) {
        const QString to = home.file(name);
        ASSERT_TRUE(SafeFiles::renameNoReplace(from, to).ok) << name.left(30).toStdString();
        EXPECT_FALSE(QFileInfo::exists(from));
        EXPECT_EQ(TempHome::readFile(to), "AAAA");
        from = to;
    }
}

TEST(SafeFiles, TransferTakesAFreeNameAndKeepsBothFiles) {
    TempHome home;
    const QString dest = home.file(QStringLiteral("dest"));
    QDir().mkpath(dest);
    TempHome::writeFile(dest + QStringLiteral("/song.mp3"), "old");
    TempHome::writeFile(dest + QStringLiteral("/song (2).mp3"), "older");
    const QString src = home.file(QStringLiteral("src/song.mp3"));
    TempHome::writeFile(src, "new");

    const SafeFiles::Outcome copied = SafeFiles::transferToFolder(src, dest, true);
    ASSERT_TRUE(copied.ok);
    EXPECT_EQ(copied.target, dest + QStringLiteral("/song (3).mp3"));
    EXPECT_EQ(TempHome::readFile(copied.target), "new");
    EXPECT_EQ(TempHome::readFile(src), "new");

    const SafeFiles::Outcome moved = SafeFiles::transferToFolder(src, dest, false);
    ASSERT_TRUE(moved.ok);
    EXPECT_EQ(moved.target, dest + QStringLiteral("/song (4).mp3"));
    EXPECT_FALSE(QFileInfo::exists(src));
    EXPECT_EQ(TempHome::readFile(dest + QStringLiteral("/song.mp3")), "old");
    EXPECT_EQ(TempHome::readFile(dest + QStringLiteral("/song (2).mp3")), "older");

    // Moving into its own folder leaves it where it is; copying there makes a second one.
    EXPECT_TRUE(SafeFiles::transferToFolder(moved.target, dest, false).ok);
    EXPECT_TRUE(QFileInfo::exists(moved.target));
    EXPECT_EQ(QDir(dest).entryList(QDir::Files).size(), 4);
    EXPECT_FALSE(
        SafeFiles::transferToFolder(home.file(QStringLiteral("none.mp3")), dest, false).ok);
}

TEST(SafeFiles, MoveAcrossFileSystemsCopiesChecksAndRemoves) {
    QTemporaryDir other(QStringLiteral("/dev/shm/veldor-test-XXXXXX"));
    if (!other.isValid()) GTEST_SKIP() << "no second file system";
    TempHome home;
    struct stat a {
    }, b{};
    ::stat(QFile::encodeName(home.path()).constData(), &a);
    ::stat(QFile::encodeName(other.path()).constData(), &b);
    if (a.st_dev == b.st_dev) GTEST_SKIP() << "same file system";
    QByteArray bytes(300000, '\0');
    for (int i = 0; i < bytes.size(); ++i)
        bytes[i] = char(i * 7);
    for (const QString& name : awkwardNames()) {
        const QString src = home.file(name);
        TempHome::writeFile(src, bytes);
        ::chmod(QFile::encodeName(src).constData(), 0640);
        const SafeFiles::Outcome r = SafeFiles::transferToFolder(src, other.path(), false);
        ASSERT_TRUE(r.ok) << name.left(30).toStdString() << " " << r.error;
        EXPECT_EQ(r.target, other.path() + QLatin1Char('/') + name);
        EXPECT_EQ(TempHome::readFile(r.target), bytes);
        EXPECT_FALSE(QFileInfo::exists(src));
        struct stat st {};
        ::stat(QFile::encodeName(r.target).constData(), &st);
        EXPECT_EQ(st.st_mode & 0777, 0640u);
    }
    // No temporary copy is left behind.
    EXPECT_EQ(QDir(other.path()).entryList(QDir::Files | QDir::Hidden).size(),
              awkwardNames().size());
}

TEST(SafeFiles, AFailedCopyLeavesTheSourceAndNoTemporary) {
    TempHome home;
    const QString src = home.file(QStringLiteral("song.mp3"));
    TempHome::writeFile(src, "data");
    const QString locked = home.file(QStringLiteral("locked"));
    QDir().mkpath(locked);
    ::chmod(QFile::encodeName(locked).constData(), 0500);
    if (::access(QFile::encodeName(locked).constData(), W_OK) == 0)
        GTEST_SKIP() << "running as root";
    EXPECT_FALSE(SafeFiles::transferToFolder(src, locked, true).ok);
    EXPECT_FALSE(SafeFiles::transferToFolder(src, locked, false).ok);
    EXPECT_EQ(TempHome::readFile(src), "data");
    EXPECT_TRUE(QDir(locked).entryList(QDir::Files | QDir::Hidden).isEmpty());
    ::chmod(QFile::encodeName(locked).constData(), 0700);
}
