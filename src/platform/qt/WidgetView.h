#pragma once

#include "platform/Control.h"

#include <QObject>
#include <QWidget>

#include <functional>

namespace larkspool {

class Desktop;

// The base of all controls' views: place, name, enabled and visible state, the pointer's enter and
// leave events, the wheel. Owned by its window's shell; the widget belongs to the shell's content
// and outlives the view.
class WidgetView : public QObject, public ControlView {
  public:
    WidgetView(Control& control, Desktop& theDesktop, QWidget& shown);

    void Changed(Aspect aspect) override;
    virtual void Place();

    const Control* Shown() const { return Model(); }
    QWidget& Widget() const { return widget; }

  protected:
    // Shows the control's current state. Must not change the control.
    virtual void Redraw(Aspect aspect) = 0;
    virtual void BecameVisible() {}

    // Runs a call into the program. The control may be destroyed when it returns, the view is not.
    void Raise(const std::function<void()>& call) const;
    bool eventFilter(QObject* watched, QEvent* event) override;

    Desktop& desktop;

  private:
    bool TurnWheel(QEvent& event) const;

    QWidget& widget;
};

// A view of a control and a widget of the given classes.
template <typename Kind, typename Shape>
class ViewOf : public WidgetView {
  public:
    ViewOf(Kind& control, Desktop& theDesktop, Shape& shown)
        : WidgetView(control, theDesktop, shown), shape(shown) {}

  protected:
    Kind* Held() const {
        return static_cast<Kind*>(Model());
    } // null after the control is destroyed

    Shape& shape;
};

} // namespace larkspool
