#pragma once

#include "platform/Control.h"

namespace larkspool {

// A bar from 0 to maximum. It keeps any value and its view draws it clamped.
class ProgressBar : public Control {
  public:
    int Value() const { return value; }
    void SetValue(int amount);

    int maximum = 100;

  private:
    int value = 0;
};

} // namespace larkspool
