#pragma once
#include <QObject>
#include <functional>

class MainContext;
class QWidget;

// The main window's own keys: single-letter shortcuts, or a jump to the next artist that begins
// with the letter, as the two Keys menu items choose.

// Classic Shift argument bits.
enum : int { vbShiftMask = 1, vbCtrlMask = 2, vbAltMask = 4 };

// True when the key was used. `closeWindow` does what the window's close box does.
bool Form_KeyDown(MainContext& ctx, int keyCode, int shift,
                  const std::function<void()>& closeWindow);
// Selects the next row after the selected one whose artist begins with `c` (case-blind),
// wrapping once round the list.
void window_FindArtist(MainContext& ctx, QChar c);

void mnuKeysUseAsShortcuts_Click(MainContext& ctx);
void mnuKeysUseAsArtistFindingKeys_Click(MainContext& ctx);

// Sees the main window's keys ahead of its controls.
class MainKeyFilter : public QObject {
public:
    MainKeyFilter(MainContext& ctx, QWidget* window);
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    MainContext& m_ctx;
    QWidget* m_window;
};
