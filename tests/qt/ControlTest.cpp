#include "qt/OnScreen.h"

#include "platform/CheckBox.h"
#include "platform/Label.h"
#include "platform/PopupMenu.h"
#include "platform/ProgressBar.h"
#include "platform/PushButton.h"
#include "platform/Slider.h"
#include "platform/TextField.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSlider>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace larkspool {
namespace {

// One of each kind, and what they raise.
class Controls : public testing::Test {
  protected:
    Controls() {
        window.Add(field, "Field", {10, 10, 100, 22});
        window.Add(box, "Box", {10, 40, 100, 20});
        window.Add(button, "Button", {10, 70, 100, 20});
        window.Add(popup, "Popup", {10, 100, 100, 20});
        window.Add(slider, "Slider", {10, 130, 100, 23});
        window.Add(bar, "Bar", {10, 160, 100, 20});
        for (const char* row : {"first", "second", "third"}) {
            popup.AddRow(row);
        }
        popup.SetListIndex(0);
        field.textChange = [this] { events.push_back("text " + field.Text()); };
        box.action = [this] { events.emplace_back(box.Value() ? "on" : "off"); };
        button.action = [this] { events.emplace_back("pushed"); };
        popup.mouseDown = [this] { events.emplace_back("press"); };
        popup.change = [this] { events.push_back("row " + popup.Text()); };
        slider.valueChanged = [this] {
            events.push_back("value " + std::to_string(slider.Value()));
        };
    }

