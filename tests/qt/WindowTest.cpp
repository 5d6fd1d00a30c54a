#include "qt/OnScreen.h"

#include "platform/CheckBox.h"
#include "platform/Label.h"
#include "platform/TextField.h"
#include "platform/qt/Fonts.h"
#include "platform/qt/Palettes.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace larkspool {
namespace {

class Windows : public testing::Test {
  protected:
    Windows() {
        window.minimumWidth = 500;
        window.maximumWidth = 600;
        window.firstFocus = &field;
        label.SetText("Waterfall min -120 db");
        window.Add(label, "Label", {400, 10, 120, 20});
        window.Add(box, "Box", {530, 10, 60, 20}, {false, true, true, false});
        window.Add(field, "Field", {10, 40, 580, 22}, {true, true, true, false});
    }

    Label label;
    CheckBox box;
    TextField field;
    TestWindow window;
};

TEST_F(Windows, TheUsersResizeReachesModelAndControls) {
    window.Open();
    auto& shell = window.Shell();
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "Field") << "where the keyboard begins";
    EXPECT_EQ(window.Find<QLabel>("Label").width(), 120);
    const int menuHeight = shell.height() - 300;
    shell.resize(520, 280 + menuHeight);
    LetEventsRun();
    EXPECT_EQ(window.Width(), 520);
    EXPECT_EQ(window.Height(), 280);
    EXPECT_EQ(window.Find<QWidget>("Box").x(), 450);
    EXPECT_EQ(window.Find<QWidget>("Field").width(), 500);
    EXPECT_EQ(window.Find<QLabel>("Label").width(), 450 - 4 - 400) << "it ends before the box";
    EXPECT_EQ(shell.minimumWidth(), 500);
    EXPECT_EQ(shell.maximumWidth(), 600);
}

TEST_F(Windows, ATextThatIsTooLongForItsLabelIsWholeInTheTooltip) {
    const std::string text = "nothing received for 12 s, and more than fits";
    label.mayBeCut = true;
    label.SetText(text);
    window.Open();
    const auto& shown = window.Find<QLabel>("Label");
    EXPECT_TRUE(shown.text().endsWith(QChar(0x2026)));
    EXPECT_EQ(shown.toolTip().toStdString(), text);
    EXPECT_EQ(shown.accessibleName().toStdString(), text);
    label.SetText("short");
    EXPECT_EQ(shown.text(), "short");
    EXPECT_EQ(shown.toolTip() + shown.accessibleName(), "");
}

TEST_F(Windows, TheCloseButtonAsksTheProgram) {
    int closed = 0;
    window.closed = [&closed] { ++closed; };
    window.stays = true;
    window.Open();
    auto& shell = window.Shell();
    shell.close();
    EXPECT_TRUE(shell.isVisible());
    window.stays = false;
    shell.close();
    EXPECT_FALSE(shell.isVisible());
    EXPECT_EQ(closed, 1);
    window.Show();
    EXPECT_TRUE(shell.isVisible());
}

TEST_F(Windows, TheFirstResizeMovesNothing) {
    TheDesktop().menuBar.menus = {{"FileMenu", "&File", {{"FileNew", "New", "Cmd+N"}}}};
    QFont large = QApplication::font();
    large.setPixelSize(20); // too large for the label
    QApplication::setFont(large);
    window.Open();
    const auto top = [this] {
        return window.Find<QLineEdit>("Field").mapTo(&window.Shell(), QPoint()).y();
    };
    const int before = top();
    window.Shell().resize(550, 400);
    LetEventsRun();
    EXPECT_EQ(top(), before);
    EXPECT_GT(before, 40);
    EXPECT_EQ(window.Height(), 440 - before);
    TheDesktop().menuBar = {};
    QApplication::setFont(LargestFont());
}

