// The line files (moods, bookmarks, past locations): every reader sees the same lines and
// values, and a line appended is the last line read.
#include "FuzzFiles.h"
#include "core/modFiles.h"
#include "playlists/LineFiles.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString path = fuzz::scratch() + QStringLiteral("/mood.txt");
    fuzz::put(path, data, size);
    const QStringList lines = LineFiles::readLines(path);
    if (modFiles::file_CountLines(path) != lines.size()) fuzz::fail("line counts differ");
    for (int i = 0; i < lines.size(); ++i)
        if (modFiles::file_ReadLine(path, i + 1) != lines[i]) fuzz::fail("a line reads otherwise");
    for (const QString& v : LineFiles::readValues(path))
        if (!modFiles::file_ContainsEntry(path, v)) fuzz::fail("a value read is not found");
    const QString added = QStringLiteral("/music/Ñandú ") + QString::number(size);
    if (!LineFiles::append(path, added)) return 0;
    const QStringList after = LineFiles::readLines(path);
    if (after.isEmpty() || after.last() != added || after.mid(0, lines.size()) != lines)
        fuzz::fail("an appended line does not read back last");
    // A quote left open runs on over the lines behind it, as the list reader has it.
    const bool quoteOpen =
        QByteArrayView(reinterpret_cast<const char*>(data), qsizetype(size)).contains('"');
    if (!quoteOpen && !modFiles::file_ContainsEntry(path, added))
        fuzz::fail("an appended line is not found");
    return 0;
}
