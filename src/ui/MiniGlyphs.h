#pragma once
#include <QColor>
#include <QIcon>

// The faces of the Mini-Mode buttons, drawn by the program at 1x and 2x so they stay sharp on
// any screen. Index as the buttons: 0 Previous ... 11 back to full mode; 12 minimize, 13 close.
QIcon miniGlyph(int index, const QColor& colour);
