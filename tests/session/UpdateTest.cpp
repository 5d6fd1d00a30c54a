#include "support/ConsoleFixture.h"

#include <algorithm>

namespace larkspool {
namespace {

// How users learn of a newer release.
class Update : public ConsoleFixture {
  protected:
    Update() {
        deployment.versionHost = "updates.example.net";
        deployment.downloadPage = "https://example.net/get";
        deployment.programNumber = 7;
    }

    // What a server is being asked for; "" if nothing.
    std::string Asked() { return desktop.httpSockets->empty() ? "" : Fetch().url; }
    VirtualHTTPSocket& Fetch() { return *desktop.httpSockets->back(); }
    void Answer(const std::string& content) {
        ASSERT_NE(Asked(), "");
        Fetch().Deliver(content);
        desktop.Advance(0);
    }
    void StartAndWait() {
        Start();
        desktop.Advance(10);
    }
};

TEST_F(Update, TheServerIsAskedOnceSomeSecondsAfterTheStart) {
    Start();
    desktop.Advance(1);
    EXPECT_EQ(Asked(), "");
    desktop.Advance(9);
    EXPECT_EQ(Asked(), "http://updates.example.net/version/versionb.html?p=0007130M1205");
    for (const char* reply : {"LATEST", "LATEST 1.4.0", "LATEST\r\n1.4.0"}) {
        Answer(reply);
        EXPECT_TRUE(desktop.dialogs.empty()) << reply;
    }
    Answer(std::string(8'000'000, '9')); // no reply, but harmless
    EXPECT_LT(desktop.dialogs.at(0).message.size(), 400U);
    Fetch().url.clear();
    desktop.Advance(5'000);
    EXPECT_EQ(Asked(), "");
}

TEST_F(Update, ANewerReleaseIsOfferedAndTheUserDecides) {
    using Answered = MessageDialog::Answer;
    desktop.answers = {Answered::Action, Answered::Cancel};
    StartAndWait();
    Answer("1.4.0");
    ASSERT_EQ(desktop.dialogs.size(), 1U);
    EXPECT_EQ(desktop.dialogs[0].actionCaption, "Yes");
    EXPECT_EQ(desktop.dialogs[0].cancelCaption, "Not Now");
    EXPECT_EQ(desktop.dialogs[0].alternateCaption, "Skip This Version");
    EXPECT_EQ(desktop.openedPages, Strings{"https://example.net/get"});
    Answer("1.4.0"); // "Not Now"
    EXPECT_EQ(app->prefs.lastUpdateCheckVersion, 0U);
    struct Case {
        const char* reply;
        const char* offered;
        const char* asked; // after a restart, since a skip outlives the program
    };
    for (const auto& [reply, offered, asked] :
         {Case{"1.4.0 is out", "1.4.0", "140"}, Case{"1.2.1\r\n", "1.2.1", "130"}, // an older one
          Case{"9999999999.9", "9999999999.9", "429"}, Case{"<!DOCTYPE html>", "<!DOCTYPE", "130"},
          Case{"latest", "latest", "130"}, Case{" LATEST", "", "130"}}) {
        desktop.answers = {Answered::Alternate};
        Answer(reply);
        EXPECT_TRUE(desktop.dialogs.back().message.starts_with(
            "A new version of this program, " + std::string(offered) + ", is now available"))
            << reply;
        Quit();
        StartAndWait();
        EXPECT_NE(Asked().find(std::string("p=0007") + asked + "M"), std::string::npos) << reply;
    }
    EXPECT_EQ(desktop.openedPages.size(), 1U);
}

TEST_F(Update, NothingIsAskedWithoutAServerAgainstTheUsersWishOrAtTheEnd) {
    for (const double seconds : {1.0, 10.0}) { // before it asks, and while it waits for the answer
        Start();
        desktop.Advance(seconds);
        desktop.quitRequested(QuitCause::User);
        desktop.Advance(10);
        EXPECT_EQ(Asked(), "") << seconds;
    }
    deployment.versionHost.clear();
    StartAndWait();
    EXPECT_EQ(Asked(), "");
    app->prefs.noUpdateCheck = true;
    Quit();
    deployment.versionHost = "updates.example.net";
    StartAndWait();
    EXPECT_EQ(Asked(), "");
}

} // namespace
} // namespace larkspool
