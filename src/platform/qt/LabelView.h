#pragma once

#include "platform/Label.h"
#include "platform/qt/WidgetView.h"

#include <QLabel>

namespace larkspool {

class Window;

class LabelView : public ViewOf<Label, QLabel> {
  public:
    LabelView(Label& label, Desktop& host, QWidget& content, const Window& home);

    void Place() override;
    void SetBuddy(QWidget& named) { shape.setBuddy(&named); }

  protected:
    void Redraw(Aspect aspect) override;

  private:
    void ShowCut();

    const Window& window;
};

} // namespace larkspool
