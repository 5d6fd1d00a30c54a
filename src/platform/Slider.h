#pragma once

#include "platform/Control.h"

#include <string>

namespace larkspool {

// A whole number in a range, set by dragging.
class Slider : public Control {
  public:
    int Value() const { return value; }
    int Minimum() const { return minimum; }
    int Maximum() const { return maximum; }

    void SetRange(int low, int high); // before the first SetValue; raises nothing
    // Clamps to the range, then raises valueChanged before it returns if the value differs.
    void SetValue(int wanted);

    int lineStep = 1;
    int pageStep = 20;
    std::function<std::string(int)> spokenValue; // the value with its unit, for screen readers
    std::function<void()> valueChanged;

  private:
    int minimum = 0;
    int maximum = 100;
    int value = 0;
};

} // namespace larkspool
