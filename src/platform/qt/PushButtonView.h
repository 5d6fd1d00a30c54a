#pragma once

#include "platform/PushButton.h"
#include "platform/qt/WidgetView.h"

#include <QPushButton>

namespace larkspool {

class PushButtonView : public ViewOf<PushButton, QPushButton> {
  public:
    PushButtonView(PushButton& button, Desktop& theDesktop, QWidget& content);

  protected:
    void Redraw(Aspect aspect) override;
};

} // namespace larkspool
