#include "directory/WindowFavoriteKiwis.h"
#include "support/ConsoleFixture.h"
#include "support/Files.h"
#include "support/OpenEdit.h"
#include "support/SmallDisk.h"

#include <filesystem>
#include <set>

namespace larkspool {
namespace {

// A program with a public directory and a site of its own, and the user's favorites on disk.
class Directory : public ConsoleFixture {
  protected:
    Directory() {
        deployment.directoryHost = "list.example:8080";
        deployment.siteHost = "site.example";
        deployment.siteNames = {"S1", "S2", "S3", "S4", "S5", "S6", "S7"};
    }

    static std::string Entry(const std::string& name, const std::string& address) {
        return "<span class='cl-name'>" + name + "</span>\n<a href='http://" + address + "'>\n";
    }

    bool IsFetching() { return !desktop.httpSockets->empty() && !Fetch().url.empty(); }
    VirtualHTTPSocket& Fetch() { return *desktop.httpSockets->back(); }
    PopupMenu& Popup() { return Console().PopupMenuKiwiList; }
    Strings Rows() {
        Strings rows;
        for (int i = 0; i < Popup().ListCount(); ++i) {
            rows.push_back(Popup().RowText(i));
        }
        return rows;
    }
    // The rows of a popup that shows these below the site.
    static Strings SiteAnd(const Strings& others) {
        Strings rows = {"S1", "S2", "S3", "S4", "S5", "S6", "S7"};
        rows.insert(rows.end(), others.begin(), others.end());
        return rows;
    }
    std::string Target() {
        return Console().TextFieldAddress.Text() + ":" + Console().TextFieldPort.Text();
    }

    FolderItem FavoritesFile(SpecialFolder folder = SpecialFolder::ApplicationData) {
        return *desktop.Folder(folder).Child("favorite-kiwi.txt");
    }
    std::string StoredFavorites() { return ContentOf(FavoritesFile()); }
};

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
            Console().GetKiwiList();
            Fetch().Deliver(page);
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

TEST_F(Directory, ADeadNetworkCostsAMessageBoxAndNoReceiverOfOnesOwn) {
    Put(FavoritesFile(), "one.example;1;Mine\n");
    Start();
    Fetch().Fail(102);
    Console().GetKiwiList();
    Fetch().Fail(102);
    EXPECT_EQ(desktop.boxes, Strings(2, "Could not download KiwiSDR list, error 102"));
    EXPECT_EQ(Rows(), SiteAnd({"Mine"}));
    Popup().Pick(7);
    EXPECT_EQ(Target(), "one.example:1");
    FavoritesFile().Delete();
    Console().GetKiwiList();
    Fetch().Deliver("<h1>Not found</h1>" + Entry("a", "h:1"), 404);
    EXPECT_EQ(Rows(), SiteAnd({"a"})) << "any page will do";
    deployment.directoryHost.clear();
    Restart();
    EXPECT_FALSE(IsFetching());
    EXPECT_EQ(Rows(), SiteAnd({}));
}

TEST_F(Directory, OnlyTheUsersHandPicksAndOnlyWhileNoListIsOnItsWay) {
    Start();
    Fetch().Deliver(Entry("a", "h:1"));
    const std::string before = Target();
    Popup().SetListIndex(7);
    EXPECT_EQ(Target(), before);
    Popup().Pick(7); // the row that shows
    EXPECT_EQ(Target(), "h:1");
    Popup().SetListIndex(0);
    EXPECT_EQ(Target(), "h:1") << "one press, one pick";
    Console().GetKiwiList();
    Console().GetKiwiList();
    EXPECT_EQ(desktop.httpSockets->size(), 1U) << "the first could still answer";
    Popup().Pick(6);
    EXPECT_EQ(Target(), "h:1") << "the old row no longer says where it leads";
    EXPECT_EQ(Rows(), SiteAnd({"a"}));
    Fetch().Deliver(Entry("b", "h:2"));
    EXPECT_EQ(Target(), "h:1");
    Popup().Pick(7);
    EXPECT_EQ(Target(), "h:2");
}

// The window of favorites.
class Favorites : public Directory {
  protected:
    // Picks the menu item; the window that is in front then.
    WindowFavoriteKiwis& Open() {
        Perform("FileFavorites", &Console());
        return dynamic_cast<WindowFavoriteKiwis&>(*desktop.windows.back());
    }

