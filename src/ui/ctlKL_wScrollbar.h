#pragma once
#include "ui/ctlKL_Control.h"

#include <QPixmap>

// The family's horizontal slider. Setting the value from code moves the handle without a
// Change; only the user's drag raises Change. There is no paging: a press beside the handle
// moves nothing.
class ctlKL_wScrollbar : public ctlKL_Control {
    Q_OBJECT
public:
    explicit ctlKL_wScrollbar(QWidget* parent = nullptr);

    int value() const { return CurrentValue; }
    // Dropped in silence when outside Min..Max.
    void setValue(int v);
    // The user's move to a value (from an assistive tool): stored as setValue, then Change.
    void scrollTo(int v);
    int Min() const { return MinValue; }
    // Stored only when the old minimum is at most the current value.
    void setMin(int v);
    int Max() const { return MaxValue; }
    // Stored only when at least the current value.
    void setMax(int v);
    bool BarVisible() const { return m_barVisible; }
    void setBarVisible(bool on);
    qint64 BackColor() const { return m_back; }
    void setBackColor(qint64 c) { setColour(m_back, c, "BackColor"); }
    // Pictures of the handle and of the track; without them both are drawn plainly.
    void setBar(const QPixmap& picture);
    void setPicture(const QPixmap& picture);

    int barWidth() const;
    int barPosition() const { return BarPosition; }
    bool dragging() const { return Dragging; }
    void BarFromValue();
    void ValueFromBar();
    void Redraw(bool recalculate);
    // Twips to pixels across, at the screen's logical resolution.
    int ToPixels(int twips) const;

    QVariantMap WriteProperties() const override;
    void ReadProperties(const QVariantMap& bag) override;
    QSize sizeHint() const override { return {120, 14}; }

Q_SIGNALS:
    void Change();
    void MouseDown(Qt::MouseButton button, Qt::KeyboardModifiers shift, int x, int y);
    void MouseUp(Qt::MouseButton button, Qt::KeyboardModifiers shift, int x, int y);
    void MouseMove(Qt::MouseButtons buttons, Qt::KeyboardModifiers shift, int x, int y);

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;

private:
    int BarPosition = 0;
    bool Dragging = false;
    int MousePosition = 0;
    int MinValue = 0;
    int MaxValue = 100;
    int CurrentValue = 0;
    bool m_barVisible = true;
    qint64 m_back = 0x8000000FLL;
    QPixmap m_bar, m_track;
};
