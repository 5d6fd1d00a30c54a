#include "qt/OnScreen.h"

#include "platform/TextField.h"

#include <QAction>
#include <QLineEdit>
#include <QMenu>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace larkspool {
namespace {

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
