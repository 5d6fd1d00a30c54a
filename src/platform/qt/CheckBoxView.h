#pragma once

#include "platform/CheckBox.h"
#include "platform/qt/WidgetView.h"

#include <QCheckBox>

namespace larkspool {

class CheckBoxView : public ViewOf<CheckBox, QCheckBox> {
  public:
    CheckBoxView(CheckBox& box, Desktop& theDesktop, QWidget& content);

  protected:
    void Redraw(Aspect aspect) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void ShowFocus() const;
};

} // namespace larkspool
