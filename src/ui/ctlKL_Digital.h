#pragma once
#include "ui/ctlKL_Control.h"

#include <array>

// A four-digit seven-segment "MM:SS" readout. Unlit segments stay visible in the dark colour,
// as on a real display.
class ctlKL_Digital : public ctlKL_Control {
    Q_OBJECT
public:
    // Segment bits, in the order of the display's shape arrays.
    enum Segment {
        shpTop = 1,
        shpMiddle = 2,
        shpBottom = 4,
        shpRightTop = 8,
        shpLeftTop = 16,
        shpLeftBottom = 32,
        shpRightBottom = 64
    };
    static constexpr int Blank = 10;

    explicit ctlKL_Digital(QWidget* parent = nullptr);

    int value() const { return m_value; }
    // Seconds, kept in 16 bits.
    void setValue(int seconds);
    void setEnabledProperty(bool on);
    qint64 ColourLight() const { return m_light; }
    void setColourLight(qint64 c);
    qint64 ColourDark() const { return m_dark; }
    void setColourDark(qint64 c);
    qint64 BackColor() const { return m_back; }
    void setBackColor(qint64 c) { setColour(m_back, c, "BackColor"); }

    static QString FormatTime(int seconds);
    // The lit segments of a digit 0 to 10 (10 is blank); -1 for anything else.
    static int litSegments(int digit);
    void ShowTime(int seconds);
    void ShowDigit(int digit, int position);
    // What each position shows now (0 to 10).
    int shownDigit(int position) const { return m_digits[size_t(position & 3)]; }
    // Where a segment of a position lies, for painting and for tests.
    QRect segmentRect(int position, Segment segment) const;

    QVariantMap WriteProperties() const override;
    void ReadProperties(const QVariantMap& bag) override;
    QSize sizeHint() const override { return {72, 24}; }

Q_SIGNALS:
    void MouseDown(Qt::MouseButton button, Qt::KeyboardModifiers shift, int x, int y);
    void MouseMove(Qt::MouseButtons buttons, Qt::KeyboardModifiers shift, int x, int y);
    void MouseUp(Qt::MouseButton button, Qt::KeyboardModifiers shift, int x, int y);

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;

private:
    QRect digitRect(int position) const;
    QRect colonRect() const;
    qint16 m_value = 0;
    qint64 m_light = 65280;
    qint64 m_dark = 224515;
    qint64 m_back = 0;
    std::array<int, 4> m_digits{0, 0, 0, 0};
};
