#include "directory/DirectoryScanner.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace larkspool {
namespace {

std::string NameLine(const std::string& name) {
    return "<span class='cl-name'>" + name + "</span>\n";
}

std::string AddressLine(const std::string& address) {
    return "<a href='http://" + address + "' target='_blank'>open</a>\n";
}

std::string Entry(const std::string& name, const std::string& address) {
    return NameLine(name) + AddressLine(address);
}

// "name|host|port", one an entry.
std::vector<std::string> Scan(std::string_view page) {
    ReceiverList list;
    DirectoryScanner(list).ScanPage(page);
    std::vector<std::string> rows;
    for (std::size_t i = 0; i < list.Count(); ++i) {
        rows.push_back(list.names[i] + "|" + list.urls[i] + "|" + std::to_string(list.ports[i]));
    }
    return rows;
}

TEST(DirectoryPage, OnlyWhatIsToldInItsWayIsTaken) {
    const struct {
        const char* what;
        std::string page;
        std::vector<std::string> rows;
    } cases[] = {
        {"receivers between other lines",
         "<html>\n" + Entry("<b>\xFF\xFE", "192.0.2.10:8073/") + "<hr>\n\n" +
             Entry("Grüße", "lark.example:8074/?f=9750am") + "</html>",
         {"<b>\xFF\xFE|192.0.2.10|8073", "Grüße|lark.example|8074"}},
        {"a blank line between", NameLine("a") + "\n" + AddressLine("h:1"), {}},
        {"three names in a row", NameLine("a") + NameLine("b") + Entry("c", "h:1"), {"c|h|1"}},
        {"an address in the name's line",
         "'cl-name'>a</span><a href='http://x:1'>\n" + AddressLine("h:2"),
         {"a|h|2"}},
        {"a name without end, then a good one", "'cl-name'>a\n" + Entry("b", "h:1"), {"b|h|1"}},
        {"the first end of two", Entry("a</span>b", "h:1"), {"a|h|1"}},
        {"nothing behind the marker", "'cl-name'\n</span>\n" + AddressLine("h:1"), {}},
        {"an end in place of the bracket",
         "'cl-name'</span>a</span>\n" + AddressLine("h:1"),
         {"/span>a|h|1"}},
        {"no port", Entry("a", "192.0.2.1/"), {}},
        {"more than one colon", Entry("a", "[2001:db8::1]:8073/") + Entry("b", "u:p@h:1"), {}},
        {"an address without end", NameLine("a") + "<a href='http://h:1\n", {}},
        {"another scheme", NameLine("a") + "<a href='https://h:1'>\n", {}},
        {"a port that is none", Entry("a", "h:x"), {"a|h|0"}},
        {"line ends of two characters, and none at the end",
         "'cl-name'>a</span>\r\n<a href='http://h:1'",
         {"a|h|1"}},
        {"a name at the very end", NameLine("a"), {}},
    };
    for (const auto& [what, page, rows] : cases) {
        EXPECT_EQ(Scan(page), rows) << what;
    }
}

TEST(DirectoryPage, TheLargestPagesOfNonsenseAreReadInTheirTime) {
    constexpr std::size_t Size = std::size_t{8} * 1024 * 1024;
    for (const std::string piece : {"'cl-name'", "\n", "'cl-name'></span>\n<a href='http://::\n"}) {
        std::string page;
        while (page.size() < Size) {
            page += piece;
        }
        EXPECT_EQ(Scan(page).size(), 0U) << piece;
    }
    EXPECT_EQ(Scan(Entry("a", "h:" + std::string(Size, '9'))),
              std::vector<std::string>{"a|h|9223372036854775807"});
}

} // namespace
} // namespace larkspool
