#pragma once
#include <QWidget>
#include <functional>

class QLabel;
class QTimer;

// The song alert: a borderless strip at the bottom centre of the screen with "{artist} -
// {title}", shown without taking the focus. It goes by itself at the third tick of its timer,
// or at a click, which brings the main window back.
class FrmPlaying : public QWidget {
    Q_OBJECT
public:
    explicit FrmPlaying(QWidget* parent = nullptr);

    QLabel* lblText() const { return m_label; }
    QTimer* tmrTimer() const { return m_timer; }
    int ticks() const { return m_ticks; }
    // Sets the text, sizes the window to it and places it at the bottom centre of the screen.
    void setText(const QString& text);
    // What a click does after the alert has gone.
    std::function<void()> clicked;
    // One tick of the timer: at the third the alert unloads itself.
    void tmrTimer_Timer();
    // Hides at once and deletes later: a caller inside the alert's own events stays safe.
    void unload();

Q_SIGNALS:
    void unloaded();

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    QLabel* m_label;
    QTimer* m_timer;
    int m_ticks = 0;
};
