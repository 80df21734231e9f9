// The INI reader and writer: any bytes parse, and a key written reads back as written.
#include "FuzzFiles.h"
#include "core/IniFile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString path = fuzz::scratch() + QStringLiteral("/settings.ini");
    fuzz::put(path, data, size);
    IniFile ini(path);
    const QStringList keys = ini.keys(QStringLiteral("Settings"));
    for (const QString& k : keys)
        (void)ini.read(QStringLiteral("Settings"), k, QString());
    // A plain value set through the writer is what the reader gives back.
    const QByteArray out = IniFile::applyWrite(
        QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)), QStringLiteral("Fuzz"),
        QStringLiteral("Key"), QStringLiteral("value 1"));
    fuzz::put(path, reinterpret_cast<const uint8_t*>(out.constData()), size_t(out.size()));
    IniFile again(path);
    if (again.read(QStringLiteral("Fuzz"), QStringLiteral("Key"), QStringLiteral("none")) !=
        QStringLiteral("value 1"))
        fuzz::fail("a written key does not read back");
    return 0;
}
