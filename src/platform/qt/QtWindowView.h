#pragma once

#include "platform/Window.h"
#include "platform/qt/DeleteLater.h"
#include "platform/qt/WindowShell.h"

namespace larkspool {

// Connects a window to its shell. Owned by the window.
class QtWindowView : public WindowView {
  public:
    QtWindowView(Window& window, Desktop& desktop)
        : shell(MakeOwnedByLoop<WindowShell>(window, desktop)) {}
    ~QtWindowView() override { shell->Detach(); }

    void Changed(WindowAspect aspect) override { shell->Changed(aspect); }
    void ComeToFront() override { shell->ComeToFront(); }

  private:
    OwnedByLoop<WindowShell> shell;
};

} // namespace larkspool
