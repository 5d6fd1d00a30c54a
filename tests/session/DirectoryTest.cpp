#include "session/DirectoryFixture.h"

#include <set>

namespace larkspool {
namespace {

// The popup of receivers, from the fetch to a pick.
class Directory : public DirectoryFixture {};

TEST_F(Directory, ThePopupShowsTheSiteThenTheFavoritesThenTheWorld) {
    Put(FavoritesFile(), "one.example;1;Mine 1\nbad line\ntwo.example;2;Mine 2\n");
    Start();
    EXPECT_EQ(Fetch().url, "http://list.example:8080/public/");
    EXPECT_TRUE(Rows().empty());
    const std::string before = Target();
    Fetch().Deliver(Entry("World 1", "192.0.2.1:8073/") + Entry("World 2", "192.0.2.2:18073"));
    EXPECT_EQ(Rows(), SiteAnd({"Mine 2", "Mine 1", "World 1", "World 2"}));
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
}

TEST_F(Directory, AnyOfTheFirstSixRowsThatAreThereMayBeShown) {
    const auto shown = [this](const std::string& page) {
        std::set<int> rows;
        for (int i = 0; i < 200; ++i) {
            FetchAgain(page);
            rows.insert(Popup().ListIndex());
        }
        return rows;
    };
    Start();
    EXPECT_EQ(shown(""), (std::set<int>{0, 1, 2, 3, 4, 5}));
    Quit();
    deployment.siteHost.clear();
    Start();
    EXPECT_EQ(shown(""), std::set<int>{-1});
    EXPECT_EQ(shown(Entry("a", "h:1") + Entry("b", "h:2")), (std::set<int>{0, 1}));
}

TEST_F(Directory, WithoutADirectoryTheRestIsThereAtOnce) {
    deployment.directoryHost.clear();
    Put(FavoritesFile(), "one.example;1;Mine\n");
    Start();
    EXPECT_FALSE(IsFetching());
    EXPECT_EQ(Rows(), SiteAnd({"Mine"}));
}

TEST_F(Directory, ADeadNetworkCostsOneMessageBox) {
    Start();
    Fetch().Fail(102);
    Console().GetKiwiList();
    Fetch().Fail(102);
    EXPECT_EQ(desktop.boxes, Strings{"Could not download KiwiSDR list, error 102"});
    EXPECT_TRUE(Rows().empty());
    Console().GetKiwiList();
    Fetch().Deliver("<h1>Not found</h1>" + Entry("a", "h:1"), 404);
    EXPECT_EQ(Rows(), SiteAnd({"a"})) << "any page will do";
}

TEST_F(Directory, APickWhileAListIsOnItsWayIsIgnored) {
    Start();
    Fetch().Deliver(Entry("a", "h:1"));
    Popup().Pick(7);
    ASSERT_EQ(Target(), "h:1");
    Console().GetKiwiList();
    Console().GetKiwiList();
    EXPECT_EQ(desktop.httpSockets->size(), 1U) << "the first could still answer";
    Popup().Pick(0);
    EXPECT_EQ(Target(), "h:1") << "the old row no longer says where it leads";
    EXPECT_EQ(Rows(), SiteAnd({"a"}));
    Fetch().Deliver(Entry("b", "h:2"));
    EXPECT_EQ(Target(), "h:1");
    Popup().Pick(7);
    EXPECT_EQ(Target(), "h:2");
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
}

TEST_F(Directory, AProgramThatEndsFetchesNothing) {
    Start();
    desktop.quitRequested(QuitCause::User);
    EXPECT_TRUE(desktop.httpSockets->empty());
    Popup().Pick(0); // a late click
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Directory, APastedAddressIsCleaned) {
    Start();
    Console().TextFieldAddress.SetText("http://192.0.2.10:8074/");
    EXPECT_EQ(Target(), "192.0.2.10:8074");
    Restart();
    EXPECT_EQ(Target(), "192.0.2.10:8074");
}

} // namespace
} // namespace larkspool
