#pragma once

#include "platform/Control.h"

#include <functional>
#include <string>

namespace larkspool {

// A bar from 0 to maximum. It stores any value; its view draws it clamped.
class ProgressBar : public Control {
  public:
    int Value() const { return value; }
    void SetValue(int amount);

    int maximum = 100;
    // The value in the unit that a screen reader says; if empty, the value itself.
    std::function<double(int)> quantity;
    std::string unit;

  private:
    int value = 0;
};

} // namespace larkspool
