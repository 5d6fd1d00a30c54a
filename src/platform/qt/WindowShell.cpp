#include "platform/qt/WindowShell.h"

#include "platform/Desktop.h"
#include "platform/qt/Application.h"
#include "platform/qt/LabelView.h"
#include "platform/qt/MakeChild.h"
#include "platform/qt/MakeView.h"

#include <QApplication>
#include <QCloseEvent>

#include <utility>

namespace larkspool {

WindowShell::WindowShell(Window& shown, Desktop& theDesktop)
    : window(&shown), desktop(theDesktop), menuBar(shown, theDesktop, *this),
      content(MakeChild<ContentArea>(*this, shown.hairlines)) {
    MakeViews();
    NameByLabels();
    if (QWidget* first = WidgetOf(shown.firstFocus)) {
        first->setFocus();
    }
    SetLimits();
    resize(shown.Width(), shown.Height() + menuBar.Height());
    setWindowTitle(QString::fromStdString(shown.Title()));
}

void WindowShell::MakeViews() {
    for (Control* control : window->Controls()) {
        if (auto view = MakeView(*control, desktop, content, *window)) {
            views.push_back(std::move(view));
        }
    }
    for (const auto& view : views) {
        view->Place();
    }
}

QWidget* WindowShell::WidgetOf(const Control* control) const {
    for (const auto& view : views) {
        if (control != nullptr && view->Shown() == control) {
            return &view->Widget();
        }
    }
    return nullptr;
}

void WindowShell::NameByLabels() {
    for (const auto& view : views) {
        if (auto* label = dynamic_cast<LabelView*>(view.get())) {
            if (QWidget* named = WidgetOf(static_cast<const Label*>(label->Shown())->buddy)) {
                label->SetBuddy(*named);
            }
        }
    }
}

void WindowShell::SetLimits() {
    setMinimumSize(window->minimumWidth, window->minimumHeight + menuBar.Height());
    setMaximumSize(window->maximumWidth, window->maximumHeight + menuBar.Height());
}

void WindowShell::Changed(WindowAspect aspect) {
    switch (aspect) {
    case WindowAspect::Title:
        setWindowTitle(QString::fromStdString(window->Title()));
        break;
    case WindowAspect::Size:
        // A label's width depends on the other controls, which have all moved.
        for (const auto& view : views) {
            view->Place();
        }
        resize(window->Width(), window->Height() + menuBar.Height());
        break;
    case WindowAspect::Visible:
        setVisible(window->Visible());
        break;
    }
}

void WindowShell::ComeToFront() {
    if (isMinimized()) {
        showNormal();
    }
    raise();
    activateWindow();
}

void WindowShell::Detach() {
    window = nullptr;
    menuBar.Detach();
    hide();
}

bool WindowShell::event(QEvent* event) {
    // Arrives here from the control with the focus, before Qt looks at any shortcut.
    if (event->type() == QEvent::ShortcutOverride) {
        menuBar.RefreshShortcuts();
    } else if (event->type() == QEvent::ThemeChange) {
        if (auto* application = dynamic_cast<Application*>(QCoreApplication::instance())) {
            application->FollowScheme();
        }
    }
    return QWidget::event(event);
}

void WindowShell::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (window != nullptr) {
        desktop.Raise([this] { window->Close(); });
    }
}

void WindowShell::resizeEvent(QResizeEvent* /*event*/) {
    const int above = menuBar.Height();
    menuBar.SetWidth(width());
    content.setGeometry(0, above, width(), height() - above);
    if (window != nullptr && isVisible()) {
        desktop.Raise([this, above] { window->Resize(width(), height() - above); });
    }
}

} // namespace larkspool
