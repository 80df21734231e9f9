#pragma once

class QAbstractSlider;
class SliderModel;

// Keeps a slider widget and its model in step. A move by the user becomes `scroll` on the model:
// at once, or for a position slider only when the user lets go of the knob.
void ui_BindSlider(QAbstractSlider* slider, SliderModel& model, bool scrollOnRelease);
