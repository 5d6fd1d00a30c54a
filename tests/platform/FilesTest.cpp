#include "support/Files.h"
#include "platform/BinaryStream.h"
#include "platform/RolledFile.h"
#include "platform/TextInputStream.h"
#include "support/VirtualDesktop.h"

#include <gtest/gtest.h>

#include <utility>

namespace larkspool {
namespace {

using Lines = std::vector<std::string>;

class Files : public testing::Test {
  protected:
    FolderItem Item(const std::string& name) const { return FolderItem(folder.Path() / name); }
    FolderItem FileWith(const std::string& bytes) const {
        Put(Item("file"), bytes);
        return Item("file");
    }

    VirtualDesktop desktop;
    const FolderItem folder = desktop.Folder(SpecialFolder::Documents);
};

TEST_F(Files, OnlyPlainNamesMakeAChild) {
    for (const char* name : {"", ".", "..", "a/b", "/etc", "a/", "../x"}) {
        EXPECT_FALSE(folder.Child(name).has_value()) << name;
    }
    EXPECT_FALSE(folder.Child(std::string("a\0b", 3)).has_value());
    for (const char* name : {"...", ".hidden", "a b", "\u00fcber;:*?.WAV", "a\\b"}) {
        ASSERT_TRUE(folder.Child(name).has_value()) << name;
        EXPECT_EQ(folder.Child(name)->Name(), name);
        EXPECT_EQ(folder.Child(name)->Parent().Path(), folder.Path());
    }
    EXPECT_EQ(FolderItem(folder.Path() / "larkspool/").Name(), "larkspool");
    EXPECT_TRUE(FolderItem("relative").Parent().IsFolder());
    FolderItem item = Item(std::string(5000, 'x')); // too long for the disk
    EXPECT_FALSE(item.Exists() || item.IsFolder() || item.Length() > 0 || item.Delete() ||
                 item.CreateFolder() || item.MoveTo(Item("y")));
}

TEST_F(Files, WhatIsNoFileIsNotOpened) {
    const FolderItem file = FileWith("abcd");
    const FolderItem endless("/dev/zero");
    const FolderItem withNul = Item(std::string("file\0x", 6));
    for (const FolderItem& item : {folder, Item("missing"), endless, withNul}) {
        EXPECT_FALSE(BinaryStream::Open(item).has_value()) << item.Path();
        EXPECT_FALSE(BinaryStream::OpenForUpdate(item).has_value()) << item.Path();
    }
    for (const FolderItem& item : {folder, Item("missing/file"), withNul}) {
        EXPECT_FALSE(BinaryStream::Create(item).has_value()) << item.Path();
    }
    EXPECT_EQ(ContentOf(file), "abcd");
}

TEST_F(Files, AFieldThatIsCutReadsAsNothingAndEndsTheFile) {
    const std::string bytes("\0\0\0\7abc", 7);
    auto file = BinaryStream::Open(FileWith(bytes));
    ASSERT_TRUE(file.has_value());
    BinaryStream memory = BinaryStream::FromBytes(bytes);
    for (BinaryStream* const stream : {&memory, &*file}) {
        EXPECT_EQ(stream->ReadInt32(), 7);
        EXPECT_EQ(stream->ReadInt32(), 0);
        EXPECT_TRUE(stream->EndOfFile());
        stream->SetPosition(4);
        EXPECT_EQ(stream->ReadString(~std::size_t{0}), "") << "a claim takes memory";
        EXPECT_TRUE(stream->EndOfFile());
        EXPECT_FALSE(stream->Failed());
    }
    file->SetPosition(0);
    FileWith("\1\1"); // it shrinks meanwhile
    EXPECT_EQ(file->ReadInt32(), 0);
    EXPECT_TRUE(file->EndOfFile());
}

Lines AllLines(TextInputStream stream) {
    Lines lines;
    while (!stream.EndOfFile()) {
        lines.push_back(stream.ReadLine());
    }
    EXPECT_EQ(stream.ReadLine(), "");
    EXPECT_FALSE(stream.Failed());
    return lines;
}

TEST_F(Files, LinesOfAnySystemAreRead) {
    const std::pair<std::string, Lines> cases[] = {
        {"", {}},
        {"\n", {""}},
        {"a", {"a"}},
        {"a\nb", {"a", "b"}},
        {"a\r\nb\r\n", {"a", "b"}},
        {"a\r\r\nb\n\rc", {"a", "", "b", "", "c"}},
        {"\xEF\xBB\xBF"
         "2\nx",
         {"2", "x"}},
        {std::string("a\0b\nc", 5), {std::string("a\0b", 3), "c"}}};
    for (const auto& [text, lines] : cases) {
        EXPECT_EQ(AllLines(TextInputStream::FromText(text)), lines) << text;
        EXPECT_EQ(AllLines(TextInputStream::Open(FileWith(text)).value()), lines) << text;
    }
    for (std::size_t length = 16380; length <= 16388; ++length) { // an end across two reads
        const std::string first(length, 'a');
        const FolderItem file = FileWith(first + "\r\nb\r\n");
        EXPECT_EQ(AllLines(TextInputStream::Open(file).value()), (Lines{first, "b"}));
    }
}

TEST_F(Files, AnEndlessLineIsCutAndTheNextIsFound) {
    const std::string longest(TextInputStream::LongestLine, 'a');
    auto file = TextInputStream::Open(
        FileWith(longest + "\n" + longest + "dropped\r\n" + longest + longest));
    ASSERT_TRUE(file.has_value());
    for (const bool cuts : {false, true}) {
        EXPECT_EQ(file->ReadLine(), longest);
        EXPECT_EQ(file->HasCutLines(), cuts);
    }
    EXPECT_EQ(AllLines(std::move(*file)), Lines{longest});
}

TEST_F(Files, AFileThatGrowsBecomesTheOlderOneAtItsBound) {
    const FolderItem file = Item("new/log.txt");
    const FolderItem older = Item("new/older.txt");
    RolledFile rolled(file, older, 10);
    for (const char* line : {"1234\n", "5678\n", "9\n", "longer than the bound\n", "last\n"}) {
        EXPECT_TRUE(rolled.Append(line));
    }
    EXPECT_EQ(ContentOf(file), "last\n");
    EXPECT_EQ(ContentOf(older), "longer than the bound\n");
    EXPECT_FALSE(RolledFile(FolderItem("/dev/full"), older, 10).Append("lost\n"));
}

} // namespace
} // namespace larkspool
