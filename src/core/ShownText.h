#pragma once
#include <QString>

// What a label, a status panel, a message box or a window title shows of a text: the text up to
// its first NUL, as the controls of the original platform did. The data keep their NULs (an
// ID3v1 field's padding); only what reaches the screen is cut.
QString text_Shown(const QString& text);
// The same for each line of a text of many lines (the console's log).
QString text_ShownLines(const QString& text);
