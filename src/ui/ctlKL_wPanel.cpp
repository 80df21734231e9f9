#include "ui/ctlKL_wPanel.h"

#include <QMouseEvent>
#include <QPainter>

ctlKL_wPanel::ctlKL_wPanel(QWidget* parent) : ctlKL_Control(parent) {}

QVariantMap ctlKL_wPanel::WriteProperties() const {
    QVariantMap bag = ctlKL_Control::WriteProperties();
    bag.insert(QStringLiteral("BorderColor"), m_border);
    bag.insert(QStringLiteral("BackColor"), m_back);
    bag.insert(QStringLiteral("LinesLightColor"), m_light);
    bag.insert(QStringLiteral("LinesDarkColor"), m_dark);
    return bag;
}

void ctlKL_wPanel::ReadProperties(const QVariantMap& bag) {
    ctlKL_Control::ReadProperties(bag);
    setBorderColor(colourFrom(bag, "BorderColor", m_border));
    setBackColor(colourFrom(bag, "BackColor", m_back));
    setLinesLightColor(colourFrom(bag, "LinesLightColor", m_light));
    setLinesDarkColor(colourFrom(bag, "LinesDarkColor", m_dark));
}

void ctlKL_wPanel::click() {
    if (Enabled() && m_pressable) Q_EMIT Click();
}

void ctlKL_wPanel::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), colour(m_back));
    const QColor light = colour(m_light), dark = colour(m_dark);
    ctlKL_PaintEdges(p, rect(), colour(m_border), m_pressed ? dark : light,
                     m_pressed ? light : dark);
    paintContent(p, rect().adjusted(2, 2, -2, -2));
}

void ctlKL_wPanel::mousePressEvent(QMouseEvent* e) {
    if (!Enabled()) return;
    if (m_pressable && e->button() == Qt::LeftButton) {
        m_pressed = true;
        update();
    }
    const QPoint at = e->position().toPoint();
    Q_EMIT MouseDown(e->button(), e->modifiers(), at.x(), at.y());
}

void ctlKL_wPanel::mouseMoveEvent(QMouseEvent* e) {
    if (!Enabled()) return;
    const QPoint at = e->position().toPoint();
    Q_EMIT MouseMove(e->buttons(), e->modifiers(), at.x(), at.y());
}

void ctlKL_wPanel::mouseReleaseEvent(QMouseEvent* e) {
    if (!Enabled()) return;
    const bool wasPressed = m_pressed;
    if (m_pressed && e->button() == Qt::LeftButton) {
        m_pressed = false;
        update();
    }
    const QPoint at = e->position().toPoint();
    Q_EMIT MouseUp(e->button(), e->modifiers(), at.x(), at.y());
    // A click is a press and a release over the control, as a button's is.
    if (wasPressed && rect().contains(at)) Q_EMIT Click();
}
