#pragma once

#include "platform/TextField.h"
#include "platform/qt/WidgetView.h"

#include <QLineEdit>

namespace larkspool {

class TextFieldView : public ViewOf<TextField, QLineEdit> {
  public:
    TextFieldView(TextField& field, Desktop& theDesktop, QWidget& content);

  protected:
    void Redraw(Aspect aspect) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace larkspool
