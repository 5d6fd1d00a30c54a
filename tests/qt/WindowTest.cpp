#include "qt/OnScreen.h"

#include "platform/CheckBox.h"
#include "platform/Label.h"
#include "platform/PushButton.h"
#include "platform/TextField.h"
#include "platform/qt/Fonts.h"
#include "platform/qt/Palettes.h"

#include <QLabel>
#include <QLineEdit>

#include <gtest/gtest.h>

namespace larkspool {
namespace {

class Windows : public testing::Test {
  protected:
    Windows() {
        window.SetTitle("Window");
        window.minimumWidth = 500;
        window.maximumWidth = 600;
        label.Place("Label", {400, 10, 120, 20});
        label.SetText("Waterfall min -120 db");
        box.Place("Box", {530, 10, 60, 20}, {false, true, true, false});
        field.Place("Field", {10, 40, 580, 22}, {true, true, true, false});
        for (Control* control : {static_cast<Control*>(&label), static_cast<Control*>(&box),
                                 static_cast<Control*>(&field)}) {
            window.AddControl(*control);
        }
    }

    Label label;
    CheckBox box;
    TextField field;
    TestWindow window;
};

TEST_F(Windows, TheUsersResizeReachesModelAndControls) {
    window.Open();
    const int menuHeight = window.Shell().height() - 300;
    window.Shell().resize(550, 280 + menuHeight);
    LetEventsRun();
    EXPECT_EQ(window.Width(), 550);
    EXPECT_EQ(window.Height(), 280);
    EXPECT_EQ(window.Find<QWidget>("Box").x(), 480);
    EXPECT_EQ(window.Find<QWidget>("Field").width(), 530);
    EXPECT_EQ(window.Shell().minimumWidth(), 500);
    EXPECT_EQ(window.Shell().maximumWidth(), 600);
}

TEST_F(Windows, ALabelEndsBeforeTheBoxThatRunsIntoIt) {
    window.Open();
    EXPECT_EQ(window.Find<QLabel>("Label").width(), 120);
    window.Resize(520, 300);
    EXPECT_EQ(window.Find<QLabel>("Label").width(), 450 - 4 - 400);
    window.Resize(600, 300);
    EXPECT_EQ(window.Find<QLabel>("Label").width(), 120);
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
    class Stubborn : public TestWindow {
      public:
        bool Event_CancelClose(bool /*appQuitting*/) override { return stays; }
        bool stays = true;
    };
    Stubborn stubborn;
    stubborn.SetTitle("Stubborn");
    int closed = 0;
    stubborn.closed = [&closed] { ++closed; };
    stubborn.Open();
    auto& shell = stubborn.Shell();
    shell.close();
    EXPECT_TRUE(shell.isVisible());
    stubborn.stays = false;
    shell.close();
    EXPECT_FALSE(shell.isVisible());
    EXPECT_EQ(closed, 1);
    stubborn.Show();
    EXPECT_TRUE(shell.isVisible());
}

TEST_F(Windows, TheFirstResizeMovesNothing) {
    TheDesktop().menuBar.menus = {{"FileMenu", "&File", {{"FileNew", "New", "Cmd+N"}}}};
    QFont large = QApplication::font();
    large.setPixelSize(20); // too large for the label
    QApplication::setFont(large);
    window.Open();
    const int top = window.Find<QLineEdit>("Field").mapTo(&window.Shell(), QPoint()).y();
    window.Shell().resize(550, 400);
    LetEventsRun();
    EXPECT_EQ(window.Find<QLineEdit>("Field").mapTo(&window.Shell(), QPoint()).y(), top);
    EXPECT_GT(top, 40);
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

TEST_F(Windows, TheKeyboardBeginsWhereTheWindowSaysAndTabGoesOn) {
    TextField second;
    second.Place("Second", {10, 5, 50, 22});
    window.AddControl(second);
    window.firstFocus = &field;
    window.Open();
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "Field");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "Second");
}

TEST(Palettes, TheSchemeIsTakenFromTheDesktopsPalette) {
    EXPECT_TRUE(IsDark(DarkPalette()));
    EXPECT_FALSE(IsDark(LightPalette()));
    QPalette desktops;
    desktops.setColor(QPalette::Window, QColor(0x35, 0x35, 0x35));
    desktops.setColor(QPalette::WindowText, Qt::white);
    EXPECT_TRUE(IsDark(desktops));
    desktops.setColor(QPalette::Window, QColor(0xef, 0xef, 0xef));
    desktops.setColor(QPalette::WindowText, Qt::black);
    EXPECT_FALSE(IsDark(desktops));
}

} // namespace
} // namespace larkspool
