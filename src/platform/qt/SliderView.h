#pragma once

#include "platform/Slider.h"
#include "platform/qt/WidgetView.h"

#include <QSlider>
#include <QString>

#include <functional>

namespace larkspool {

// A slider that gives its value with the unit as a text.
class SpokenSlider : public QSlider {
  public:
    explicit SpokenSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {}

    std::function<QString()> spoken;
};

class SliderView : public ViewOf<Slider, SpokenSlider> {
  public:
    SliderView(Slider& slider, Desktop& theDesktop, QWidget& content);

  protected:
    void Redraw(Aspect aspect) override;

  private:
    QString Spoken() const;
};

} // namespace larkspool
