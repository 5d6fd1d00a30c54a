#include "platform/qt/MakeView.h"

#include "platform/qt/CanvasView.h"
#include "platform/qt/CheckBoxView.h"
#include "platform/qt/LabelView.h"
#include "platform/qt/ListboxView.h"
#include "platform/qt/PopupMenuView.h"
#include "platform/qt/ProgressBarView.h"
#include "platform/qt/PushButtonView.h"
#include "platform/qt/SliderView.h"
#include "platform/qt/TextFieldView.h"

namespace larkspool {

namespace {

template <typename Kind, typename View>
std::unique_ptr<WidgetView> MakeIf(Control& control, Desktop& desktop, QWidget& content) {
    auto* held = dynamic_cast<Kind*>(&control);
    return held == nullptr ? nullptr : std::make_unique<View>(*held, desktop, content);
}

} // namespace

std::unique_ptr<WidgetView> MakeView(Control& control, Desktop& desktop, QWidget& content,
                                     const Window& window) {
    if (auto* label = dynamic_cast<Label*>(&control)) {
        return std::make_unique<LabelView>(*label, desktop, content, window);
    }
    using Maker = std::unique_ptr<WidgetView> (*)(Control&, Desktop&, QWidget&);
    static constexpr Maker Makers[] = {
        MakeIf<TextField, TextFieldView>,   MakeIf<CheckBox, CheckBoxView>,
        MakeIf<PushButton, PushButtonView>, MakeIf<PopupMenu, PopupMenuView>,
        MakeIf<Slider, SliderView>,         MakeIf<ProgressBar, ProgressBarView>,
        MakeIf<Listbox, ListboxView>,       MakeIf<Canvas, CanvasView>,
    };
    for (const Maker make : Makers) {
        if (auto view = make(control, desktop, content)) {
            return view;
        }
    }
    return nullptr;
}

} // namespace larkspool
