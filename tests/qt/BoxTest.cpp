#include "qt/OnScreen.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QMessageBox>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace larkspool {
namespace {

template <typename Box>
std::vector<Box*> Shown() {
    std::vector<Box*> shown;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* box = qobject_cast<Box*>(widget); box != nullptr && box->isVisible()) {
            shown.push_back(box);
        }
    }
    return shown;
}

class Boxes : public testing::Test {
  protected:
    void TearDown() override { CloseAll(); }

    static void CloseAll() {
        for (QMessageBox* box : Shown<QMessageBox>()) {
            box->close();
        }
        LetEventsRun();
    }

    void Ask() {
        answer.reset();
        TheDesktop().ShowDialog(dialog, [this](MessageDialog::Answer given) { answer = given; });
        EXPECT_FALSE(answer);
    }

    static QAbstractButton& Button(const QString& caption) {
        const auto buttons = Shown<QMessageBox>().front()->buttons();
        return **std::ranges::find(buttons, caption, &QAbstractButton::text);
    }

    MessageDialog dialog{"Larkspool", "OK", "Cancel", "Visit Website", true};
    std::optional<MessageDialog::Answer> answer;
};

TEST_F(Boxes, TheSameTextIsShownTwiceOnlyIfAnAnswerIsAwaited) {
    dialog.message = "no <b>such</b> receiver";
    TheDesktop().MsgBox(dialog.message);
    TheDesktop().MsgBox(dialog.message);
    TheDesktop().MsgBox("another matter");
    ASSERT_EQ(Shown<QMessageBox>().size(), 2U);
    EXPECT_EQ(Shown<QMessageBox>().front()->textFormat(), Qt::PlainText);
    Ask(); // the program may wait for the answer with its end
    Ask();
    EXPECT_EQ(Shown<QMessageBox>().size(), 3U);
    CloseAll();
    EXPECT_TRUE(answer);
    TheDesktop().MsgBox(dialog.message);
    EXPECT_EQ(Shown<QMessageBox>().size(), 1U);
}

TEST_F(Boxes, EachButtonHasItsAnswer) {
    using enum MessageDialog::Answer;
    for (const auto& [caption, expected] :
         {std::pair{"OK", Action}, std::pair{"Cancel", Cancel},
          std::pair{"Visit Website", Alternate}, std::pair{"", Cancel}}) {
        Ask();
        if (*caption != '\0') {
            Button(caption).click();
        }
        CloseAll();
        EXPECT_EQ(answer, expected) << caption;
    }
    dialog.cancelCaption.clear();
    dialog.alternateEnabled = false; // it leads nowhere
    Ask();
    EXPECT_FALSE(Button("Visit Website").isEnabled());
    EXPECT_EQ(Shown<QMessageBox>().front()->buttons().size(), 2);
}

TEST_F(Boxes, AFileDialogAnswersWithTheFileOrNothing) {
    const QString program = QCoreApplication::applicationFilePath(); // a file that there is
    std::vector<std::string> answers;
    for (const bool accepts : {false, true}) {
        TheDesktop().ShowOpenFileDialog("text/txt", [&](const std::optional<FolderItem>& item) {
            answers.push_back(item ? item->Name() : "none");
        });
        ASSERT_EQ(Shown<QFileDialog>().size(), 1U);
        QFileDialog& open = *Shown<QFileDialog>().front();
        EXPECT_TRUE(open.isModal()) << "else the window that asks could go meanwhile";
        open.selectFile(program);
        QMetaObject::invokeMethod(&open, accepts ? "accept" : "reject");
        LetEventsRun();
    }
    EXPECT_EQ(answers, (std::vector<std::string>{"none", "qt_tests"}));
}

} // namespace
} // namespace larkspool
