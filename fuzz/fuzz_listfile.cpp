// The list-file reader: any bytes decode without harm, and rows it read write and read again
// unchanged (where no value holds what the format cannot carry).
#include "core/ListModel.h"
#include "playlists/ListFiles.h"

#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) return 0;
    const int columns = data[0] % 9;
    const QByteArray bytes(reinterpret_cast<const char*>(data + 1), qsizetype(size - 1));
    std::vector<QStringList> rows;
    int badLine = 0;
    const bool ok = ListFiles::decode(bytes, columns, rows, &badLine);
    if (!ok && badLine < 1) __builtin_trap();
    if (columns == 0) return 0;
    for (const QStringList& row : rows) {
        if (row.size() != columns) __builtin_trap();
        for (const QString& v : row)
            if (v.contains(QLatin1Char('"')) || v.contains(QLatin1Char('\r')) ||
                v.contains(QLatin1Char('\n')))
                return 0;
    }
    QByteArray written;
    for (const QStringList& row : rows)
        written += ListFiles::encodeRow(row);
    std::vector<QStringList> back;
    if (!ListFiles::decode(written, columns, back) || back != rows) __builtin_trap();
    return 0;
}
