#pragma once

#include "platform/Window.h"
#include "platform/qt/QtDesktop.h"

#include <QApplication>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>

namespace larkspool {

// The desktop that all tests of this program share; it has no menus and answers nothing.
QtDesktop& TheDesktop();

// Lets the event loop run until the condition holds; false if it never does.
inline bool Eventually(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 5000);
}

// Long enough for everything that is due at once to have happened.
inline void LetEventsRun() { QTest::qWait(30); }

// A window that a test fills with its own controls.
class TestWindow : public Window {
  public:
    TestWindow() : Window(TheDesktop()) {
        SetDesignSize(600, 300);
        SetTitle("Test");
    }

    void Add(Control& control, const std::string& name, Rect place, Locks locks = {}) {
        control.Place(name, place, locks);
        AddControl(control);
    }

    // Shows the window and waits until it has the keyboard.
    void Open() {
        // Windows of earlier tests are gone, their shells not yet.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Shell()));
    }

    // The widget on the screen that bears this window's title.
    QWidget& Shell() const {
        const auto all = QApplication::topLevelWidgets();
        return **std::ranges::find(all, QString::fromStdString(Title()), &QWidget::windowTitle);
    }

    template <typename Widget>
    Widget& Find(const char* name) const {
        return *Shell().findChild<Widget*>(QLatin1String(name));
    }

    bool Event_CancelClose(bool /*appQuitting*/) override { return stays; }
    bool stays = false;
};

} // namespace larkspool
