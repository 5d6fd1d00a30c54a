#include "directory/KiwiListClass.h"
#include "session/DirectoryFixture.h"

#include <set>

namespace larkspool {
namespace {

using Strings = std::vector<std::string>;

// The popup of receivers, from the fetch to a pick.
class Directory : public DirectoryFixture {};

TEST_F(Directory, ThePopupShowsTheSiteThenTheFavoritesThenTheWorld) {
    PutFavorites("one.example;1;Mine 1\nbad line\ntwo.example;2;Mine 2\n");
    Start();
    EXPECT_EQ(Fetch().url, "http://list.example:8080/public/");
    EXPECT_TRUE(Rows().empty());
    const std::string before = Target();
    Fetch().Deliver(Entry("World 1", "192.0.2.1:8073/") + Entry("World 2", "192.0.2.2:18073"));
    EXPECT_EQ(Rows(), SiteAnd({"Mine 2", "Mine 1", "World 1", "World 2"}));
    EXPECT_GE(Popup().ListIndex(), 0);
    EXPECT_LE(Popup().ListIndex(), 5);
    EXPECT_EQ(Target(), before) << "the row shown at random is no pick";
    const std::vector<std::pair<int, std::string>> picks = {{0, "site.example:8073"},
                                                            {6, "site.example:8079"},
                                                            {7, "two.example:2"},
                                                            {10, "192.0.2.2:18073"}};
    for (const auto& [row, target] : picks) {
        Popup().Pick(row);
        EXPECT_EQ(Target(), target);
    }
    EXPECT_EQ(Audio().socket.connects, 0) << "a pick doesn't connect";
    Restart();
    EXPECT_EQ(Target(), "192.0.2.2:18073");
}

TEST_F(Directory, EveryOneOfTheFirstSixRowsMayBeShown) {
    Start();
    std::set<int> shown;
    for (int i = 0; i < 200; ++i) {
        Console().GetKiwiList();
        Fetch().Deliver("");
        shown.insert(Popup().ListIndex());
    }
    EXPECT_EQ(shown, (std::set<int>{0, 1, 2, 3, 4, 5}));
}

TEST_F(Directory, WithoutASiteTheRandomRowIsOneThatIsThere) {
    deployment.siteHost.clear();
    Start();
    Fetch().Deliver("");
    EXPECT_TRUE(Rows().empty());
    for (int i = 0; i < 30; ++i) {
        Console().GetKiwiList();
        Fetch().Deliver(Entry("a", "h:1") + Entry("b", "h:2"));
        EXPECT_GE(Popup().ListIndex(), 0);
    }
    EXPECT_EQ(Rows(), (Strings{"a", "b"}));
}

TEST_F(Directory, WithoutADirectoryTheRestIsThereAtOnce) {
    deployment.directoryHost.clear();
    PutFavorites("one.example;1;Mine\n");
    Start();
    EXPECT_FALSE(IsFetching());
    EXPECT_EQ(Rows(), SiteAnd({"Mine"}));
    Popup().Pick(7);
    EXPECT_EQ(Target(), "one.example:1");
}

TEST_F(Directory, ADeadNetworkCostsOneMessageBox) {
    Start();
    Fetch().Fail(102);
    Console().GetKiwiList();
    Fetch().Fail(102);
    EXPECT_EQ(desktop.boxes, (Strings{"Could not download KiwiSDR list, error 102"}));
    EXPECT_TRUE(Rows().empty());
    ConnectAndStream();
    EXPECT_TRUE(Audio().socket.IsConnected());
}

TEST_F(Directory, AnyPageWillDo) {
    Start();
    Fetch().Deliver("<h1>Not found</h1>", 404);
    EXPECT_EQ(Rows(), site);
    Console().GetKiwiList();
    Fetch().Deliver(Entry("a", "h:1"), 500);
    EXPECT_EQ(Rows(), SiteAnd({"a"}));
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Directory, APickWhileAListIsOnItsWayIsIgnored) {
    Start();
    Fetch().Deliver(Entry("a", "h:1"));
    Popup().Pick(7);
    ASSERT_EQ(Target(), "h:1");
    Console().GetKiwiList();
    Popup().Pick(0);
    EXPECT_EQ(Target(), "h:1") << "the old row no longer says where it leads";
    EXPECT_EQ(Rows(), SiteAnd({"a"}));
    Fetch().Deliver(Entry("b", "h:2"));
    EXPECT_EQ(Target(), "h:1");
    Popup().Pick(7);
    EXPECT_EQ(Target(), "h:2");
}

TEST_F(Directory, ASecondFetchEndsTheFirst) {
    Start();
    Console().GetKiwiList();
    Console().GetKiwiList();
    EXPECT_EQ(desktop.httpSockets->size(), 1U) << "the first could still answer";
    Fetch().Deliver(Entry("a", "h:1"));
    EXPECT_EQ(Rows(), SiteAnd({"a"}));
}

TEST_F(Directory, OnlyTheUsersHandPicks) {
    Start();
    Fetch().Deliver(Entry("a", "h:1"));
    const std::string before = Target();
    Popup().SetListIndex(7);
    EXPECT_EQ(Target(), before);
    Popup().Pick(7); // the row that shows
    EXPECT_EQ(Target(), "h:1");
    Popup().SetListIndex(0);
    EXPECT_EQ(Target(), "h:1") << "one press, one pick";
    Popup().Press(); // and dismissed: the next change counts, whoever makes it
    Console().GetKiwiList();
    Fetch().Deliver("");
    EXPECT_EQ(Target(), "site.example:" + std::to_string(8073 + Popup().ListIndex()));
}

TEST_F(Directory, AnswersAfterTheEndAreHarmless) {
    Start();
    Console().Close();
    EXPECT_TRUE(desktop.hasEnded);
    EXPECT_TRUE(desktop.httpSockets->empty());
    app.reset();
    Start();
    desktop.quitRequested(QuitCause::User);
    EXPECT_TRUE(desktop.httpSockets->empty());
    Popup().Pick(0);
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Directory, APastedAddressIsCleaned) {
    Start();
    Console().TextFieldAddress.SetText("http://192.0.2.10:8074/");
    EXPECT_EQ(Target(), "192.0.2.10:8074");
    EXPECT_EQ(app->prefs.prefsLastURL, "192.0.2.10");
    EXPECT_EQ(app->prefs.prefsLastPort, 8074);
    Console().TextFieldAddress.SetText("http://192.0.2.11/");
    EXPECT_EQ(Target(), "http://192.0.2.11/:8074");
    EXPECT_EQ(app->prefs.prefsLastURL, "http://192.0.2.11/");
    Console().TextFieldAddress.SetText("http://http://192.0.2.12:1");
    EXPECT_EQ(Target(), "http://http://192.0.2.12:1:8074");
    Console().TextFieldPort.SetText("99999999999");
    EXPECT_EQ(app->prefs.prefsLastPort, 2147483647);
}

} // namespace
} // namespace larkspool
