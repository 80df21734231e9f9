#include "ui/ctlKL_Control.h"

#include "core/Colors.h"
#include "ui/ctlKL_Accessible.h"

#include <QPainter>

ctlKL_Control::ctlKL_Control(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    ctlKL_InstallAccessibility();
}

void ctlKL_Control::setEnabledProperty(bool on) {
    if (m_enabled == on) return;
    m_enabled = on;
    update();
    Q_EMIT PropertyChanged(QStringLiteral("Enabled"));
}

QVariantMap ctlKL_Control::WriteProperties() const {
    return {{QStringLiteral("Enabled"), m_enabled}};
}

void ctlKL_Control::ReadProperties(const QVariantMap& bag) {
    setEnabledProperty(bag.value(QStringLiteral("Enabled"), m_enabled).toBool());
}

QColor ctlKL_Control::colour(qint64 colorRef) const {
    return Colors::fromColorRef(colorRef, palette());
}

bool ctlKL_Control::setColour(qint64& field, qint64 value, const char* key) {
    // Only the COLORREF's 32 bits mean anything; the rest of a wider number is dropped.
    value = qint64(quint32(value));
    if (field == value) return false;
    field = value;
    update();
    Q_EMIT PropertyChanged(QString::fromLatin1(key));
    return true;
}

qint64 ctlKL_Control::colourFrom(const QVariantMap& bag, const char* key, qint64 current) {
    const QVariant v = bag.value(QString::fromLatin1(key));
    if (!v.isValid()) return current;
    bool ok = false;
    const qint64 n = v.toLongLong(&ok);
    return ok ? n : Colors::parse(v.toString(), current);
}

void ctlKL_PaintEdges(QPainter& p, const QRect& r, const QColor& border, const QColor& topLeft,
                      const QColor& bottomRight) {
    if (r.width() < 2 || r.height() < 2) return;
    p.setPen(border);
    p.setBrush(Qt::NoBrush);
    p.drawRect(r.adjusted(0, 0, -1, -1));
    if (r.width() < 4 || r.height() < 4) return;
    const QRect in = r.adjusted(1, 1, -1, -1); // one pixel in from the border
    p.setPen(topLeft);
    p.drawLine(in.topLeft(), in.topRight());
    p.drawLine(in.topLeft(), in.bottomLeft());
    p.setPen(bottomRight);
    p.drawLine(in.bottomLeft(), in.bottomRight());
    p.drawLine(in.topRight(), in.bottomRight());
}
