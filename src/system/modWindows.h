#pragma once
#include <QRect>
#include <QString>

class QWidget;

// Window places in settings, in twips, under "Position_{name}".
namespace modWindows {

int twipsToPixels(int twips, const QWidget* widget = nullptr);
int pixelsToTwips(int pixels, const QWidget* widget = nullptr);

void window_SavePosition(QWidget* window, const QString& name, int margin);
void window_RestorePosition(QWidget* window, const QString& name, int margin);
void window_SetAlwaysOnTop(QWidget* window, bool onTop);
// Moves (and if need be shrinks) the window, frame included, onto the free area of the screen
// that holds most of it.
void window_KeepOnScreen(QWidget* window);
// Centres the window on its screen's free area.
void window_Center(QWidget* window);
// `frame` moved and cut to lie inside `area`.
QRect clampToArea(QRect frame, const QRect& area);

} // namespace modWindows
