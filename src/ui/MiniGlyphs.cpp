#include "ui/MiniGlyphs.h"

#include <QPainter>
#include <QPainterPath>

namespace {

constexpr int kSide = 16;

void triangle(QPainterPath& path, qreal x, qreal w, bool right) {
    const qreal top = 4, bottom = 12;
    if (right) {
        path.moveTo(x, top);
        path.lineTo(x + w, 8);
        path.lineTo(x, bottom);
    } else {
        path.moveTo(x + w, top);
        path.lineTo(x, 8);
        path.lineTo(x + w, bottom);
    }
    path.closeSubpath();
}

void draw(QPainter& p, int index, const QColor& c) {
    QPainterPath path;
    switch (index) {
    case 0: // previous
        path.addRect(3, 4, 1.5, 8);
        triangle(path, 4.5, 4.5, false);
        triangle(path, 9, 4.5, false);
        break;
    case 1:
        triangle(path, 3, 5, false), triangle(path, 8, 5, false);
        break; // rewind
    case 2:
        triangle(path, 5, 7, true);
        break; // play
    case 3:
        path.addRect(4.5, 4, 2.5, 8), path.addRect(9, 4, 2.5, 8);
        break; // pause
    case 4:
        path.addRect(4.5, 4.5, 7, 7);
        break; // stop
    case 5:
        triangle(path, 3, 5, true), triangle(path, 8, 5, true);
        break; // fast forward
    case 6:    // random: two crossing arrows
        p.setPen(QPen(c, 1.5));
        p.drawLine(QPointF(3, 5), QPointF(12, 11));
        p.drawLine(QPointF(3, 11), QPointF(12, 5));
        triangle(path, 11.5, 2.5, true);
        break;
    case 7: // next
        triangle(path, 2.5, 4.5, true);
        triangle(path, 7, 4.5, true);
        path.addRect(11.5, 4, 1.5, 8);
        break;
    case 8: // next (advanced): next with a dot
        triangle(path, 2.5, 4.5, true);
        triangle(path, 7, 4.5, true);
        path.addRect(11.5, 4, 1.5, 8);
        path.addEllipse(QPointF(8, 14), 1.2, 1.2);
        break;
    case 9: // media library: shelf of lines
        for (int i = 0; i < 4; ++i)
            path.addRect(3.5, 3.5 + i * 2.5, 9, 1.2);
        break;
    case 10: // cd
        p.setPen(QPen(c, 1.4));
        p.drawEllipse(QPointF(8, 8), 5, 5);
        p.drawEllipse(QPointF(8, 8), 1.2, 1.2);
        break;
    case 11: // full mode: a window
        p.setPen(QPen(c, 1.2));
        p.drawRect(QRectF(3.5, 4.5, 9, 7));
        path.addRect(3.5, 4.5, 9, 2);
        break;
    case 12:
        path.addRect(4, 10, 8, 2);
        break; // minimize
    case 13:   // close
        p.setPen(QPen(c, 1.8));
        p.drawLine(QPointF(4.5, 4.5), QPointF(11.5, 11.5));
        p.drawLine(QPointF(4.5, 11.5), QPointF(11.5, 4.5));
        break;
    default:
        break;
    }
    p.fillPath(path, c);
}

} // namespace

QIcon miniGlyph(int index, const QColor& colour) {
    QIcon icon;
    for (qreal dpr : {1.0, 2.0}) {
        QPixmap pix(int(kSide * dpr), int(kSide * dpr));
        pix.setDevicePixelRatio(dpr);
        pix.fill(Qt::transparent);
        QPainter p(&pix);
        p.setRenderHint(QPainter::Antialiasing);
        draw(p, index, colour);
        p.end();
        icon.addPixmap(pix);
    }
    return icon;
}
