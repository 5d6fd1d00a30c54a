#pragma once

#include "platform/Control.h"

#include <string>

namespace larkspool {

// A box with a tick and a caption.
class CheckBox : public Control {
  public:
    bool Value() const { return value; }
    // A different value raises action before the setter returns, for every caller.
    void SetValue(bool ticked);

    std::string caption;
    std::function<void()> action;

  private:
    bool value = false;
};

} // namespace larkspool
