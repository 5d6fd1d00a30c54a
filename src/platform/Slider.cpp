#include "platform/Slider.h"

#include <algorithm>

namespace larkspool {

void Slider::SetRange(int low, int high) {
    minimum = low;
    maximum = std::max(low, high);
    value = std::clamp(value, minimum, maximum);
}

void Slider::SetValue(int wanted) {
    const int clamped = std::clamp(wanted, minimum, maximum);
    if (value == clamped) {
        return;
    }
    value = clamped;
    Notify(Aspect::Value);
    if (valueChanged) {
        valueChanged();
    }
}

} // namespace larkspool
