#include "ui/SliderBinding.h"

#include "core/SliderModel.h"

#include <QAbstractSlider>
#include <QSignalBlocker>

void ui_BindSlider(QAbstractSlider* slider, SliderModel& model, bool scrollOnRelease) {
    const auto show = [slider, &model] {
        const QSignalBlocker block(slider);
        slider->setRange(model.minimum(), model.maximum());
        // A timer's refresh must not pull the knob out of the user's hand.
        if (!slider->isSliderDown()) slider->setValue(model.value());
        slider->setEnabled(model.enabled());
    };
    show();
    QObject::connect(&model, &SliderModel::changed, slider, show);
    // actionTriggered comes before the value moves; read the value once it has.
    QObject::connect(slider, &QAbstractSlider::valueChanged, slider,
                     [slider, &model, scrollOnRelease](int value) {
                         if (scrollOnRelease && slider->isSliderDown()) return;
                         model.scroll(value);
                     });
    if (scrollOnRelease)
        QObject::connect(slider, &QAbstractSlider::sliderReleased, slider,
                         [slider, &model] { model.scroll(slider->value()); });
}
