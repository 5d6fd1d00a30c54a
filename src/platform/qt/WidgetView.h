#pragma once

#include "platform/Control.h"

#include <QObject>
#include <QWidget>

#include <functional>

namespace larkspool {

class Desktop;

// What the views of all controls share: place, name, being enabled and visible, the pointer coming
// and going, the wheel. Owned by its window's shell; the widget belongs to the shell's content and
// outlives the view.
class WidgetView : public QObject, public ControlView {
  public:
    WidgetView(Control& control, Desktop& theDesktop, QWidget& shown);

    void Changed(Aspect aspect) override;
    virtual void Place();

    const Control* Shown() const { return Model(); }
    QWidget& Widget() const { return widget; }

  protected:
    // Shows what the control holds now. Must not pass anything back to the control.
    virtual void Redraw(Aspect aspect) = 0;
    virtual void BecameVisible() {}

    // Runs a call into the program. The control may be gone when it returns, the view is not.
    void Raise(const std::function<void()>& call) const;
    bool eventFilter(QObject* watched, QEvent* event) override;

    Desktop& desktop;

  private:
    bool TurnWheel(QEvent& event) const;

    QWidget& widget;
};

// A view whose control and widget are of the given kinds.
template <typename Kind, typename Shape>
class ViewOf : public WidgetView {
  public:
    ViewOf(Kind& control, Desktop& theDesktop, Shape& shown)
        : WidgetView(control, theDesktop, shown), shape(shown) {}

  protected:
    Kind* Held() const { return static_cast<Kind*>(Model()); } // null once the control is gone

    Shape& shape;
};

} // namespace larkspool
