#include "ui/ctlKL_Panels.h"

#include <QPainter>

ctlKL_noFocusPanel::ctlKL_noFocusPanel(QWidget* parent) : ctlKL_Control(parent) {
    setFocusPolicy(Qt::NoFocus);
}

QVariantMap ctlKL_noFocusPanel::WriteProperties() const {
    QVariantMap bag = ctlKL_Control::WriteProperties();
    bag.insert(QStringLiteral("PanelColour"), m_panel);
    return bag;
}

void ctlKL_noFocusPanel::ReadProperties(const QVariantMap& bag) {
    ctlKL_Control::ReadProperties(bag);
    setPanelColour(colourFrom(bag, "PanelColour", m_panel));
}

void ctlKL_noFocusPanel::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), colour(m_panel));
}

ctlKL_3DPanel::ctlKL_3DPanel(QWidget* parent) : ctlKL_Control(parent) {}

QVariantMap ctlKL_3DPanel::WriteProperties() const {
    QVariantMap bag = ctlKL_Control::WriteProperties();
    bag.insert(QStringLiteral("Background"), m_back);
    return bag;
}

void ctlKL_3DPanel::ReadProperties(const QVariantMap& bag) {
    ctlKL_Control::ReadProperties(bag);
    setBackground(colourFrom(bag, "Background", m_back));
}

void ctlKL_3DPanel::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), colour(m_back));
    const QRect r = rect().adjusted(0, 0, -1, -1);
    p.setPen(palette().color(QPalette::Light));
    p.drawLine(r.topLeft(), r.topRight());
    p.drawLine(r.topLeft(), r.bottomLeft());
    p.setPen(palette().color(QPalette::Dark));
    p.drawLine(r.bottomLeft(), r.bottomRight());
    p.drawLine(r.topRight(), r.bottomRight());
}
