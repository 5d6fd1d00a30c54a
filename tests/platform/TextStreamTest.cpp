#include "platform/RolledFile.h"
#include "platform/TemporaryFolder.h"
#include "platform/TextInputStream.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace larkspool {
namespace {

using TextStreamTest = TemporaryFolder;
using Lines = std::vector<std::string>;

Lines AllLines(TextInputStream stream) {
    Lines lines;
    while (!stream.EndOfFile())
        lines.push_back(stream.ReadLine());
    EXPECT_EQ(stream.ReadLine(), "");
    EXPECT_FALSE(stream.Failed());
    return lines;
}

TEST_F(TextStreamTest, LinesOfAnySystemAreRead) {
    const struct {
        std::string text;
        Lines lines;
    } cases[] = {
        {"", {}},
        {"\n", {""}},
        {"a", {"a"}},
        {"a\nb", {"a", "b"}},
        {"a\r\nb\r\n", {"a", "b"}},
        {"a\rb\r", {"a", "b"}},
        {"a\n\nb", {"a", "", "b"}},
        {"a\r\r\nb\n\rc", {"a", "", "b", "", "c"}},
        {"\xEF\xBB\xBF"
         "2\nx",
         {"2", "x"}},
        {std::string("a\0b\nc", 5), {std::string("a\0b", 3), "c"}},
    };
    for (const auto& item : cases) {
        EXPECT_EQ(AllLines(TextInputStream::FromText(item.text)), item.lines) << item.text;
        auto file = TextInputStream::Open(FileWith("lines.txt", item.text));
        ASSERT_TRUE(file.has_value());
        EXPECT_EQ(AllLines(std::move(*file)), item.lines) << item.text;
    }
}

TEST_F(TextStreamTest, AnEndOfLineAcrossTwoReadsIsOne) {
    for (std::size_t length = 16380; length <= 16388; ++length) {
        const std::string first(length, 'a');
        auto file = TextInputStream::Open(FileWith("lines.txt", first + "\r\nb\r\n"));
        ASSERT_TRUE(file.has_value());
        EXPECT_EQ(AllLines(std::move(*file)), (Lines{first, "b"}));
    }
}

TEST_F(TextStreamTest, AnEndlessLineIsCutAndTheNextIsFound) {
    const std::string longest(TextInputStream::LongestLine, 'a');
    auto file = TextInputStream::Open(
        FileWith("lines.txt", longest + "\n" + longest + "dropped\r\n" + longest + longest));
    ASSERT_TRUE(file.has_value());
    EXPECT_FALSE(file->HasCutLines());
    EXPECT_EQ(file->ReadLine(), longest);
    EXPECT_FALSE(file->HasCutLines());
    EXPECT_EQ(file->ReadLine(), longest);
    EXPECT_TRUE(file->HasCutLines());
    EXPECT_EQ(AllLines(std::move(*file)), Lines{longest});
}

TEST_F(TextStreamTest, AFileThatGrowsBecomesTheOlderOneAtItsBound) {
    const FolderItem file = Item("new/log.txt");
    const FolderItem older = Item("new/older.txt");
    RolledFile rolled(file, older, 10);
    for (const char* line : {"1234\n", "5678\n", "9\n", "longer than the bound\n", "last\n"}) {
        EXPECT_TRUE(rolled.Append(line));
    }
    EXPECT_EQ(AllLines(*TextInputStream::Open(file)), Lines{"last"});
    EXPECT_EQ(AllLines(*TextInputStream::Open(older)), Lines{"longer than the bound"});
    RolledFile full(FolderItem("/dev/full"), older, 10);
    EXPECT_FALSE(full.Append("lost\n"));
}

} // namespace
} // namespace larkspool
