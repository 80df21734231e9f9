// Every reader of the small line files must see the same lines and values, whatever bytes the
// file holds: what one reads, the others find.
#include "core/modFiles.h"
#include "playlists/LineFiles.h"
#include "support/TempHome.h"

#include <QFile>
#include <gtest/gtest.h>

namespace {

struct LineFilesTest : ::testing::Test {
    TempHome home;
    QString path = home.file("Moods/Happy.txt");

    // The readers agree on the file as it stands.
    void expectAgreement(const char* what) {
        SCOPED_TRACE(what);
        const QStringList lines = LineFiles::readLines(path);
        ASSERT_EQ(modFiles::file_CountLines(path), lines.size());
        for (int i = 0; i < lines.size(); ++i)
            EXPECT_EQ(modFiles::file_ReadLine(path, i + 1), lines[i]) << i;
        for (const QString& v : LineFiles::readValues(path))
            EXPECT_TRUE(modFiles::file_ContainsEntry(path, v)) << v.toStdString();
    }
};

} // namespace

TEST_F(LineFilesTest, ReadersAgreeOnAnyBytes) {
    const std::pair<const char*, QByteArray> cases[] = {
        {"bytes that are not UTF-8", QByteArray("a\xFF\xFF\xFF\xFF\r\n/m/b.mp3\r\n")},
        {"Latin-1 path", QByteArray("/m/Bj\xF6rk.mp3\r\n/m/x.mp3\r\n")},
        {"byte-order mark alone", QByteArray("\xEF\xBB\xBF")},
        {"byte-order mark then lines", QByteArray("\xEF\xBB\xBF/m/a.mp3\r\n/m/b.mp3")},
        {"byte-order mark inside", QByteArray("/m/a.mp3\r\n\xEF\xBB\xBF/m/b.mp3\r\n")},
        {"mixed line ends", QByteArray("a\rb\nc\r\n\r\nd")},
        {"cut inside a quote", QByteArray("\"/m/a.mp3\"\r\n\"/m/b")},
    };
    for (const auto& [what, bytes] : cases) {
        TempHome::writeFile(path, bytes);
        expectAgreement(what);
    }
    // A Latin-1 file finds a non-ASCII path the way its values read.
    TempHome::writeFile(path, "/m/Bj\xF6rk.mp3\r\n");
    EXPECT_TRUE(modFiles::file_ContainsEntry(path, QStringLiteral("/m/Björk.mp3")));
    EXPECT_EQ(modFiles::file_ReadLine(path, 1), QStringLiteral("/m/Björk.mp3"));
}

TEST_F(LineFilesTest, AnAppendedLineReadsBackAsWrittenInEveryEncoding) {
    const std::pair<const char*, QByteArray> starts[] = {
        {"missing", QByteArray()},          {"empty", QByteArray("")},
        {"mark alone", "\xEF\xBB\xBF"},     {"no end", "/m/a.mp3"},
        {"Latin-1", "/m/Bj\xF6rk.mp3\r\n"}, {"not UTF-8", "a\xFF\xFF\xFF\xFF"},
    };
    const QString added[] = {QStringLiteral("/m/Ñandú.mp3"), QStringLiteral("/m/日本.mp3")};
    for (const auto& [what, bytes] : starts) {
        for (const QString& line : added) {
            SCOPED_TRACE(std::string(what) + " + " + line.toStdString());
            QFile::remove(path);
            if (!bytes.isNull()) TempHome::writeFile(path, bytes);
            const QStringList before = LineFiles::readLines(path);
            ASSERT_TRUE(LineFiles::append(path, line));
            const QStringList after = LineFiles::readLines(path);
            // Nothing read before is lost or changed, and the new line is last.
            ASSERT_FALSE(after.isEmpty());
            EXPECT_EQ(after.last(), line);
            EXPECT_EQ(after.mid(0, before.size()), before);
            EXPECT_TRUE(modFiles::file_ContainsEntry(path, line));
            expectAgreement(what);
        }
    }
}
