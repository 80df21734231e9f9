#include "ui/MiniModeColours.h"

#include "core/Colors.h"
#include "core/Settings.h"

namespace {
const char* const kKeys[] = {"BackColour",       "BorderColour",      "LightLinesColour",
                             "DarkLinesColour",  "SlidersBackColour", "IndentBackColour",
                             "IndentFontColour", "WindowFontColour",  "WindowFontBackColour"};
const QString kSection = QStringLiteral("MiniModeAppearance");
} // namespace

QString MiniModeColours::keyName(int key) {
    return key >= 0 && key < Count ? QString::fromLatin1(kKeys[key]) : QString();
}

MiniModeColours MiniModeColours::defaults() {
    // A dark face with a green readout, in COLORREF (0x00BBGGRR).
    return {
        {0x403830, 0x000000, 0x7A6E62, 0x1C1814, 0x2A241E, 0x000000, 0x00FF00, 0xFFFFFF, 0x403830}};
}

MiniModeColours MiniModeColours::read() {
    MiniModeColours c = defaults();
    for (int k = 0; k < Count; ++k) {
        const QString text = settings_Read(kSection, keyName(k));
        const qint64 v = Colors::parse(text, c.colour[size_t(k)]);
        // Plain colours and the system colours there are; anything else keeps the default.
        const bool system = v == Colors::SystemWindow || v == Colors::SystemWindowText ||
                            v == Colors::SystemButtonFace;
        if ((v >= 0 && v <= 0xFFFFFF) || system) c.colour[size_t(k)] = v;
    }
    return c;
}

void MiniModeColours::write() const {
    for (int k = 0; k < Count; ++k)
        settings_Write(kSection, keyName(k), QString::number(colour[size_t(k)]));
}
