#pragma once

#include "platform/Control.h"

#include <string>

namespace larkspool {

// A button that does something at once.
class PushButton : public Control {
  public:
    const std::string& Caption() const { return caption; }
    void SetCaption(std::string value);

    // Does what a click would: on a disabled button nothing.
    void Push() const;

    std::function<void()> action;

  private:
    std::string caption;
};

} // namespace larkspool
