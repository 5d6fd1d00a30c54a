#include "platform/Label.h"

#include <utility>

namespace larkspool {

void Label::SetText(std::string value) {
    if (text != value) {
        text = std::move(value);
        Notify(Aspect::Value);
    }
}

void Label::SetTextColor(Color value) {
    if (textColor != value) {
        textColor = value;
        Notify(Aspect::Color);
    }
}

} // namespace larkspool
