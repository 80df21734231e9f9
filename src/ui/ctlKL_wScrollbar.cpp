#include "ui/ctlKL_wScrollbar.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <cmath>

ctlKL_wScrollbar::ctlKL_wScrollbar(QWidget* parent) : ctlKL_Control(parent) {
    setAccessibleName(QStringLiteral("Slider"));
}

int ctlKL_wScrollbar::barWidth() const {
    if (!m_bar.isNull()) return qRound(m_bar.width() / m_bar.devicePixelRatio());
    return qBound(6, height() * 2 / 3, 12);
}

void ctlKL_wScrollbar::BarFromValue() {
    const int room = width() - barWidth();
    const qint64 range = qint64(MaxValue) - MinValue;
    // An empty range has no place for the handle but the start.
    if (range == 0 || room <= 0) {
        BarPosition = 0;
        return;
    }
    BarPosition =
        int(std::lround(double(room) * double(qint64(CurrentValue) - MinValue) / double(range)));
}

void ctlKL_wScrollbar::ValueFromBar() {
    const int room = width() - barWidth();
    if (room <= 0) {
        CurrentValue = MinValue;
        return;
    }
    const double v = double(qint64(MaxValue) - MinValue) * BarPosition / room + MinValue;
    CurrentValue = int(std::lround(qBound(-2147483648.0, v, 2147483647.0)));
}

void ctlKL_wScrollbar::Redraw(bool recalculate) {
    if (recalculate) BarFromValue();
    update();
}

int ctlKL_wScrollbar::ToPixels(int twips) const {
    const double dpi = screen() ? screen()->logicalDotsPerInchX() : 96.0;
    return int(double(twips) * dpi / 1440.0);
}

void ctlKL_wScrollbar::setValue(int v) {
    if (v < MinValue || v > MaxValue) return;
    const bool changed = v != CurrentValue;
    CurrentValue = v;
    Redraw(true);
    if (changed) Q_EMIT PropertyChanged(QStringLiteral("Value"));
}

void ctlKL_wScrollbar::scrollTo(int v) {
    if (!Enabled() || v < MinValue || v > MaxValue) return;
    setValue(v);
    Q_EMIT Change();
}

void ctlKL_wScrollbar::setMin(int v) {
    if (MinValue > CurrentValue) return; // looks at the old minimum, not the new one
    MinValue = v;
    Redraw(true);
    Q_EMIT PropertyChanged(QStringLiteral("Min"));
}

void ctlKL_wScrollbar::setMax(int v) {
    if (v < CurrentValue) return;
    MaxValue = v;
    Redraw(true);
    Q_EMIT PropertyChanged(QStringLiteral("Max"));
}

void ctlKL_wScrollbar::setBarVisible(bool on) {
    if (m_barVisible == on) return;
    m_barVisible = on;
    update();
}

void ctlKL_wScrollbar::setBar(const QPixmap& picture) {
    m_bar = picture;
    Redraw(true);
    Q_EMIT PropertyChanged(QStringLiteral("Bar"));
}

void ctlKL_wScrollbar::setPicture(const QPixmap& picture) {
    m_track = picture;
    Redraw(true);
    Q_EMIT PropertyChanged(QStringLiteral("Picture"));
}

QVariantMap ctlKL_wScrollbar::WriteProperties() const {
    QVariantMap bag = ctlKL_Control::WriteProperties();
    bag.insert(QStringLiteral("BackColor"), m_back);
    bag.insert(QStringLiteral("Min"), MinValue);
    bag.insert(QStringLiteral("Max"), MaxValue);
    bag.insert(QStringLiteral("Value"), CurrentValue);
    return bag;
}

void ctlKL_wScrollbar::ReadProperties(const QVariantMap& bag) {
    ctlKL_Control::ReadProperties(bag);
    setBackColor(colourFrom(bag, "BackColor", m_back));
    // Widen first and narrow last, so the value stays inside whatever the order in the bag.
    const int min = bag.value(QStringLiteral("Min"), MinValue).toInt();
    const int max = bag.value(QStringLiteral("Max"), MaxValue).toInt();
    if (max > MaxValue) setMax(max);
    if (min < MinValue) setMin(min);
    setValue(bag.value(QStringLiteral("Value"), CurrentValue).toInt());
    setMax(max);
    setMin(min);
}

void ctlKL_wScrollbar::resizeEvent(QResizeEvent*) {
    Redraw(true);
}

void ctlKL_wScrollbar::paintEvent(QPaintEvent*) {
    QPainter p(this);
    if (m_track.isNull())
        p.fillRect(rect(), colour(m_back));
    else
        p.drawPixmap(rect(), m_track);
    if (!m_barVisible) return;
    const int b = barWidth();
    // Whatever the range, the handle stays on the track.
    const int x = qBound(0, BarPosition, qMax(0, width() - b));
    const QRect handle(x, 0, b, height());
    if (!m_bar.isNull()) {
        p.drawPixmap(handle, m_bar);
        return;
    }
    const QColor face = colour(m_back);
    p.fillRect(handle, face.lightness() > 128 ? face.darker(115) : face.lighter(160));
    ctlKL_PaintEdges(p, handle, palette().color(QPalette::Shadow), palette().color(QPalette::Light),
                     palette().color(QPalette::Dark));
}

void ctlKL_wScrollbar::mousePressEvent(QMouseEvent* e) {
    if (!Enabled()) return;
    const int x = e->position().toPoint().x();
    if (e->button() == Qt::LeftButton && e->buttons() == Qt::LeftButton && x >= BarPosition &&
        x <= BarPosition + barWidth())
        Dragging = true;
    Q_EMIT MouseDown(e->button(), e->modifiers(), x, e->position().toPoint().y());
}

void ctlKL_wScrollbar::mouseMoveEvent(QMouseEvent* e) {
    if (!Enabled()) return;
    const QPoint at = e->position().toPoint();
    if (Dragging) {
        MousePosition = at.x();
        const int w = width(), b = barWidth();
        if (MousePosition >= w - b / 2)
            BarPosition = w - b;
        else if (MousePosition <= b / 2)
            BarPosition = 0;
        else
            BarPosition = MousePosition - b / 2;
        const int old = CurrentValue;
        ValueFromBar();
        const int v = CurrentValue;
        CurrentValue = old;
        setValue(v); // the store keeps the range and puts the handle where the value says
        Q_EMIT Change();
    }
    Q_EMIT MouseMove(e->buttons(), e->modifiers(), at.x(), at.y());
}

void ctlKL_wScrollbar::mouseReleaseEvent(QMouseEvent* e) {
    if (!Enabled()) return;
    Dragging = false;
    const QPoint at = e->position().toPoint();
    Q_EMIT MouseUp(e->button(), e->modifiers(), at.x(), at.y());
}
