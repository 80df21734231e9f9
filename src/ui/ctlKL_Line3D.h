#pragma once
#include <QWidget>

// A groove of two one-pixel lines, light and dark: ctlKL_wLine3D runs across, ctlKL_hLine3D
// down. The thickness is fixed; the length is the control's.
class ctlKL_Line3D : public QWidget {
    Q_OBJECT
public:
    ctlKL_Line3D(Qt::Orientation orientation, QWidget* parent);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent*) override;

private:
    Qt::Orientation m_orientation;
};

class ctlKL_wLine3D : public ctlKL_Line3D {
    Q_OBJECT
public:
    explicit ctlKL_wLine3D(QWidget* parent = nullptr) : ctlKL_Line3D(Qt::Horizontal, parent) {}
};

class ctlKL_hLine3D : public ctlKL_Line3D {
    Q_OBJECT
public:
    explicit ctlKL_hLine3D(QWidget* parent = nullptr) : ctlKL_Line3D(Qt::Vertical, parent) {}
};
