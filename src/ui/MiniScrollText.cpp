#include "ui/MiniScrollText.h"

#include <QEvent>
#include <QPainter>

MiniScrollText::MiniScrollText(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("lblPlaying"));
    setAccessibleName(QStringLiteral("Playing"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    // It paints its whole rectangle itself, so a scroll step repaints nothing behind it.
    setAttribute(Qt::WA_OpaquePaintEvent);
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
    Q_EMIT fitChanged();
}

void MiniScrollText::setColours(const QColor& text, const QColor& back) {
    QPalette p = palette();
    p.setColor(QPalette::WindowText, text);
    setPalette(p);
    m_back = back;
    update();
}

void MiniScrollText::resizeEvent(QResizeEvent*) {
    if (fits()) m_left = 0;
    Q_EMIT fitChanged();
}

void MiniScrollText::changeEvent(QEvent* e) {
    QWidget::changeEvent(e);
    if (e->type() == QEvent::FontChange) {
        m_left = 0;
        update();
        Q_EMIT fitChanged();
    }
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
    p.fillRect(rect(), m_back);
    p.setPen(palette().color(QPalette::WindowText));
    p.drawText(
        QRect(m_left, 0, qMax(width(), fontMetrics().horizontalAdvance(m_text) + 4), height()),
        Qt::AlignVCenter | Qt::AlignLeft, m_text);
}
