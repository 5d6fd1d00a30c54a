// The controls whose methods are a few lines each.
#include "platform/CheckBox.h"
#include "platform/ProgressBar.h"
#include "platform/PushButton.h"
#include "platform/Slider.h"
#include "platform/TextArea.h"
#include "platform/TextField.h"

#include <algorithm>
#include <utility>

namespace larkspool {

void CheckBox::SetValue(bool ticked) {
    if (value == ticked) {
        return;
    }
    value = ticked;
    Notify(Aspect::Value);
    if (action) {
        action();
    }
}

void ProgressBar::SetValue(int amount) {
    if (value != amount) {
        value = amount;
        Notify(Aspect::Value);
    }
}

void PushButton::SetCaption(std::string value) {
    if (caption != value) {
        caption = std::move(value);
        Notify(Aspect::Value);
    }
}

void PushButton::Push() const {
    if (Enabled() && action) {
        action();
    }
}

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

void TextArea::SetText(std::string value) {
    text = std::move(value);
    Trim();
    Notify(Aspect::Value);
}

void TextArea::AppendText(std::string_view more) {
    text.append(more);
    Trim();
    Notify(Aspect::Value);
}

void TextArea::Trim() {
    if (text.size() > maximumLength) {
        text.erase(0, text.size() - maximumLength);
    }
}

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
