#pragma once

#include "platform/Window.h"
#include "platform/qt/ContentArea.h"
#include "platform/qt/MenuBarView.h"
#include "platform/qt/WidgetView.h"

#include <QWidget>

#include <memory>
#include <vector>

namespace larkspool {

class Desktop;

// One window on the screen: the menu bar, and below it the content with its controls. Outlives its
// window by one turn of the event loop, because the window may be destroyed inside an event.
class WindowShell : public QWidget {
  public:
    WindowShell(Window& shown, Desktop& theDesktop);

    void Changed(WindowAspect aspect);
    void ComeToFront();
    void Detach(); // the window is destroyed

  protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void MakeViews();
    void NameByLabels();
    QWidget* WidgetOf(const Control* control) const;
    void SetLimits();

    Window* window;
    Desktop& desktop;
    MenuBarView menuBar;
    ContentArea& content;
    std::vector<std::unique_ptr<WidgetView>> views;
};

} // namespace larkspool
