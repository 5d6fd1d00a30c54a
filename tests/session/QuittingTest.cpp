#include "support/ConsoleFixture.h"
#include "support/SmallDisk.h"

#include <filesystem>

namespace larkspool {
namespace {

// The menu, the last things, and the end.
class Quitting : public ConsoleFixture {
  protected:
    void Perform(const std::string& item) {
        desktop.Perform(MenuItem{item, "", ""}, &Console());
        desktop.Advance(0);
    }
    bool Answers(const std::string& item) {
        return desktop.Answers(MenuItem{item, "", ""}, &Console());
    }

    // A folder in the file's place: it can neither be read nor written over.
    void SpoilPreferences() {
        const auto file = desktop.Folder(SpecialFolder::Preferences).Child("Larkspool Prefs");
        std::filesystem::create_directories(file->Path() / "occupied");
    }
};

TEST_F(Quitting, EveryWayOutHangsUpAndKeepsTheSettings) {
    for (const QuitCause cause : {QuitCause::User, QuitCause::Signal, QuitCause::Logout}) {
        Start();
        ConnectAndStream();
        const std::string frequency = std::to_string(7000 + static_cast<int>(cause));
        Console().TextFieldFreq.SetText(frequency);
        VirtualTCPSocket& audio = Audio().socket;
        desktop.quitRequested(cause);
        EXPECT_TRUE(desktop.hasEnded);
        EXPECT_FALSE(audio.IsConnected());
        app.reset();
        desktop.queue.Clear();
        Start();
        EXPECT_EQ(Console().TextFieldFreq.Text(), frequency);
        Quit();
    }
}

TEST_F(Quitting, SettingsThatCannotBeSavedAreSpokenOfOnceAndQuittingGoesOn) {
    SpoilPreferences();
    Start();
    Console().CheckBoxNetwork.SetValue(true);
    desktop.quitRequested(QuitCause::User);
    desktop.quitRequested(QuitCause::User);
    desktop.udpSockets.at(0)->Deliver("ofreq:7055000");
    desktop.Advance(0);
    EXPECT_EQ(Console().TextFieldFreq.Text(), "10000") << "nobody drives a console that is ending";
    ASSERT_EQ(desktop.dialogs.size(), 1U);
    EXPECT_NE(desktop.dialogs[0].message.find("could not be saved"), std::string::npos);
    EXPECT_FALSE(desktop.hasEnded) << "before the user has read it";
    desktop.quitRequested(QuitCause::Signal);
    EXPECT_TRUE(desktop.hasEnded);
    app.reset();
    desktop.queue.Clear();

    Start();
    desktop.answers = {MessageDialog::Answer::Action};
    Quit();
    EXPECT_EQ(desktop.dialogs.size(), 2U);
}

TEST_F(Quitting, ASignalBeforeTheConsoleIsFilledWritesNothing) {
    app = std::make_unique<App>(desktop, deployment);
    desktop.quitRequested(QuitCause::Signal);
    EXPECT_TRUE(desktop.hasEnded);
    EXPECT_FALSE(desktop.Folder(SpecialFolder::Preferences).Child("Larkspool Prefs")->Exists());
}

TEST_F(Quitting, AFailedSaveLeavesTheOldFileWhole) {
    Start();
    Console().TextFieldAddress.SetText("192.0.2.10");
    Quit();
    for (const rlim_t room : {0U, 1U, 300U, 1000U}) {
        Start();
        Console().TextFieldAddress.SetText("lost.example.net");
        {
            const SmallDisk disk(room);
            Quit(QuitCause::Signal);
        }
        EXPECT_TRUE(desktop.dialogs.empty());
        Start();
        EXPECT_EQ(Console().TextFieldAddress.Text(), "192.0.2.10") << room;
    }
    const auto folder = desktop.Folder(SpecialFolder::Preferences).Path();
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1)
        << "nothing half-written stays behind";
}

TEST_F(Quitting, TheMenuEnablesWhatIsAnswered) {
    deployment.productPage = "http://127.0.0.1:8080/";
    Start();
    EXPECT_EQ(desktop.menuBar.menus[0].items[5].role, MenuRole::Quit);
    EXPECT_EQ(desktop.menuBar.menus[0].items[5].shortcut, "Cmd+Q");
    EXPECT_TRUE(Answers("EditAboutLarkspool"));
    EXPECT_TRUE(Answers("FileVisitWebsiteForInstructions"));
    EXPECT_FALSE(Answers("FileClose")) << "only a schedule window closes by the menu";
    EXPECT_FALSE(Answers("FileSaveSchedule"));
}

TEST_F(Quitting, AboutSaysWhatRunsAndOpensThePage) {
    deployment.productPage = "http://127.0.0.1:8080/";
    Start();
    desktop.answers = {MessageDialog::Answer::Action, MessageDialog::Answer::Alternate};
    Perform("EditAboutLarkspool");
    ASSERT_EQ(desktop.dialogs.size(), 1U);
    EXPECT_EQ(desktop.dialogs[0].message.rfind("Larkspool 1.3.0b4", 0), 0U);
    EXPECT_EQ(desktop.dialogs[0].actionCaption, "OK");
    EXPECT_EQ(desktop.dialogs[0].cancelCaption, "");
    EXPECT_EQ(desktop.dialogs[0].alternateCaption, "Visit Website");
    EXPECT_TRUE(desktop.openedPages.empty());
    Perform("EditAboutLarkspool");
    Perform("FileVisitWebsiteForInstructions");
    EXPECT_EQ(desktop.openedPages, std::vector<std::string>(2, "http://127.0.0.1:8080/"));
}

TEST_F(Quitting, WithoutAProductPageNothingOffersOne) {
    Start();
    EXPECT_FALSE(Answers("FileVisitWebsiteForInstructions"));
    Perform("EditAboutLarkspool");
    EXPECT_FALSE(desktop.dialogs[0].alternateEnabled);
    Restart();
    Perform("EditAboutLarkspool"); // the menu answers to the program that runs now
    EXPECT_EQ(desktop.dialogs.size(), 2U);
}

} // namespace
} // namespace larkspool
