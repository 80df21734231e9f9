#include "core/ShownText.h"

#include <QStringList>

QString text_Shown(const QString& text) {
    const qsizetype nul = text.indexOf(QChar(0));
    return nul < 0 ? text : text.left(nul);
}

QString text_ShownLines(const QString& text) {
    if (!text.contains(QChar(0))) return text;
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString& line : lines)
        line = text_Shown(line);
    return lines.join(QLatin1Char('\n'));
}