    static Strings Cells(const WindowFavoriteKiwis& window) {
        const Listbox& list = window.Listbox1;
        Strings rows;
        for (int i = 0; i < list.ListCount(); ++i) {
            rows.push_back(list.Cell(i, 0) + ";" + list.Cell(i, 1) + ";" + list.Cell(i, 2));
        }
        return rows;
    }

    static std::vector<MenuItem> MenuOf(const WindowFavoriteKiwis& window) {
        std::vector<MenuItem> items;
        EXPECT_TRUE(window.Listbox1.constructContextualMenu(items));
        return items;
    }

    void Close(Window& window) {
        window.Close();
        desktop.Advance(0);
    }
};

TEST_F(Favorites, WhatIsEditedIsStoredAndListedAfterTheNextFetch) {
    Put(FavoritesFile(), "one.example;8073;Mine 1\nlost;line\ntwo.example;abc;Mine 2\n");
    Start();
    Fetch().Deliver("");
    auto& window = Open();
    EXPECT_TRUE(window.Visible());
    EXPECT_EQ(Cells(window), (Strings{"one.example;8073;Mine 1", "two.example;0;Mine 2"}));
    for (const auto& column : window.Listbox1.columns) {
        EXPECT_TRUE(column.editable) << column.heading;
    }
    window.Resize(800, 500);
    EXPECT_EQ(window.Listbox1.Bounds(), (Rect{0, 0, 800, 500}));
    window.Listbox1.SetCell(1, 1, "8074");
    window.Listbox1.SetCell(0, 2, "Shed; antenna");
    Close(window);
    EXPECT_EQ(StoredFavorites(),
              "one.example;8073;Shed; antenna\ntwo.example;8074;Mine 2\nlost;line\n");
    EXPECT_EQ(Rows(), SiteAnd({"Mine 2", "Mine 1"})) << "until the page comes";
    Fetch().Deliver(Entry("World", "h:1"));
    EXPECT_EQ(Rows(), SiteAnd({"Mine 2", "World"})) << "a line of four parts is none";
    EXPECT_EQ(Cells(Open()), Strings{"two.example;8074;Mine 2"});
}

TEST_F(Favorites, AListThatNobodyHasChangedIsNotWritten) {
    const std::string text =
        "# mine\none.example;8073;Shed; antenna\r\n\ntwo.example; 80;b\nthree.example;8o73;c\nhalf";
    Put(FavoritesFile(), text);
    Start();
    Close(Open());
    EXPECT_EQ(StoredFavorites(), text);
    auto& window = Open();
    FavoritesFile().Delete();
    Close(window);
    EXPECT_FALSE(FavoritesFile().Exists()) << "somebody else has done away with it";
    Close(Open());
    EXPECT_TRUE(FavoritesFile().Exists()) << "the first visit makes an empty one";
    Put(FavoritesFile(), text);
    Open().Listbox1.SetCell(0, 2, "c");
    Close(*desktop.windows.back());
    EXPECT_EQ(StoredFavorites(),
              "two.example;80;c\nthree.example;8o73;c\n# mine\none.example;8073;Shed; "
              "antenna\n\nhalf\n")
        << "a port that is being typed stays as it is";
}

TEST_F(Favorites, WhatAnotherProgramHasWrittenMeanwhileStays) {
    Put(FavoritesFile(), "a;1;a\nb;2;b\nb;2;b\nc;3;c\n# old\n");
    Start();
    auto& window = Open();
    Put(FavoritesFile(), "new;5;new\nb;2;b\nb;2;b\nc;3;changed\nmine;8073;too\n# new\n");
    window.Listbox1.SetCell(0, 2, "A");
    window.Listbox1.DeleteRow(1);
    window.Listbox1.contextualMenuAction(MenuOf(window)[0]);
    window.Listbox1.SetCell(3, 0, "mine");
    window.Listbox1.SetCell(3, 2, "too");
    Close(window);
    EXPECT_EQ(StoredFavorites(),
              "a;1;A\nb;2;b\nc;3;c\nmine;8073;too\nnew;5;new\nc;3;changed\n# new\n");
    auto& next = Open();
    FavoritesFile().Delete();
    std::filesystem::create_directory(FavoritesFile().Path());
    next.Listbox1.DeleteRow(0);
    Close(next);
    EXPECT_TRUE(FavoritesFile().IsFolder());
    EXPECT_EQ(desktop.boxes.size(), 1U) << "what can't be read isn't overwritten";
}

TEST_F(Favorites, ThereIsOneWindowAtATimeWhoseMenuAddsAndDeletesAndTheLastFetchesNothing) {
    Start();
    auto& window = Open();
    Console().Show();
    EXPECT_EQ(&Open(), &window) << "in front again";
    window.Close();
    auto& next = Open();
    EXPECT_NE(&next, &window) << "the one just closed doesn't come back";
    EXPECT_EQ(desktop.windows.size(), 2U);

    auto items = MenuOf(next);
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].caption, "Add entry");
    for (const char* name : {"First\npasted", "Middle", "Last"}) {
        EXPECT_TRUE(next.Listbox1.contextualMenuAction(items[0]));
        next.Listbox1.SetCell(next.Listbox1.LastIndex(), 2, name);
    }
    next.Listbox1.SetListIndex(1);
    items = MenuOf(next);
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[1].caption, "Delete entry");
    next.Listbox1.SetListIndex(0); // the menu still means the row that it was opened for
    next.Listbox1.contextualMenuAction(items[1]);
    Console().Close();
    EXPECT_FALSE(desktop.hasEnded);
    next.Close();
    EXPECT_TRUE(desktop.hasEnded);
    EXPECT_EQ(StoredFavorites(), "Kiwi URL;8073;First pasted\nKiwi URL;8073;Last\n");
    EXPECT_TRUE(desktop.httpSockets->empty());
    Popup().Pick(0); // a late click
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Favorites, AnEditThatIsOpenIsKeptByTheCloseButtonAndAtQuit) {
    Put(FavoritesFile(), "h;1;old\n");
    Start();
    {
        auto& window = Open();
        const OpenEdit edit(window.Listbox1, 2, "closed");
        window.Close();
    }
    desktop.Advance(0);
    EXPECT_EQ(StoredFavorites(), "h;1;closed\n");
    Fetch().Deliver("");
    const OpenEdit edit(Open().Listbox1, 2, "quit");
    desktop.quitRequested(QuitCause::Signal);
    EXPECT_EQ(StoredFavorites(), "h;1;quit\n");
    EXPECT_FALSE(IsFetching());
}

