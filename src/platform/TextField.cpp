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

} // namespace larkspool
