#include "platform/qt/SliderView.h"

#include "platform/qt/MakeChild.h"

#include <QSignalBlocker>

namespace larkspool {

SliderView::SliderView(Slider& slider, Desktop& theDesktop, QWidget& content)
    : ViewOf(slider, theDesktop, MakeChild<SpokenSlider>(content)) {
    shape.setSingleStep(slider.lineStep);
    shape.setPageStep(slider.pageStep);
    shape.spoken = [this] { return Spoken(); };
    SliderView::Redraw(Aspect::Value);
    connect(&shape, &QSlider::valueChanged, this,
            [this](int value) { Raise([this, value] { Held()->SetValue(value); }); });
}

void SliderView::Redraw(Aspect aspect) {
    if (aspect == Aspect::Value) {
        const QSignalBlocker quiet(shape);
        shape.setRange(Held()->Minimum(), Held()->Maximum());
        shape.setValue(Held()->Value());
    }
}

QString SliderView::Spoken() const {
    const Slider* slider = Held();
    if (slider == nullptr || !slider->spokenValue) {
        return QString::number(shape.value());
    }
    return QString::fromStdString(slider->spokenValue(slider->Value()));
}

} // namespace larkspool
