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

    // The fetch under way from the version server; null if there is none.
    VirtualHTTPSocket* Fetch() {
        const auto& all = *desktop.httpSockets;
        const auto found = std::find_if(all.begin(), all.end(), [](const VirtualHTTPSocket* s) {
            return s->url.find("/version/versionb.html") != std::string::npos;
        });
        return found == all.end() ? nullptr : *found;
    }
    void Answer(const std::string& content, int status = 200) {
        ASSERT_NE(Fetch(), nullptr);
        Fetch()->pageReceived(Fetch()->url, status, content);
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
    EXPECT_EQ(Fetch(), nullptr);
    desktop.Advance(9);
    ASSERT_NE(Fetch(), nullptr);
    EXPECT_EQ(Fetch()->url, "http://updates.example.net/version/versionb.html?p=0007130M1205");
    Answer("LATEST 1.4.0");
    EXPECT_TRUE(desktop.dialogs.empty());
    Fetch()->url.clear();
    desktop.Advance(5'000);
    EXPECT_EQ(Fetch(), nullptr);
}

TEST_F(Update, ANewerReleaseIsOfferedAndTheUserDecides) {
    using Answered = MessageDialog::Answer;
    desktop.answers = {Answered::Action, Answered::Cancel, Answered::Alternate};
    StartAndWait();
    Answer("1.4.0");
    ASSERT_EQ(desktop.dialogs.size(), 1U);
    EXPECT_EQ(desktop.dialogs[0].message,
              "A new version of this program, 1.4.0, is now available. Would you like your web "
              "browser to open the download page so you can get a copy?");
    EXPECT_EQ(desktop.dialogs[0].actionCaption, "Yes");
    EXPECT_EQ(desktop.dialogs[0].cancelCaption, "Not Now");
    EXPECT_EQ(desktop.dialogs[0].alternateCaption, "Skip This Version");
    EXPECT_EQ(desktop.openedPages, std::vector<std::string>{"https://example.net/get"});
    Answer("1.4.0"); // "Not Now"
    EXPECT_EQ(desktop.openedPages.size(), 1U);
    EXPECT_EQ(app->prefs.lastUpdateCheckVersion, 0U);
    Answer("1.4.0"); // "Skip This Version"
    Restart();
    desktop.Advance(10);
    EXPECT_NE(Fetch()->url.find("p=0007140M"), std::string::npos) << "a skip outlives the program";
}

TEST_F(Update, APageThatIsNoReplyIsOfferedAndHarmsNothing) {
    StartAndWait();
    Answer("", 404);
    ASSERT_EQ(desktop.dialogs.size(), 1U);
    EXPECT_NE(desktop.dialogs[0].message.find("program, , is"), std::string::npos);
    Answer(std::string(8'000'000, '9'), 500);
    EXPECT_LT(desktop.dialogs.back().message.size(), 400U);
}

TEST_F(Update, NobodyIsAskedWithoutAServerOrAgainstTheUsersWish) {
    deployment.versionHost.clear();
    StartAndWait();
    EXPECT_EQ(Fetch(), nullptr);
    app->prefs.noUpdateCheck = true;
    deployment.versionHost = "updates.example.net";
    Restart();
    desktop.Advance(10);
    EXPECT_EQ(Fetch(), nullptr);
}

TEST_F(Update, AProgramThatIsQuittingAsksNoMore) {
    Start();
    desktop.quitRequested(QuitCause::User);
    desktop.Advance(10);
    EXPECT_EQ(Fetch(), nullptr);
    app.reset();
    StartAndWait();
    desktop.quitRequested(QuitCause::Signal);
    EXPECT_EQ(Fetch(), nullptr) << "an answer could still come";
}

} // namespace
} // namespace larkspool
