#include "platform/qt/Accessibility.h"

#include "platform/qt/CanvasView.h"
#include "platform/qt/ProgressBarView.h"
#include "platform/qt/SliderView.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace larkspool {

namespace {

class AccessibleSlider : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    explicit AccessibleSlider(SpokenSlider& shown)
        : QAccessibleWidget(&shown, QAccessible::Slider), slider(shown) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    // The Linux bridge passes on the description.
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value || kind == QAccessible::Description
                   ? slider.spoken()
                   : QAccessibleWidget::text(kind);
    }

    QVariant currentValue() const override { return slider.value(); }
    void setCurrentValue(const QVariant& value) override { slider.setValue(value.toInt()); }
    QVariant maximumValue() const override { return slider.maximum(); }
    QVariant minimumValue() const override { return slider.minimum(); }
    QVariant minimumStepSize() const override { return slider.singleStep(); }

  private:
    SpokenSlider& slider;
};

// Gives its value in a unit of the program's choice, as text and as a number.
class AccessibleMeter : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    explicit AccessibleMeter(MeterBar& shown)
        : QAccessibleWidget(&shown, QAccessible::ProgressBar), bar(shown) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value || kind == QAccessible::Description
                   ? bar.spoken()
                   : QAccessibleWidget::text(kind);
    }

    QVariant currentValue() const override { return bar.quantity(bar.value()); }
    void setCurrentValue(const QVariant& /*value*/) override {} // read-only
    QVariant maximumValue() const override { return bar.quantity(bar.maximum()); }
    QVariant minimumValue() const override { return bar.quantity(bar.minimum()); }
    QVariant minimumStepSize() const override { return {}; }

  private:
    MeterBar& bar;
};

class AccessibleCanvas : public QAccessibleWidget {
  public:
    explicit AccessibleCanvas(CanvasWidget& shown)
        : QAccessibleWidget(&shown, QAccessible::Canvas) {}
};

QAccessibleInterface* MakeInterface(const QString& /*className*/, QObject* object) {
    if (auto* slider = dynamic_cast<SpokenSlider*>(object)) {
        return new AccessibleSlider(*slider); // Qt's cache owns it
    }
    if (auto* bar = dynamic_cast<MeterBar*>(object)) {
        return new AccessibleMeter(*bar);
    }
    if (auto* canvas = dynamic_cast<CanvasWidget*>(object)) {
        return new AccessibleCanvas(*canvas);
    }
    return nullptr;
}

} // namespace

void InstallAccessibility() { QAccessible::installFactory(MakeInterface); }

} // namespace larkspool
