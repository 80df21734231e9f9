#pragma once
#include <QString>

class QWidget;

// Window places in settings, in twips, under "Position_{name}".
namespace modWindows {

int twipsToPixels(int twips, const QWidget* widget = nullptr);
int pixelsToTwips(int pixels, const QWidget* widget = nullptr);

void window_SavePosition(QWidget* window, const QString& name, int margin);
void window_RestorePosition(QWidget* window, const QString& name, int margin);
void window_SetAlwaysOnTop(QWidget* window, bool onTop);

} // namespace modWindows
