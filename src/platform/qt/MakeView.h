#pragma once

#include "platform/qt/WidgetView.h"

#include <memory>

namespace larkspool {

class Window;

// The view for the control's class; null for a kind that never shows.
std::unique_ptr<WidgetView> MakeView(Control& control, Desktop& desktop, QWidget& content,
                                     const Window& window);

} // namespace larkspool
