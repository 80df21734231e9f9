#include "ui/ctlKL_Digital.h"

#include <QMouseEvent>
#include <QPainter>

namespace {
constexpr int kAll = 127;
constexpr ctlKL_Digital::Segment kSegments[] = {
    ctlKL_Digital::shpTop,        ctlKL_Digital::shpMiddle,  ctlKL_Digital::shpBottom,
    ctlKL_Digital::shpRightTop,   ctlKL_Digital::shpLeftTop, ctlKL_Digital::shpLeftBottom,
    ctlKL_Digital::shpRightBottom};

// A character's worth as a digit; anything that is not one counts as 0.
int digitValue(QChar c) {
    return c.isDigit() ? c.digitValue() : 0;
}
} // namespace

ctlKL_Digital::ctlKL_Digital(QWidget* parent) : ctlKL_Control(parent) {
    setAccessibleName(QStringLiteral("Time"));
    ShowTime(m_value);
}

int ctlKL_Digital::litSegments(int digit) {
    using S = ctlKL_Digital;
    switch (digit) {
    case 0:
        return kAll & ~S::shpMiddle;
    case 1:
        return S::shpRightTop | S::shpRightBottom;
    case 2:
        return S::shpTop | S::shpRightTop | S::shpMiddle | S::shpLeftBottom | S::shpBottom;
    case 3:
        return S::shpTop | S::shpRightTop | S::shpMiddle | S::shpRightBottom | S::shpBottom;
    case 4:
        return S::shpLeftTop | S::shpRightTop | S::shpMiddle | S::shpRightBottom;
    case 5:
        return S::shpTop | S::shpLeftTop | S::shpMiddle | S::shpRightBottom | S::shpBottom;
    case 6:
        return kAll & ~S::shpRightTop;
    case 7:
        return S::shpTop | S::shpRightTop | S::shpRightBottom;
    case 8:
        return kAll;
    case 9:
        return kAll & ~S::shpLeftBottom;
    case 10:
        return 0;
    default:
        return -1;
    }
}

QString ctlKL_Digital::FormatTime(int seconds) {
    const int m = seconds / 60, s = seconds % 60;
    return QStringLiteral("%1:%2").arg(m, 2, 10, QLatin1Char('0')).arg(s, 2, 10, QLatin1Char('0'));
}

void ctlKL_Digital::ShowDigit(int digit, int position) {
    if (litSegments(digit) < 0 || position < 0 || position > 3) return;
    if (m_digits[size_t(position)] == digit) return;
    m_digits[size_t(position)] = digit;
    update(digitRect(position));
}

void ctlKL_Digital::ShowTime(int seconds) {
    // A negative time has no reading on four digits: it shows as zero.
    const QString t = FormatTime(qMax(0, seconds));
    if (t != QLatin1String("00:00")) {
        // Past 99:59 only the first places are read, as the text runs longer than four.
        const int places[] = {0, 1, 3, 4};
        for (int i = 0; i < 4; ++i)
            ShowDigit(digitValue(t.at(places[i])), i);
    } else {
        for (int i = 0; i < 4; ++i)
            ShowDigit(Enabled() ? 0 : Blank, i);
    }
}

void ctlKL_Digital::setValue(int seconds) {
    m_value = qint16(qBound(-32768, seconds, 32767));
    ShowTime(m_value);
}

void ctlKL_Digital::setEnabledProperty(bool on) {
    ctlKL_Control::setEnabledProperty(on);
    ShowTime(m_value);
}

void ctlKL_Digital::setColourLight(qint64 c) {
    setColour(m_light, c, "ColourLight");
}

void ctlKL_Digital::setColourDark(qint64 c) {
    setColour(m_dark, c, "ColourDark");
}

