#pragma once
#include <QWidget>

class QLabel;
class QPushButton;

// The small progress window of long adds: two lines of text and a Cancel button. It never
// blocks: it is shown modeless and the work goes on in the event loop.
class FrmMessage : public QWidget {
    Q_OBJECT
public:
    explicit FrmMessage(QWidget* parent = nullptr);

    void setLines(const QString& first, const QString& second);
    void setSecondLine(const QString& text);
    QString line(int index) const; // 1 or 2
    // Shows the window centred over `over` (or the screen when null).
    void showCentred(QWidget* over);

Q_SIGNALS:
    void cancelRequested();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QLabel* m_lines[2];
    QPushButton* m_cancel;
};
