#include "platform/PushButton.h"

#include <utility>

namespace larkspool {

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

} // namespace larkspool