    // As the window system does it; only such a turn may move the focus.
    static void Turn(QWidget& widget, QPoint pixels, QPoint angle) {
        QWheelEvent event(QPointF(5, 5), widget.mapToGlobal(QPointF(5, 5)), pixels, angle,
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(&widget, &event);
    }

    using Events = std::vector<std::string>;
    Events events;
    TextField field;
    CheckBox box;
    PushButton button;
    PopupMenu popup;
    Slider slider;
    ProgressBar bar;
    TestWindow window;
};

TEST_F(Controls, WhatTheUserDoesReachesTheProgram) {
    field.returnPressed = [this] { events.emplace_back("return"); };
    slider.mouseEnter = [this] { events.emplace_back("enter"); };
    slider.mouseExit = [this] { events.emplace_back("exit"); };
    window.Open();
    auto& bySlider = window.Find<QSlider>("Slider");
    auto& edit = window.Find<QLineEdit>("Field");
    auto& push = window.Find<QPushButton>("Button");
    QTest::keyClicks(&edit, "ab");
    QTest::keyClick(&edit, Qt::Key_Return);
    QTest::mouseClick(&window.Find<QCheckBox>("Box"), Qt::LeftButton, {}, {7, 10});
    QTest::mouseClick(&push, Qt::LeftButton);
    QTest::keyClick(&push, Qt::Key_Return);
    QTest::keyClick(&bySlider, Qt::Key_Right);
    QTest::keyClick(&bySlider, Qt::Key_PageUp);
    QTest::mouseMove(&bySlider, {20, 10});
    QTest::mouseMove(&window.Shell(), {400, 200});
    EXPECT_EQ(events, (Events{"text a", "text ab", "return", "on", "pushed", "pushed", "value 1",
                              "value 21", "enter", "exit"}));
}

TEST_F(Controls, WhatTheProgramSetsShowsAndRaisesItsEventOnce) {
    box.SetVisible(false);
    window.Open();
    EXPECT_FALSE(window.Find<QCheckBox>("Box").isVisible());
    field.SetText("1280");
    field.SetEnabled(false);
    box.SetValue(true);
    box.SetVisible(true);
    popup.SetListIndex(2);
    slider.SetValue(33);
    bar.SetValue(1000);
    button.SetCaption("Stop");
    EXPECT_EQ(events, (Events{"text 1280", "on", "row third", "value 33"}));
    for (const auto& [name, property, shown] :
         {std::tuple{"Field", "text", "1280"}, std::tuple{"Field", "enabled", "false"},
          std::tuple{"Box", "checked", "true"}, std::tuple{"Box", "visible", "true"},
          std::tuple{"Popup", "currentText", "third"}, std::tuple{"Slider", "value", "33"},
          std::tuple{"Bar", "value", "100"}, std::tuple{"Button", "text", "Stop"}}) {
        EXPECT_EQ(window.Find<QWidget>(name).property(property).toString(), shown) << name;
    }
}

TEST_F(Controls, ABarIsPaintedOnlyWhereItShows) {
    struct Paints : QObject {
        int count = 0;
        bool eventFilter(QObject* /*watched*/, QEvent* event) override {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    } paints;
    bar.maximum = 100'000;
    window.Open();
    LetEventsRun();
    window.Find<QProgressBar>("Bar").installEventFilter(&paints);
    for (const int amount : {20, 3, 50'000, 50'010}) {
        bar.SetValue(amount);
        QTest::qWait(60); // longer than a paint is held back
    }
    EXPECT_EQ(paints.count, 1);
}

TEST_F(Controls, AHandlerThatSetsAnotherValueHasTheLastWord) {
    box.action = [this] { box.SetValue(false); };
    field.textChange = [this] { field.SetText("10281"); };
    field.SetText("1280");
    window.Open();
    QTest::mouseClick(&window.Find<QCheckBox>("Box"), Qt::LeftButton, {}, {7, 10});
    EXPECT_FALSE(window.Find<QCheckBox>("Box").isChecked());
    auto& edit = window.Find<QLineEdit>("Field");
    edit.setFocus();
    edit.setCursorPosition(1);
    QTest::keyClicks(&edit, "0");
    EXPECT_EQ(edit.text(), "10281");
    EXPECT_EQ(edit.cursorPosition(), 2) << "where the user types";
}

TEST_F(Controls, APopupOffersTheRowsOfTheMomentToMouseAndKeys) {
    window.Open();
    auto& combo = window.Find<QComboBox>("Popup");
    QTest::keyClick(&combo, Qt::Key_Down);
    popup.DeleteAllRows();
    popup.AddRow("fresh");
    popup.AddRow("other");
    QTest::keyClick(&combo, Qt::Key_Down); // before the loop has come round
    EXPECT_EQ(events, (Events{"press", "row second", "press", "row fresh"}));
    popup.mouseDown = [this] { popup.AddRow("latest"); };
    QTest::mouseClick(&combo, Qt::LeftButton);
    ASSERT_TRUE(Eventually([&combo] { return combo.view()->isVisible(); }));
    EXPECT_EQ(combo.itemText(2), "latest");
    QTest::keyClick(combo.view(), Qt::Key_Down);
    QTest::keyClick(combo.view(), Qt::Key_Return);
    EXPECT_EQ(events.back(), "row other");
}

TEST_F(Controls, TheWheelActsOnlyWhereTheProgramTakesIt) {
    window.Open();
    auto& edit = window.Find<QLineEdit>("Field");
    auto& shown = window.Find<QSlider>("Slider");
    edit.setFocus();
    Turn(shown, {}, {0, 120});
    Turn(window.Find<QComboBox>("Popup"), {}, {0, -120});
    EXPECT_TRUE(edit.hasFocus()) << "the next keys go where they went before";
    int turned = 0;
    slider.mouseWheel = [&turned](int /*deltaX*/, int deltaY) { turned += deltaY; };
    Turn(shown, {}, {0, 240});
    Turn(shown, {0, -60}, {});
    EXPECT_EQ(turned, 1);
    EXPECT_EQ(events, Events());
}

TEST_F(Controls, KeysStepAFieldThatTakesSteps) {
    const std::pair<Qt::Key, Qt::KeyboardModifiers> keys[] = {
        {Qt::Key_Up, Qt::NoModifier},      {Qt::Key_Down, Qt::KeypadModifier},
        {Qt::Key_Up, Qt::ShiftModifier},   {Qt::Key_Down, Qt::ShiftModifier},
        {Qt::Key_PageUp, Qt::NoModifier},  {Qt::Key_PageDown, Qt::NoModifier},
        {Qt::Key_Up, Qt::ControlModifier}, {Qt::Key_Left, Qt::NoModifier}};
    std::vector<double> steps;
    field.keySteps = [&steps](double count) { steps.push_back(count); };
    window.Open();
    for (const auto& [key, modifiers] : keys) {
        QTest::keyClick(&window.Find<QLineEdit>("Field"), key, modifiers);
    }
    EXPECT_EQ(steps, (std::vector<double>{1, -1, 0.1, -0.1, 10, -10}));
}

// A ticked box is as bright as the mark of the focus elsewhere.
TEST_F(Controls, ABoxThatHasTheKeyboardHasARingAroundIt) {
    box.SetValue(true);
    window.Open();
    auto& shell = window.Shell();
    const QPoint left = window.Find<QCheckBox>("Box").mapTo(&shell, QPoint(-2, 10));
    for (const auto& [focused, shown] :
         {std::pair{"Field", QPalette::Window}, std::pair{"Box", QPalette::Link},
          std::pair{"Field", QPalette::Window}}) {
        window.Find<QWidget>(focused).setFocus();
        EXPECT_EQ(shell.grab().toImage().pixel(left), shell.palette().color(shown).rgb());
    }
}

TEST_F(Controls, AScreenReaderGetsNumbersAndNames) {
    Label label;
    label.SetText("Pre-Emp:");
    label.buddy = &popup;
    window.Add(label, "Label", {200, 100, 60, 20});
    bar.quantity = [](int value) { return value / 5.0 - 130; };
    bar.SetValue(58);
    window.Open();
    const auto spoken = [this](const char* name) {
        return QAccessible::queryAccessibleInterface(&window.Find<QWidget>(name));
    };
    ASSERT_NE(spoken("Slider")->valueInterface(), nullptr);
    spoken("Slider")->valueInterface()->setCurrentValue(50);
    EXPECT_EQ(slider.Value(), 50);
    auto* meter = spoken("Bar")->valueInterface();
    ASSERT_NE(meter, nullptr);
    EXPECT_EQ(meter->currentValue().toDouble(), -118.4);
    EXPECT_EQ(meter->maximumValue().toDouble(), -110);
    // A combo box speaks its row and is named by its label.
    const auto labels = spoken("Popup")->relations(QAccessible::Label);
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels.front().first->text(QAccessible::Name), "Pre-Emp:");
}

} // namespace
} // namespace larkspool
