#pragma once

#include "platform/Control.h"

#include <string>

namespace larkspool {

// One line of text that the user can edit.
class TextField : public Control {
  public:
    const std::string& Text() const { return text; }
    // A different text raises textChange before the setter returns, for every caller.
    void SetText(std::string value);

    // The user's keys. Step: Up is 1, Down -1; with Shift a tenth of that, by Page Up and Page Down
    // ten times as much.
    void PressReturn() const;
    void Step(double steps) const;
    bool TakesSteps() const { return static_cast<bool>(keySteps); }

    std::string placeholder; // shown in gray while the field is empty
    std::function<void()> textChange;
    std::function<void()> returnPressed;
    std::function<void(double steps)> keySteps;

  private:
    std::string text;
};

} // namespace larkspool
