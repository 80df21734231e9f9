#pragma once

#include <QColor>

class QWidget;

// The look of the dialogs' text boxes: the whole text selected on focus, background &HFAE6E6
// while focused and &HFFFFFF after.
void ui_HighlightOnFocus(QWidget* box);

// A light background gets the text colour the original platform had on it, window text black,
// whatever the desktop theme's text colour is; a dark one keeps `text`.
QColor ui_TextOn(const QColor& background, const QColor& text);
// Sets the widget's background (Base) and, on a light one, black text.
void ui_SetBackground(QWidget* widget, const QColor& background);
