#include "session/DirectoryFixture.h"
#include "support/OpenEdit.h"
#include "support/SmallDisk.h"

#include <filesystem>

namespace larkspool {
namespace {

// The window of favourites.
class Favorites : public DirectoryFixture {
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
    window.Listbox1.SetCell(1, 1, "8074");
    window.Listbox1.SetCell(0, 2, "Shed; antenna");
    Close(window);
    EXPECT_EQ(StoredFavorites(), "one.example;8073;Shed; antenna\ntwo.example;8074;Mine 2\n");
    EXPECT_EQ(Rows(), SiteAnd({"Mine 2", "Mine 1"})) << "until the page comes";
    Fetch().Deliver(Entry("World", "h:1"));
    EXPECT_EQ(Rows(), SiteAnd({"Mine 2", "World"})) << "a line of four parts is none";
    EXPECT_EQ(Cells(Open()), Strings{"two.example;8074;Mine 2"});
}

TEST_F(Favorites, TheContextMenuAddsAndDeletes) {
    Start();
    auto& window = Open();
    auto items = MenuOf(window);
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].caption, "Add entry");
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(window.Listbox1.contextualMenuAction(items[0]));
    }
    window.Listbox1.SetCell(1, 2, "Middle");
    window.Listbox1.SetListIndex(1);
    items = MenuOf(window);
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[1].caption, "Delete entry");
    window.Listbox1.SetListIndex(0); // the menu still means the row that it was opened for
    window.Listbox1.contextualMenuAction(items[1]);
    EXPECT_EQ(Cells(window), Strings(2, "Kiwi URL;8073;Kiwi Name"));
}

TEST_F(Favorites, ThereIsOneWindowAtATime) {
    Start();
    auto& window = Open();
    Console().Show();
    EXPECT_EQ(&Open(), &window) << "in front again";
    window.Close();
    EXPECT_NE(&Open(), &window) << "the one just closed doesn't come back";
    EXPECT_EQ(desktop.windows.size(), 2U);
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
    EXPECT_FALSE(IsFetching()) << "a program that ends fetches nothing";
}

TEST_F(Favorites, TheLastWindowSavesAndFetchesNothing) {
    Start();
    auto& window = Open();
    window.Listbox1.AddRow("h");
    Console().Close();
    EXPECT_FALSE(desktop.hasEnded);
    window.Close();
    EXPECT_TRUE(desktop.hasEnded);
    EXPECT_EQ(StoredFavorites(), "h;;\n");
    EXPECT_TRUE(desktop.httpSockets->empty());
}

TEST_F(Favorites, TheFileBesideTheProgramIsNeverEdited) {
    Put(FavoritesFile(SpecialFolder::Program), "beside.example;1;Beside\n");
    Start();
    auto& window = Open();
    EXPECT_TRUE(Cells(window).empty());
    window.Listbox1.AddRow("mine.example");
    Close(window);
    EXPECT_EQ(StoredFavorites(), "mine.example;;\n");
    Fetch().Deliver("");
    EXPECT_EQ(Rows(), SiteAnd({"Beside"}));
    Put(FavoritesFile(SpecialFolder::Program), "");
    FetchAgain("");
    EXPECT_EQ(Rows(), SiteAnd({})) << "it takes over even if it is empty";
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

TEST_F(Favorites, AFileThatCantBeReadIsNeverReplaced) {
    std::filesystem::create_directory(FavoritesFile().Path());
    Start();
    auto& window = Open();
    ASSERT_EQ(desktop.boxes.size(), 1U);
    window.Listbox1.AddRow("h");
    Close(window);
    EXPECT_TRUE(FavoritesFile().IsFolder());
    EXPECT_EQ(desktop.boxes.size(), 1U) << "told once is enough";
    Fetch().Deliver("");
    EXPECT_EQ(Rows(), SiteAnd({}));
}

} // namespace
} // namespace larkspool
