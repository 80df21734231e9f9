#pragma once
#include <QObject>

// The value of a slider apart from its widget, so that the rules can read and move it without a
// window. `setValue` is a move by the program; `scroll` is a move by the user and is what the
// rules act on (seek, volume).
class SliderModel : public QObject {
    Q_OBJECT
public:
    explicit SliderModel(int minimum, int maximum, int value, QObject* parent = nullptr);

    int value() const { return m_value; }
    int minimum() const { return m_min; }
    int maximum() const { return m_max; }
    bool enabled() const { return m_enabled; }

    void setValue(int value);
    void setMaximum(int maximum);
    void setEnabled(bool on);
    // The user moved the slider to `value` (or let go of it there).
    void scroll(int value);

Q_SIGNALS:
    void changed();
    void scrolled(int value);

private:
    int m_min, m_max, m_value;
    bool m_enabled = true;
};
