#pragma once
#include "ui/ctlKL_Control.h"

// A panel with a one-pixel border and a light and a dark edge inside it. The buttons of the
// family are panels that also press: while the left button is down the edges swap.
class ctlKL_wPanel : public ctlKL_Control {
    Q_OBJECT
public:
    explicit ctlKL_wPanel(QWidget* parent = nullptr);

    qint64 BorderColor() const { return m_border; }
    void setBorderColor(qint64 c) { setColour(m_border, c, "BorderColor"); }
    qint64 BackColor() const { return m_back; }
    void setBackColor(qint64 c) { setColour(m_back, c, "BackColor"); }
    qint64 LinesLightColor() const { return m_light; }
    void setLinesLightColor(qint64 c) { setColour(m_light, c, "LinesLightColor"); }
    qint64 LinesDarkColor() const { return m_dark; }
    void setLinesDarkColor(qint64 c) { setColour(m_dark, c, "LinesDarkColor"); }

    bool isPressed() const { return m_pressed; }
    bool isPressable() const { return m_pressable; }
    // A press and release from the keyboard or an assistive tool; nothing while disabled.
    void click();

    QVariantMap WriteProperties() const override;
    void ReadProperties(const QVariantMap& bag) override;

Q_SIGNALS:
    // Mouse events in pixels; raised only while Enabled.
    void MouseDown(Qt::MouseButton button, Qt::KeyboardModifiers shift, int x, int y);
    void MouseMove(Qt::MouseButtons buttons, Qt::KeyboardModifiers shift, int x, int y);
    void MouseUp(Qt::MouseButton button, Qt::KeyboardModifiers shift, int x, int y);
    void Click();

protected:
    void paintEvent(QPaintEvent*) override;
    // What lies inside the edges (caption, picture).
    virtual void paintContent(QPainter&, const QRect&) {}
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    // Plain panels do not press.
    bool m_pressable = false;

private:
    qint64 m_border = 0;
    qint64 m_back = 0xC0C0C0;
    qint64 m_light = 0xFFFFFF;
    qint64 m_dark = 0x808080;
    bool m_pressed = false;
};
