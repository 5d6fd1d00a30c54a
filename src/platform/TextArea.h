#pragma once

#include "platform/Control.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace larkspool {

// Lines of text to read. Keeps the newest maximumLength bytes.
class TextArea : public Control {
  public:
    const std::string& Text() const { return text; }
    void SetText(std::string value);
    void AppendText(std::string_view more);

    std::size_t maximumLength = std::size_t{64} * 1024;

  private:
    void Trim();

    std::string text;
};

} // namespace larkspool
