#include "platform/Control.h"

#include <utility>

namespace larkspool {

namespace {

constexpr int UnitsPerStep = 120;

int TakeSteps(int& rest, int angle) {
    // A turn in the other direction starts from 0; the user doesn't expect a rest to count.
    if ((rest > 0 && angle < 0) || (rest < 0 && angle > 0)) {
        rest = 0;
    }
    rest += angle;
    const int steps = rest / UnitsPerStep;
    rest -= steps * UnitsPerStep;
    return steps;
}

} // namespace

ControlView::ControlView(Control& shown) : model(&shown) { shown.view = this; }

ControlView::~ControlView() {
    if (model != nullptr) {
        model->view = nullptr;
    }
}

Control::~Control() {
    if (view != nullptr) {
        view->model = nullptr;
    }
}

void Control::Place(std::string codeName, Rect designBounds, Locks edges) {
    name = std::move(codeName);
    design = designBounds;
    bounds = designBounds;
    locks = edges;
}

void Control::SetEnabled(bool value) {
    if (enabled != value) {
        enabled = value;
        Notify(Aspect::Enabled);
    }
}

void Control::SetVisible(bool value) {
    if (visible != value) {
        visible = value;
        Notify(Aspect::Visible);
    }
}

void Control::Follow(int grownWidth, int grownHeight) {
    Rect placed = design;
    if (locks.right) {
        (locks.left ? placed.width : placed.left) += grownWidth;
    }
    if (locks.bottom) {
        (locks.top ? placed.height : placed.top) += grownHeight;
    }
    if (placed != bounds) {
        bounds = placed;
        Notify(Aspect::Bounds);
    }
}

void Control::Wheel(int angleX, int angleY) {
    if (!mouseWheel) {
        return;
    }
    const int stepsX = TakeSteps(wheelRestX, angleX);
    const int stepsY = TakeSteps(wheelRestY, angleY);
    if (stepsX != 0 || stepsY != 0) {
        mouseWheel(stepsX, stepsY);
    }
}

void Control::CommitEdit() const {
    if (view != nullptr) {
        view->CommitEdit();
    }
}

void Control::Notify(Aspect aspect) const {
    if (view != nullptr) {
        view->Changed(aspect);
    }
}

} // namespace larkspool
