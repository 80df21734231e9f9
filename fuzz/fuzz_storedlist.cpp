// The stored lists (play counts, volumes): any file loads, keeps what it can and, when it could
// not be read whole, stands aside unchanged; a list read whole saves and loads the same rows.
#include "FuzzFiles.h"
#include "core/ListModel.h"
#include "playlists/StoredList.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) return 0;
    const QString dir = fuzz::scratch();
    const QString path = dir + QStringLiteral("/tracking.ssb");
    QFile::remove(path);
    QFile::remove(path + QStringLiteral(".damaged"));
    const int columns = 1 + data[0] % 6;
    fuzz::put(path, data + 1, size - 1);
    QStringList headers;
    for (int c = 0; c < columns; ++c)
        headers << QString::number(c);
    ListModel list(headers);
    const bool ok = StoredList::load(list, path);
    if (!ok) {
        QFile aside(path + QStringLiteral(".damaged"));
        if (!aside.open(QIODevice::ReadOnly) ||
            aside.readAll() !=
                QByteArray(reinterpret_cast<const char*>(data + 1), qsizetype(size - 1)))
            fuzz::fail("a damaged list was not kept aside whole");
        return 0;
    }
    // What one line cannot carry, and a list whose every value looks like a hand-made row of
    // several ("a","b"), which is read as one.
    bool allSeveral = list.count() > 0;
    for (int r = 0; r < list.count(); ++r)
        for (const QString& v : list.rowTexts(r)) {
            if (v.contains(QLatin1Char('\r')) || v.contains(QLatin1Char('\n'))) return 0;
            allSeveral = allSeveral && v.contains(QStringLiteral("\",\""));
        }
    if (allSeveral) return 0;
    if (!StoredList::save(list, path)) return 0;
    ListModel back(headers);
    StoredList::load(back, path);
    if (back.count() != list.count()) fuzz::fail("a saved list reads back with other rows");
    for (int r = 0; r < list.count(); ++r)
        if (back.rowTexts(r) != list.rowTexts(r)) fuzz::fail("a saved row reads back changed");
    return 0;
}