TEST_F(Favorites, TheFileBesideTheProgramIsListedButNeverEdited) {
    Put(FavoritesFile(SpecialFolder::Program), "beside.example;1;Beside\n");
    Start();
    auto& window = Open();
    EXPECT_TRUE(Cells(window).empty());
    window.Listbox1.AddRow("mine.example");
    Close(window);
    EXPECT_EQ(StoredFavorites(), "mine.example;;\n");
    Fetch().Deliver("");
    EXPECT_EQ(Rows(), SiteAnd({"Beside"}));
}

TEST_F(Favorites, AFailedSaveLeavesTheOldFileAndSaysSo) {
    Put(FavoritesFile(), "h;1;old\n");
    Start();
    auto& window = Open();
    window.Listbox1.SetCell(0, 2, "new");
    {
        const SmallDisk disk(5);
        Close(window);
    }
    EXPECT_EQ(StoredFavorites(), "h;1;old\n");
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_NE(desktop.boxes[0].find(FavoritesFile().Path().string()), std::string::npos);
    EXPECT_TRUE(IsFetching());
}

// A folder in the file's place can't be opened; this file of the kernel's opens, and reading fails.
TEST_F(Favorites, AFileThatCantBeReadIsNeverReplaced) {
    Start();
    for (const bool opens : {false, true}) {
        SCOPED_TRACE(opens);
        if (opens) {
            std::filesystem::remove(FavoritesFile().Path());
            std::filesystem::create_symlink("/sys/class/net/lo/duplex", FavoritesFile().Path());
        } else {
            std::filesystem::create_directory(FavoritesFile().Path());
        }
        desktop.boxes.clear();
        auto& window = Open();
        EXPECT_EQ(desktop.boxes.size(), 1U);
        window.Listbox1.AddRow("h");
        Close(window);
        EXPECT_EQ(desktop.boxes.size(), 1U) << "nothing is tried, and told once is enough";
    }
    EXPECT_TRUE(std::filesystem::is_symlink(FavoritesFile().Path()));
    Fetch().Deliver("");
    EXPECT_EQ(Rows(), SiteAnd({}));
}

} // namespace
} // namespace larkspool
