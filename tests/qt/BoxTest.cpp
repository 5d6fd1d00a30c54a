#include "qt/OnScreen.h"

#include <QAbstractButton>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace larkspool {
namespace {

std::vector<QMessageBox*> OpenBoxes() { return Shown<QMessageBox>(); }

void CloseBoxes() {
    for (QMessageBox* box : OpenBoxes()) {
        box->close();
    }
    LetEventsRun();
}

QAbstractButton& ButtonOf(const QMessageBox& box, const QString& caption) {
    const auto buttons = box.buttons();
    const auto named = [&](const QAbstractButton* button) { return button->text() == caption; };
    return **std::find_if(buttons.begin(), buttons.end(), named);
}

class Boxes : public testing::Test {
  protected:
    void TearDown() override { CloseBoxes(); }

    std::optional<MessageDialog::Answer> answer;
};

TEST_F(Boxes, TheSameTextIsNotShownTwice) {
    TheDesktop().MsgBox("no <b>such</b> receiver");
    TheDesktop().MsgBox("no <b>such</b> receiver");
    TheDesktop().MsgBox("another matter");
    ASSERT_EQ(OpenBoxes().size(), 2U);
    EXPECT_EQ(OpenBoxes().front()->textFormat(), Qt::PlainText);
    CloseBoxes();
    TheDesktop().MsgBox("another matter");
    EXPECT_EQ(OpenBoxes().size(), 1U);
}

// The program may wait for it with its end.
TEST_F(Boxes, AnAnswerIsNotLostToABoxWithTheSameText) {
    MessageDialog dialog;
    dialog.message = "The favorites could not be saved.";
    TheDesktop().MsgBox(dialog.message);
    const auto ask = [this, &dialog] {
        TheDesktop().ShowDialog(dialog, [this](MessageDialog::Answer given) { answer = given; });
    };
    ask();
    ask();
    EXPECT_EQ(OpenBoxes().size(), 2U);
    CloseBoxes();
    EXPECT_TRUE(answer);
}

TEST_F(Boxes, AMissingFunctionIsToldOnceAndTheProgramGoesOn) {
    QtSoundLibrary library(QStringLiteral("/no/such/library.so"));
    const auto call = [&library] { library.StartSoundOutput(0, 1.0); };
    EXPECT_THROW(call(), FunctionNotFound);
    TheDesktop().Raise(call);
    TheDesktop().Raise(call);
    ASSERT_EQ(OpenBoxes().size(), 1U);
    const QString text = OpenBoxes().front()->text();
    EXPECT_TRUE(text.contains("StartSoundOutput") && text.contains("/no/such/library.so"));
}

TEST_F(Boxes, EachButtonHasItsAnswer) {
    MessageDialog dialog{"Larkspool", "OK", "Cancel", "Visit Website", true};
    const auto asked = [this, &dialog](const std::function<void(QMessageBox&)>& act) {
        answer.reset();
        TheDesktop().ShowDialog(dialog, [this](MessageDialog::Answer given) { answer = given; });
        EXPECT_FALSE(answer);
        act(*OpenBoxes().front());
        LetEventsRun();
        return answer;
    };
    const auto click = [](const char* caption) {
        return [caption](QMessageBox& box) { ButtonOf(box, caption).click(); };
    };
    EXPECT_EQ(asked(click("OK")), MessageDialog::Answer::Action);
    EXPECT_EQ(asked(click("Cancel")), MessageDialog::Answer::Cancel);
    EXPECT_EQ(asked(click("Visit Website")), MessageDialog::Answer::Alternate);
    EXPECT_EQ(asked([](QMessageBox& box) { box.close(); }), MessageDialog::Answer::Cancel);
    dialog.cancelCaption.clear();
    dialog.alternateEnabled = false; // it leads nowhere
    asked([](QMessageBox& box) {
        EXPECT_FALSE(ButtonOf(box, "Visit Website").isEnabled());
        EXPECT_EQ(box.buttons().size(), 2);
        box.close();
    });
}

QFileDialog* OpenFileDialog() {
    const auto open = Shown<QFileDialog>();
    return open.empty() ? nullptr : open.front();
}

TEST_F(Boxes, AFileDialogAnswersWithTheFileOrNothing) {
    const QTemporaryDir folder;
    QFile file(folder.filePath("schedule.txt"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    int answers = 0;
    std::optional<FolderItem> chosen;
    const auto note = [&](std::optional<FolderItem> item) {
        ++answers;
        chosen = std::move(item);
    };
    TheDesktop().ShowOpenFileDialog("text/txt", note);
    ASSERT_NE(OpenFileDialog(), nullptr);
    EXPECT_TRUE(OpenFileDialog()->isModal()) << "else the window that asks could go meanwhile";
    EXPECT_EQ(answers, 0);
    OpenFileDialog()->reject();
    EXPECT_EQ(answers, 1);
    EXPECT_FALSE(chosen);
    LetEventsRun();

    TheDesktop().ShowOpenFileDialog("text/txt", note);
    OpenFileDialog()->setDirectory(folder.path());
    OpenFileDialog()->selectFile(file.fileName());
    OpenFileDialog()->findChild<QWidget*>("fileNameEdit")->setFocus();
    LetEventsRun();
    QMetaObject::invokeMethod(OpenFileDialog(), "accept");
    EXPECT_EQ(answers, 2);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->Name(), "schedule.txt");
    LetEventsRun();
}

} // namespace
} // namespace larkspool
