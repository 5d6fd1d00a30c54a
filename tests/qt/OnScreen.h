#pragma once

#include "platform/Window.h"
#include "platform/qt/QtDesktop.h"

#include <QApplication>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace larkspool {

// The desktop that all tests of this program share; it has no menus and answers nothing.
QtDesktop& TheDesktop();

// Lets the event loop run until the condition holds; false if it never does.
inline bool Eventually(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 5000);
}

// Long enough for everything that is due at once to have happened.
inline void LetEventsRun() { QTest::qWait(30); }

// The windows of a kind that are on the screen.
template <typename Widget>
std::vector<Widget*> Shown() {
    std::vector<Widget*> shown;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* found = qobject_cast<Widget*>(widget);
        if (found != nullptr && found->isVisible()) {
            shown.push_back(found);
        }
    }
    return shown;
}

// A window that a test fills with its own controls.
class TestWindow : public Window {
  public:
    TestWindow() : Window(TheDesktop()) { SetDesignSize(600, 300); }

    using Window::AddControl;
    using Window::SetDesignSize;

    // Shows the window and waits until it has the keyboard.
    void Open() {
        // Windows of earlier tests are gone, their shells not yet.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Shell()));
    }

    // The widget on the screen that bears this window's title.
    QWidget& Shell() const {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->windowTitle().toStdString() == Title()) {
                return *widget;
            }
        }
        throw std::runtime_error("no such window");
    }

    template <typename Widget>
    Widget& Find(const std::string& name) const {
        auto* found = Shell().findChild<Widget*>(QString::fromStdString(name));
        if (found == nullptr) {
            throw std::runtime_error("no control " + name);
        }
        return *found;
    }
};

} // namespace larkspool
