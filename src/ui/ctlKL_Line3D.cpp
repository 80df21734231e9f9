#include "ui/ctlKL_Line3D.h"

#include <QPainter>

ctlKL_Line3D::ctlKL_Line3D(Qt::Orientation orientation, QWidget* parent)
    : QWidget(parent), m_orientation(orientation) {
    if (orientation == Qt::Horizontal)
        setFixedHeight(2);
    else
        setFixedWidth(2);
    setFocusPolicy(Qt::NoFocus);
}

QSize ctlKL_Line3D::sizeHint() const {
    return m_orientation == Qt::Horizontal ? QSize(40, 2) : QSize(2, 40);
}

void ctlKL_Line3D::paintEvent(QPaintEvent*) {
    QPainter p(this);
    const QColor dark = palette().color(QPalette::Dark);
    const QColor light = palette().color(QPalette::Light);
    if (m_orientation == Qt::Horizontal) {
        p.setPen(dark);
        p.drawLine(0, 0, width() - 1, 0);
        p.setPen(light);
        p.drawLine(0, 1, width() - 1, 1);
    } else {
        p.setPen(dark);
        p.drawLine(0, 0, 0, height() - 1);
        p.setPen(light);
        p.drawLine(1, 0, 1, height() - 1);
    }
}
