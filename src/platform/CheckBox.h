#pragma once

#include "platform/Control.h"

#include <string>

namespace larkspool {

// A box to tick, with its caption.
class CheckBox : public Control {
  public:
    bool Value() const { return value; }
    // A different value raises action before the setter returns, whoever sets it.
    void SetValue(bool ticked);

    std::string caption;
    std::function<void()> action;

  private:
    bool value = false;
};

} // namespace larkspool
