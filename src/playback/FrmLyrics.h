#pragma once
#include <QWidget>
#include <functional>

class QPlainTextEdit;

// "VELDOR Lyrics": the lyrics of the song being played. It shows without taking the focus, and
// the user cannot close it: it goes with the next song without lyrics or a stop.
class FrmLyrics : public QWidget {
    Q_OBJECT
public:
    explicit FrmLyrics(QWidget* parent = nullptr);

    QPlainTextEdit* txtLyrics() const { return m_text; }
    // True between lyrics_Open and lyrics_Close.
    bool opened = false;
    // Keys typed here go to the main window.
    std::function<void(QKeyEvent*)> keyTarget;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPlainTextEdit* m_text;
};
