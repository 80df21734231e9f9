#include "ui/MiniScrollText.h"

#include <QPainter>

MiniScrollText::MiniScrollText(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("lblPlaying"));
    setAccessibleName(QStringLiteral("Playing"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void MiniScrollText::setText(const QString& text) {
    // A label shows its text up to the first NUL.
    const qsizetype nul = text.indexOf(QChar(0));
    const QString shown = nul < 0 ? text : text.left(nul);
    if (shown == m_text) return;
    m_text = shown;
    m_left = 0;
    setAccessibleDescription(shown);
    update();
}

void MiniScrollText::setColour(const QColor& colour) {
    QPalette p = palette();
    p.setColor(QPalette::WindowText, colour);
    setPalette(p);
    update();
}

bool MiniScrollText::fits() const {
    return fontMetrics().horizontalAdvance(m_text) <= width();
}

void MiniScrollText::tick(int step) {
    if (fits()) {
        if (m_left != 0) {
            m_left = 0;
            update();
        }
        return;
    }
    const int textWidth = fontMetrics().horizontalAdvance(m_text);
    m_left -= step;
    if (m_left <= -textWidth - step) m_left = width();
    update(); // only this inset repaints
}

void MiniScrollText::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setPen(palette().color(QPalette::WindowText));
    p.drawText(
        QRect(m_left, 0, qMax(width(), fontMetrics().horizontalAdvance(m_text) + 4), height()),
        Qt::AlignVCenter | Qt::AlignLeft, m_text);
}
