#pragma once
#include "ui/ctlKL_Control.h"

// A container that never takes the focus and only paints its colour.
class ctlKL_noFocusPanel : public ctlKL_Control {
    Q_OBJECT
public:
    explicit ctlKL_noFocusPanel(QWidget* parent = nullptr);
    qint64 PanelColour() const { return m_panel; }
    void setPanelColour(qint64 c) { setColour(m_panel, c, "PanelColour"); }
    QVariantMap WriteProperties() const override;
    void ReadProperties(const QVariantMap& bag) override;

protected:
    void paintEvent(QPaintEvent*) override;

private:
    qint64 m_panel = 0x8000000FLL;
};

// A raised panel: left and top edges light, right and bottom dark.
class ctlKL_3DPanel : public ctlKL_Control {
    Q_OBJECT
public:
    explicit ctlKL_3DPanel(QWidget* parent = nullptr);
    qint64 Background() const { return m_back; }
    void setBackground(qint64 c) { setColour(m_back, c, "Background"); }
    QVariantMap WriteProperties() const override;
    void ReadProperties(const QVariantMap& bag) override;

protected:
    void paintEvent(QPaintEvent*) override;

private:
    qint64 m_back = 0x8000000FLL;
};
