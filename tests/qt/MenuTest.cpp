#include "qt/OnScreen.h"

#include "platform/TextField.h"

#include <QAction>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace larkspool {
namespace {

class Menus : public testing::Test {
  protected:
    void SetUp() override {
        TheDesktop().menuBar.menus = {{"FileMenu",
                                       "&File",
                                       {{"FileNew", "New", "Cmd+N"},
                                        {"FileClose", "Close", "Cmd+W"},
                                        {"FileQuit", "&Quit", "Cmd+Q", MenuRole::Quit}}},
                                      {"EditMenu",
                                       "&Edit",
                                       {{"EditCopy", "&Copy", "Cmd+C", MenuRole::Copy},
                                        {"EditSeparator1", "-", "", MenuRole::Separator},
                                        {"EditPaste", "&Paste", "Cmd+V", MenuRole::Paste}}}};
        TheDesktop().applicationHandlers.Add("FileNew", [this] { return Note("new"); });
        TheDesktop().quitRequested = [this](QuitCause cause) {
            Note(cause == QuitCause::User ? "quit" : "signal");
        };
        window.SetTitle("Menus");
        field.Place("Field", {10, 10, 100, 22});
        window.AddControl(field);
    }

    void TearDown() override {
        TheDesktop().menuBar = {};
        TheDesktop().applicationHandlers = {};
        TheDesktop().quitRequested = nullptr;
    }

    bool Note(const std::string& event) {
        events.push_back(event);
        return true;
    }

    bool IsEnabled(const char* menu, const char* item) const {
        Q_EMIT window.Find<QMenu>(menu).aboutToShow();
        return window.Find<QAction>(item).isEnabled();
    }

    using Events = std::vector<std::string>;
    Events events;
    TextField field;
    TestWindow window;
};

TEST_F(Menus, AnItemWorksOnceAndOnlyWhileSomebodyAnswers) {
    window.Open();
    auto& edit = window.Find<QLineEdit>("Field");
    EXPECT_TRUE(IsEnabled("FileMenu", "FileNew"));
    EXPECT_TRUE(IsEnabled("FileMenu", "FileQuit"));
    EXPECT_FALSE(IsEnabled("FileMenu", "FileClose"));
    QTest::keyClick(&edit, Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(events, Events());
    QTest::keyClick(&edit, Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(events, (Events{"new"}));
    window.menuHandlers.Add("FileClose", [this] { return Note("close"); });
    QTest::keyClick(&edit, Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(IsEnabled("FileMenu", "FileClose"));
    QTest::keyClick(&window.Shell(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(events, (Events{"new", "close", "quit"}));
}

TEST_F(Menus, EditItemsActOnTheFocusedText) {
    field.SetText("1280");
    window.Open();
    auto& edit = window.Find<QLineEdit>("Field");
    edit.setFocus();
    edit.deselect();
    EXPECT_FALSE(IsEnabled("EditMenu", "EditCopy"));
    edit.setSelection(1, 2);
    ASSERT_TRUE(IsEnabled("EditMenu", "EditCopy"));
    window.Find<QAction>("EditCopy").trigger();
    EXPECT_EQ(TheDesktop().ClipboardText(), "28");
    ASSERT_TRUE(IsEnabled("EditMenu", "EditPaste"));
    edit.end(false);
    window.Find<QAction>("EditPaste").trigger();
    EXPECT_EQ(field.Text(), "128028");
    edit.clearFocus();
    window.Shell().setFocus();
    EXPECT_FALSE(IsEnabled("EditMenu", "EditPaste"));
}

TEST_F(Menus, AWindowMayEndInItsOwnMenuItem) {
    auto schedule = std::make_unique<TestWindow>();
    schedule->SetTitle("Schedule");
    TextField inside;
    inside.Place("Inside", {10, 10, 100, 22});
    schedule->AddControl(inside);
    schedule->menuHandlers.Add("FileClose", [&schedule] {
        schedule.reset();
        return true;
    });
    schedule->Open();
    QTest::keyClick(&schedule->Find<QLineEdit>("Inside"), Qt::Key_W, Qt::ControlModifier);
    LetEventsRun();
    EXPECT_EQ(schedule, nullptr);
    inside.SetText("still a control");
}

} // namespace
} // namespace larkspool
