#pragma once

#include "platform/Control.h"

#include <string>

namespace larkspool {

// One line of text that the user can edit.
class TextField : public Control {
  public:
    const std::string& Text() const { return text; }
    // A different text raises textChange before the setter returns, whoever sets it.
    void SetText(std::string value);

    std::string placeholder; // shown greyed while the field is empty
    std::function<void()> textChange;

  private:
    std::string text;
};

} // namespace larkspool
