#pragma once

class QWidget;

// The look of the dialogs' text boxes: the whole text selected on focus, background &HFAE6E6
// while focused and &HFFFFFF after.
void ui_HighlightOnFocus(QWidget* box);
