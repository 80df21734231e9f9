// Settings values read as numbers: no text may reach a conversion out of range.
#include "core/Colors.h"
#include "core/Settings.h"

#include <climits>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    bool ok = false;
    (void)settings_TextToNumber(text, &ok);
    (void)settings_TextIsOne(text);
    const int ranges[][2] = {{0, 999}, {INT_MIN, INT_MAX}, {-10000000, 10000000}, {0, 100}};
    for (const auto& r : ranges) {
        const int v = settings_TextToInt(text, r[0], r[1], r[0]);
        if (v < r[0] || v > r[1]) __builtin_trap();
    }
    const qint64 colour = Colors::parse(text, 7);
    if (colour != 7 && (colour < 0 || colour > 0xFFFFFFFFLL)) __builtin_trap();
    return 0;
}
