#pragma once
#include <QColor>
#include <QPalette>

// Colours are stored as the classic 32-bit COLORREF 0x00BBGGRR; the high bit marks a system
// colour (0x80000005 window background, 0x80000008 window text, 0x8000000F button face).
namespace Colors {
constexpr qint64 SystemWindow = 0x80000005LL;
constexpr qint64 SystemWindowText = 0x80000008LL;
constexpr qint64 SystemButtonFace = 0x8000000FLL;

QColor fromColorRef(qint64 value, const QPalette& palette = QPalette());
qint64 toColorRef(const QColor& color);
// A settings text ("192", "&H80000005", "-2147483643") as a COLORREF; def when not a number.
qint64 parse(const QString& text, qint64 def);
} // namespace Colors
