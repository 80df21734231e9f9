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
    void setColours(const QColor& text, const QColor& back);
    bool fits() const;
    int offset() const { return m_left; }
    // One tick of the scroll; `step` in pixels.
    void tick(int step);

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void changeEvent(QEvent* e) override;

Q_SIGNALS:
    // Whether the text fits may have changed: a new text, size or font.
    void fitChanged();

private:
    QString m_text;
    int m_left = 0;
    QColor m_back = Qt::black;
};
