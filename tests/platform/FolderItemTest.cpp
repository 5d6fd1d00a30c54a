#include "platform/FolderItem.h"
#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace larkspool {
namespace {

using FolderItemTest = TemporaryFolder;

TEST_F(FolderItemTest, OnlyPlainNamesMakeAChild) {
    for (const std::string& name :
         {std::string(), std::string("."), std::string(".."), std::string("a/b"),
          std::string("/etc"), std::string("a/"), std::string("../x"), std::string("a\0b", 3)})
        EXPECT_FALSE(folder.Child(name).has_value()) << name;
    for (const std::string name : {"...", ".hidden", "a b", "\u00fcber;:*?.WAV", "a\\b"}) {
        const auto child = folder.Child(name);
        ASSERT_TRUE(child.has_value()) << name;
        EXPECT_EQ(child->Name(), name);
        EXPECT_EQ(child->Parent().Path(), folder.Path());
    }
}

TEST_F(FolderItemTest, ANameTooLongForTheDiskFailsWithoutHarm) {
    auto item = folder.Child(std::string(5000, 'x'));
    ASSERT_TRUE(item.has_value());
    EXPECT_FALSE(item->Exists());
    EXPECT_FALSE(item->IsFolder());
    EXPECT_EQ(item->Length(), 0U);
    EXPECT_FALSE(item->Delete());
    EXPECT_FALSE(item->CreateFolder());
    EXPECT_FALSE(item->MoveTo(Item("y")));
}

TEST_F(FolderItemTest, MovingReplacesTheOldFileWhole) {
    FolderItem fresh = FileWith("prefs.new", "new");
    FolderItem old = FileWith("prefs", "the old one");
    EXPECT_EQ(old.Length(), 11U);
    EXPECT_TRUE(fresh.MoveTo(old));
    EXPECT_EQ(ContentOf(old), "new");
    EXPECT_FALSE(fresh.Exists());
    EXPECT_FALSE(fresh.MoveTo(old));
    EXPECT_FALSE(old.MoveTo(Item("missing/prefs")));
    EXPECT_TRUE(old.Delete());
    EXPECT_FALSE(old.Delete());
}

TEST_F(FolderItemTest, FoldersAreMadeWithTheirParents) {
    FolderItem deep(folder.Path() / "config" / "larkspool/");
    EXPECT_EQ(deep.Name(), "larkspool");
    EXPECT_TRUE(deep.CreateFolder());
    EXPECT_TRUE(deep.CreateFolder());
    EXPECT_TRUE(deep.IsFolder());
    EXPECT_FALSE(deep.Parent().Delete()) << "a folder that isn't empty";
    FileWith("file", "x");
    EXPECT_FALSE(Item("file").CreateFolder());
    EXPECT_FALSE(Item("file/below").CreateFolder());
    EXPECT_TRUE(FolderItem("relative").Parent().IsFolder());
}

} // namespace
} // namespace larkspool
