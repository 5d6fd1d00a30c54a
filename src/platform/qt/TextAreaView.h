#pragma once

#include "platform/TextArea.h"
#include "platform/qt/WidgetView.h"

#include <QPlainTextEdit>

namespace larkspool {

// Catches up with its text once a turn of the event loop, and only while it can be seen.
class TextAreaView : public ViewOf<TextArea, QPlainTextEdit> {
  public:
    TextAreaView(TextArea& area, Desktop& theDesktop, QWidget& content);

  protected:
    void Redraw(Aspect aspect) override;
    void BecameVisible() override { CatchUp(); }

  private:
    void CatchUp();

    bool isStale = false;
};

} // namespace larkspool
