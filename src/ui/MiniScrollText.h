#pragma once
#include <QWidget>

// The song's text inside its inset: moves left a step a tick when it is wider than the inset and
// comes in again from the right; a text that fits stays at the left edge.
class MiniScrollText : public QWidget {
    Q_OBJECT
public:
    explicit MiniScrollText(QWidget* parent = nullptr);
    QString text() const { return m_text; }
    void setText(const QString& text);
    void setColour(const QColor& colour);
    bool fits() const;
    int offset() const { return m_left; }
    // One tick of the scroll; `step` in pixels.
    void tick(int step);

protected:
    void paintEvent(QPaintEvent*) override;

private:
    QString m_text;
    int m_left = 0;
};
