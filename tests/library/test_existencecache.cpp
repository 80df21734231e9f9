#include "library/ExistenceCache.h"

#include "support/TempHome.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>
#include <unistd.h>

// What is remembered must follow every way a file can come and go.
TEST(ExistenceCache, ForgetsWhatItsFoldersReport) {
    TempHome home;
    ExistenceCache cache;
    const QString a = home.file("music/a.mp3"), b = home.file("music/b.mp3");
    const QString later = home.file("music/later.mp3"), link = home.file("music/link.mp3");
    TempHome::writeFile(a, "x");
    TempHome::writeFile(b, "x");
    ASSERT_EQ(::symlink(qPrintable(b), qPrintable(link)), 0);
    EXPECT_TRUE(cache.exists(a));
    EXPECT_TRUE(cache.exists(b));
    EXPECT_FALSE(cache.exists(later));
    EXPECT_TRUE(cache.exists(link));
    EXPECT_FALSE(cache.exists(a + QChar(0) + "x"));

    QFile::remove(a);
    TempHome::writeFile(later, "x");
    QFile::remove(b); // the link now leads nowhere, which its own folder does not tell
    cache.refresh();
    EXPECT_FALSE(cache.exists(a));
    EXPECT_TRUE(cache.exists(later));
    EXPECT_FALSE(cache.exists(link));
    // Another spelling of the same folder shares its watch and its news.
    const QString other = home.file("music/./later.mp3");
    EXPECT_TRUE(cache.exists(other));
    QFile::remove(later);
    cache.refresh();
    EXPECT_FALSE(cache.exists(other));
    EXPECT_FALSE(cache.exists(later));

    // A folder moved away takes its files with it, and one made again is watched anew.
    TempHome::writeFile(a, "x");
    cache.refresh();
    EXPECT_TRUE(cache.exists(a));
    ASSERT_TRUE(QDir().rename(home.file("music"), home.file("moved")));
    cache.refresh();
    EXPECT_FALSE(cache.exists(a));
    TempHome::writeFile(a, "x");
    cache.refresh();
    EXPECT_TRUE(cache.exists(a));
    cache.clear();
    EXPECT_TRUE(cache.exists(a));
}

// A list's cell is asked as it is stored (Latin-1 or UTF-16): both spellings find the same answer,
// and the generation tells a caller that remembered answers may have changed.
TEST(ExistenceCache, CellsOfAnyEncodingShareAnswers) {
    TempHome home;
    ExistenceCache cache;
    const QString latin = home.file("music/caf\u00e9.mp3"), wide = home.file("music/日本.mp3");
    TempHome::writeFile(latin, "x");
    TempHome::writeFile(wide, "x");
    const QByteArray latinBytes = latin.toLatin1();
    bool remembered = false;
    EXPECT_TRUE(cache.exists(QLatin1StringView(latinBytes), &remembered));
    EXPECT_TRUE(remembered);
    EXPECT_TRUE(cache.exists(latin));
    EXPECT_TRUE(cache.exists(QStringView(wide)));
    const quint64 before = cache.generation();
    cache.refresh();
    EXPECT_EQ(cache.generation(), before);
    QFile::remove(latin);
    cache.refresh();
    EXPECT_NE(cache.generation(), before);
    EXPECT_FALSE(cache.exists(QLatin1StringView(latinBytes)));
    EXPECT_FALSE(cache.exists(latin));
    EXPECT_TRUE(cache.exists(wide));
}
