#pragma once

#include "platform/qt/WidgetView.h"

#include <memory>

namespace larkspool {

class Window;

// The view of a control by the control's kind; none for a kind that has no looks.
std::unique_ptr<WidgetView> MakeView(Control& control, Desktop& desktop, QWidget& content,
                                     const Window& window);

} // namespace larkspool
