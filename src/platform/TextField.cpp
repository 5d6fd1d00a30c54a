#include "platform/TextField.h"

#include <utility>

namespace larkspool {

void TextField::SetText(std::string value) {
    if (text == value) {
        return;
    }
    text = std::move(value);
    Notify(Aspect::Value);
    if (textChange) {
        textChange();
    }
}

void TextField::PressReturn() const {
    if (Enabled() && returnPressed) {
        returnPressed();
    }
}

void TextField::Step(double steps) const {
    if (Enabled() && keySteps) {
        keySteps(steps);
    }
}

} // namespace larkspool