TEST_F(Windows, TheFontShrinksUntilTheLongestTextFits) {
    label.longest = label.Text();
    const QFont wished = LargestFont();
    const QFont fitting = FittingFont(window, wished);
    EXPECT_LE(QFontMetrics(fitting).horizontalAdvance("Waterfall min -120 db"), 120);
    label.longest = "a text that needs some four times as much room as there is for it";
    EXPECT_LT(FittingFont(window, wished).pixelSize(), fitting.pixelSize());
    label.longest.clear();
    label.SetText("db");
    EXPECT_EQ(FittingFont(window, wished).pixelSize(), wished.pixelSize());
}

TEST(Palettes, AreToldApart) {
    EXPECT_TRUE(IsDark(DarkPalette()));
    EXPECT_FALSE(IsDark(LightPalette()));
}

class Menus : public testing::Test {
  protected:
    Menus() {
        TheDesktop().menuBar.menus = {{"FileMenu",
                                       "&File",
                                       {{"FileNew", "New", "Cmd+N"},
                                        {"FileClose", "Close", "Cmd+W"},
                                        {"FileQuit", "&Quit", "Cmd+Q", MenuRole::Quit}}},
                                      {"EditMenu",
                                       "&Edit",
                                       {{"EditCopy", "&Copy", "Cmd+C", MenuRole::Copy},
                                        {"EditPaste", "&Paste", "Cmd+V", MenuRole::Paste}}}};
        TheDesktop().applicationHandlers.Add("FileNew", [this] {
            events.emplace_back("new");
            return true;
        });
        TheDesktop().quitRequested = [this](QuitCause cause) {
            events.emplace_back(cause == QuitCause::User ? "quit" : "signal");
        };
        window->Add(field, "Field", {10, 10, 100, 22});
        window->Open();
        edit = &window->Find<QLineEdit>("Field");
    }

    ~Menus() override {
        TheDesktop().menuBar = {};
        TheDesktop().applicationHandlers = {};
        TheDesktop().quitRequested = nullptr;
    }

    bool IsEnabled(const char* item) const {
        for (QMenu* menu : window->Shell().findChildren<QMenu*>()) {
            Q_EMIT menu->aboutToShow();
        }
        return window->Find<QAction>(item).isEnabled();
    }

    using Events = std::vector<std::string>;
    Events events;
    TextField field;
    std::unique_ptr<TestWindow> window = std::make_unique<TestWindow>();
    QLineEdit* edit = nullptr;
};

TEST_F(Menus, AnItemWorksOnceAndOnlyWhileItHasAHandler) {
    EXPECT_TRUE(IsEnabled("FileNew"));
    EXPECT_TRUE(IsEnabled("FileQuit"));
    EXPECT_FALSE(IsEnabled("FileClose"));
    for (const Qt::Key key : {Qt::Key_W, Qt::Key_N, Qt::Key_Q}) {
        QTest::keyClick(edit, key, Qt::ControlModifier);
    }
    EXPECT_EQ(events, (Events{"new", "quit"}));
    window->menuHandlers.Add("FileClose", [this] {
        window.reset(); // a window may end in its own menu item
        return true;
    });
    EXPECT_TRUE(IsEnabled("FileClose"));
    QTest::keyClick(edit, Qt::Key_W, Qt::ControlModifier);
    LetEventsRun();
    EXPECT_EQ(window, nullptr);
    field.SetText("still a control");
}

TEST_F(Menus, EditItemsActOnTheFocusedText) {
    field.SetText("1280");
    edit->setFocus();
    EXPECT_FALSE(IsEnabled("EditCopy"));
    edit->setSelection(1, 2);
    ASSERT_TRUE(IsEnabled("EditCopy"));
    window->Find<QAction>("EditCopy").trigger();
    EXPECT_EQ(TheDesktop().ClipboardText(), "28");
    ASSERT_TRUE(IsEnabled("EditPaste"));
    edit->end(false);
    window->Find<QAction>("EditPaste").trigger();
    EXPECT_EQ(field.Text(), "128028");
    edit->clearFocus();
    window->Shell().setFocus();
    EXPECT_FALSE(IsEnabled("EditPaste"));
}

} // namespace
} // namespace larkspool
