#include "support/ConsoleFixture.h"
#include "support/SmallDisk.h"

#include <filesystem>
#include <functional>

namespace larkspool {
namespace {

// The menu, the last things, and the end.
class Quitting : public ConsoleFixture {
  protected:
    FolderItem Settings() {
        return *desktop.Folder(SpecialFolder::Preferences).Child("Larkspool Prefs");
    }
};

TEST_F(Quitting, EveryWayOutHangsUpAndKeepsTheSettings) {
    const std::function<void()> ways[] = {[this] { desktop.quitRequested(QuitCause::User); },
                                          [this] { desktop.quitRequested(QuitCause::Signal); },
                                          [this] { desktop.quitRequested(QuitCause::Logout); },
                                          [this] { Console().Close(); }};
    for (const auto& way : ways) {
        const auto frequency = std::to_string(7000 + (&way - ways));
        SCOPED_TRACE(frequency);
        Start();
        ConnectAndStream();
        Console().TextFieldFreq.SetText(frequency);
        way();
        EXPECT_TRUE(desktop.hasEnded);
        EXPECT_FALSE(Audio().socket.IsConnected());
        EXPECT_FALSE(Console().Visible());
        Start();
        EXPECT_EQ(Console().TextFieldFreq.Text(), frequency);
    }
}

TEST_F(Quitting, AFailedSaveLeavesTheOldFileWholeAndIsSpokenOfOnce) {
    Start();
    Console().TextFieldAddress.SetText("192.0.2.10");
    Restart();
    for (const rlim_t room : {0U, 1U, 300U, 1000U}) {
        Console().TextFieldAddress.SetText("lost.example.net");
        {
            const SmallDisk disk(room);
            Quit(QuitCause::Signal);
        }
        EXPECT_TRUE(desktop.dialogs.empty());
        Start();
        EXPECT_EQ(Console().TextFieldAddress.Text(), "192.0.2.10") << room;
    }
    const std::filesystem::directory_iterator left(Settings().Parent().Path());
    EXPECT_EQ(std::distance(left, {}), 1) << "nothing half-written stays behind";

    Console().CheckBoxNetwork.SetValue(true);
    {
        const SmallDisk disk(0);
        desktop.quitRequested(QuitCause::User);
        desktop.quitRequested(QuitCause::User);
    }
    desktop.udpSockets.at(0)->Deliver("ofreq:7055000");
    desktop.Advance(0);
    EXPECT_EQ(Console().TextFieldFreq.Text(), "10000") << "nobody drives a console that is ending";
    ASSERT_EQ(desktop.dialogs.size(), 1U);
    EXPECT_NE(desktop.dialogs[0].message.find("could not be saved"), std::string::npos);
    EXPECT_FALSE(desktop.hasEnded) << "before the user has read it";
    desktop.quitRequested(QuitCause::Signal);
    EXPECT_TRUE(desktop.hasEnded);

    Start();
    desktop.answers = {MessageDialog::Answer::Action};
    const SmallDisk disk(0);
    Quit();
    EXPECT_EQ(desktop.dialogs.size(), 2U);
}

TEST_F(Quitting, SettingsThatLieElsewhereByALinkStayThere) {
    const FolderItem elsewhere = *desktop.Folder(SpecialFolder::Documents).Child("settings");
    Start();
    Quit();
    std::filesystem::rename(Settings().Path(), elsewhere.Path());
    std::filesystem::create_symlink(elsewhere.Path(), Settings().Path());
    Start();
    Console().TextFieldAddress.SetText("192.0.2.10");
    Restart();
    EXPECT_EQ(Console().TextFieldAddress.Text(), "192.0.2.10");
    EXPECT_TRUE(std::filesystem::is_symlink(Settings().Path()));
}

TEST_F(Quitting, AboutSaysWhatRunsAndOpensThePageIfThereIsOne) {
    app = std::make_unique<App>(desktop, deployment);
    desktop.quitRequested(QuitCause::Signal); // before the console is filled
    EXPECT_TRUE(desktop.hasEnded);
    EXPECT_FALSE(Settings().Exists());

    const MenuItem visit{"FileVisitWebsiteForInstructions", "", ""};
    Start();
    Perform("EditAboutLarkspool", &Console());
    EXPECT_FALSE(desktop.dialogs.at(0).alternateEnabled);
    EXPECT_FALSE(desktop.Answers(visit, &Console()));
    deployment.productPage = "http://127.0.0.1:8080/";
    Restart(); // the menu answers to the program that runs now
    desktop.answers = {MessageDialog::Answer::Action, MessageDialog::Answer::Alternate};
    Perform("EditAboutLarkspool", &Console());
    EXPECT_TRUE(desktop.dialogs.at(1).message.starts_with("Larkspool 1.3.0b4"));
    EXPECT_EQ(desktop.dialogs[1].alternateCaption, "Visit Website");
    EXPECT_TRUE(desktop.openedPages.empty());
    Perform("EditAboutLarkspool", &Console());
    Perform(visit.name, &Console());
    EXPECT_EQ(desktop.openedPages, Strings(2, "http://127.0.0.1:8080/"));
}

} // namespace
} // namespace larkspool
