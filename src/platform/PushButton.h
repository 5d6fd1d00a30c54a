#pragma once

#include "platform/Control.h"

#include <string>

namespace larkspool {

// A button with an immediate action.
class PushButton : public Control {
  public:
    const std::string& Caption() const { return caption; }
    void SetCaption(std::string value);

    // The same as a click: a disabled button does nothing.
    void Push() const;

    std::function<void()> action;

  private:
    std::string caption;
};

} // namespace larkspool
