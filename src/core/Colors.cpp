#include "core/Colors.h"

#include "core/Settings.h"

#include <cmath>

namespace Colors {

QColor fromColorRef(qint64 value, const QPalette& palette) {
    const quint32 v = quint32(value);
    if (v & 0x80000000u) {
        switch (v & 0xFF) {
        case 0x05:
            return palette.color(QPalette::Base);
        case 0x08:
            return palette.color(QPalette::Text);
        case 0x0F:
            return palette.color(QPalette::Button);
        case 0x12:
            return palette.color(QPalette::ButtonText);
        default:
            return palette.color(QPalette::Window);
        }
    }
    return QColor(int(v & 0xFF), int((v >> 8) & 0xFF), int((v >> 16) & 0xFF));
}

qint64 toColorRef(const QColor& c) {
    return qint64(c.red()) | (qint64(c.green()) << 8) | (qint64(c.blue()) << 16);
}

qint64 parse(const QString& text, qint64 def) {
    bool ok = false;
    const double d = settings_TextToNumber(text, &ok);
    // Anything a 32-bit colour cannot hold is nonsense, and takes the default.
    if (!ok || text.trimmed().isEmpty() || !std::isfinite(d) || d < -2147483648.0 ||
        d >= 4294967296.0)
        return def;
    return qint64(quint32(qint64(d)));
}

} // namespace Colors
