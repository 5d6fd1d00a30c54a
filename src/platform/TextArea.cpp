#include "platform/TextArea.h"

#include <utility>

namespace larkspool {

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

} // namespace larkspool
