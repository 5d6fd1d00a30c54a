#include "platform/Window.h"

#include "platform/Desktop.h"

#include <algorithm>
#include <utility>

namespace larkspool {

Window::Window(Desktop& theDesktop) : desktop(theDesktop) {}

Window::~Window() = default;

void Window::SetDesignSize(int designedWidth, int designedHeight) {
    designWidth = width = designedWidth;
    designHeight = height = designedHeight;
}

void Window::SetTitle(std::string text) {
    if (title != text) {
        title = std::move(text);
        Notify(WindowAspect::Title);
    }
}

void Window::Resize(int newWidth, int newHeight) {
    const int clampedWidth = std::clamp(newWidth, minimumWidth, maximumWidth);
    const int clampedHeight = std::clamp(newHeight, minimumHeight, maximumHeight);
    if (clampedWidth == width && clampedHeight == height) {
        return;
    }
    width = clampedWidth;
    height = clampedHeight;
    for (Control* control : controls) {
        control->Follow(width - designWidth, height - designHeight);
    }
    Notify(WindowAspect::Size);
}

void Window::Show() {
    if (view == nullptr) {
        view = desktop.MakeWindowView(*this);
    }
    if (!visible) {
        visible = true;
        Notify(WindowAspect::Visible);
    }
    view->ComeToFront();
}

void Window::Hide() {
    if (visible) {
        visible = false;
        Notify(WindowAspect::Visible);
    }
}

void Window::Close() {
    if (!visible || Event_CancelClose(false)) {
        return;
    }
    Hide();
    // The handler may destroy this window, and itself with it.
    if (const auto handler = closed; handler) {
        handler();
    }
}

void Window::CommitEdits() const {
    for (const Control* control : controls) {
        control->CommitEdit();
    }
}

void Window::Notify(WindowAspect aspect) const {
    if (view != nullptr) {
        view->Changed(aspect);
    }
}

} // namespace larkspool
