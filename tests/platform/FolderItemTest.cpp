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
    EXPECT_EQ(FolderItem(folder.Path() / "larkspool/").Name(), "larkspool");
    EXPECT_TRUE(FolderItem("relative").Parent().IsFolder());
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

} // namespace
} // namespace larkspool
