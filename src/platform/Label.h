#pragma once

#include "platform/Color.h"
#include "platform/Control.h"

#include <optional>
#include <string>

namespace larkspool {

// Text to read.
class Label : public Control {
  public:
    const std::string& Text() const { return text; }
    void SetText(std::string value);

    // Without a color of its own a label has the palette's.
    const std::optional<Color>& TextColor() const { return textColor; }
    void SetTextColor(Color value);

    std::string longest;      // the longest text that will ever show; the font is chosen to fit it
    bool mayBeCut = false;    // a longer one ends in an ellipsis, and is whole in the tooltip
    Control* buddy = nullptr; // the control that this label names, for screen readers

  private:
    std::string text;
    std::optional<Color> textColor;
};

} // namespace larkspool