QRect ctlKL_Digital::digitRect(int position) const {
    // Four digit cells and a narrow colon cell between the second and the third: margins 1,
    // digits 4, gaps 1, colon 2 with a gap on each side: 24 units across.
    const int unit = qMax(1, width() / 24);
    const int h = height() - 2 * unit;
    // What the whole units leave over is shared out on both sides, so the readout sits centred.
    int x = unit + qMax(0, width() - 24 * unit) / 2;
    for (int i = 0; i < position; ++i)
        x += 4 * unit + unit + (i == 1 ? 2 * unit + unit : 0);
    return QRect(x, unit, 4 * unit, qMax(1, h));
}

QRect ctlKL_Digital::colonRect() const {
    const QRect d = digitRect(1);
    const int unit = qMax(1, width() / 24);
    return QRect(d.right() + 1 + unit, d.top(), 2 * unit, d.height());
}

QRect ctlKL_Digital::segmentRect(int position, Segment segment) const {
    const QRect d = digitRect(position);
    const int t = qMax(1, d.width() / 4);
    const int half = d.height() / 2;
    switch (segment) {
    case shpTop:
        return QRect(d.left() + t, d.top(), d.width() - 2 * t, t);
    case shpMiddle:
        return QRect(d.left() + t, d.top() + half - t / 2, d.width() - 2 * t, t);
    case shpBottom:
        return QRect(d.left() + t, d.bottom() - t + 1, d.width() - 2 * t, t);
    case shpLeftTop:
        return QRect(d.left(), d.top() + t, t, half - t - t / 2);
    case shpRightTop:
        return QRect(d.right() - t + 1, d.top() + t, t, half - t - t / 2);
    case shpLeftBottom:
        return QRect(d.left(), d.top() + half + t - t / 2, t, d.height() - half - 2 * t + t / 2);
    case shpRightBottom:
        return QRect(d.right() - t + 1, d.top() + half + t - t / 2, t,
                     d.height() - half - 2 * t + t / 2);
    }
    return {};
}

void ctlKL_Digital::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), colour(m_back));
    const QColor light = colour(m_light), dark = colour(m_dark);
    for (int pos = 0; pos < 4; ++pos) {
        const int lit = litSegments(m_digits[size_t(pos)]);
        for (Segment s : kSegments)
            p.fillRect(segmentRect(pos, s), (lit & s) ? light : dark);
    }
    // The colon's dots always take the light colour.
    const QRect c = colonRect();
    const int dot = qMax(1, c.width() / 2);
    p.fillRect(QRect(c.center().x() - dot / 2, c.top() + c.height() / 3 - dot / 2, dot, dot),
               light);
    p.fillRect(QRect(c.center().x() - dot / 2, c.top() + 2 * c.height() / 3 - dot / 2, dot, dot),
               light);
}

QVariantMap ctlKL_Digital::WriteProperties() const {
    QVariantMap bag = ctlKL_Control::WriteProperties();
    bag.insert(QStringLiteral("ColourLight"), m_light);
    bag.insert(QStringLiteral("ColourDark"), m_dark);
    bag.insert(QStringLiteral("BackColor"), m_back);
    bag.insert(QStringLiteral("Value"), int(m_value));
    return bag;
}

void ctlKL_Digital::ReadProperties(const QVariantMap& bag) {
    ctlKL_Control::ReadProperties(bag);
    setColourLight(colourFrom(bag, "ColourLight", m_light));
    setColourDark(colourFrom(bag, "ColourDark", m_dark));
    setBackColor(colourFrom(bag, "BackColor", m_back));
    setValue(bag.value(QStringLiteral("Value"), int(m_value)).toInt());
}

void ctlKL_Digital::mousePressEvent(QMouseEvent* e) {
    const QPoint at = e->position().toPoint();
    Q_EMIT MouseDown(e->button(), e->modifiers(), at.x(), at.y());
}

void ctlKL_Digital::mouseMoveEvent(QMouseEvent* e) {
    const QPoint at = e->position().toPoint();
    Q_EMIT MouseMove(e->buttons(), e->modifiers(), at.x(), at.y());
}

void ctlKL_Digital::mouseReleaseEvent(QMouseEvent* e) {
    const QPoint at = e->position().toPoint();
    Q_EMIT MouseUp(e->button(), e->modifiers(), at.x(), at.y());
}
