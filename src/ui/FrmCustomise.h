#pragma once
#include "ui/MiniModeColours.h"

#include <QDialog>
#include <QFont>
#include <array>
#include <optional>

class QFrame;
class QPushButton;

// The colour editor of the Mini-Mode window: nine colour pictures, each one chosen through the
// colour dialog; Save writes them and the window takes them at once.
class FrmCustomise : public QDialog {
    Q_OBJECT
public:
    explicit FrmCustomise(QWidget* parent = nullptr);

    const MiniModeColours& colours() const { return m_colours; }
    // The window's font as stored ("MiniModeSettings", "Font"); `fallback` when none or nonsense.
    static QFont storedFont(const QFont& fallback);
    int selected() const { return m_selected; }
    void select(int index);
    void cmdColour_Click();
    void cmdDefault_Click();
    void cmdSave_Click();
    void cmdFont_Click();

Q_SIGNALS:
    void saved();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showColours();
    MiniModeColours m_colours;
    std::array<QFrame*, MiniModeColours::Count> m_pictures{};
    // Chosen through "Change Font...", kept with the colours on Save.
    std::optional<QFont> m_font;
    int m_selected = 0;
};
