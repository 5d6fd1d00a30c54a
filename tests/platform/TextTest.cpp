#include "platform/Text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace larkspool {
namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double largest = std::numeric_limits<double>::max();

TEST(Text, NumbersShowAsAPersonWouldWriteThem) {
    const struct {
        double value;
        std::string_view text;
    } cases[] = {{0, "0"},
                 {-0.0, "0"},
                 {std::nan(""), "0"},
                 {-infinite, "0"},
                 {-9.89999999999999858, "-9.9"},
                 {0.1 + 0.2, "0.3"},
                 {14074.001, "14074.001"},
                 {1e-5, "0.00001"},
                 {-1.0 / 3, "-0.333333333333"},
                 {999999999999.5, "1000000000000"},
                 {1e20, "100000000000000000000"},
                 {0.5e-14 - 0.1, "-0.1"}};
    for (const auto& item : cases)
        EXPECT_EQ(Str(item.value), item.text);
    EXPECT_EQ(Str(1e308).size(), 309U);
    EXPECT_EQ(Str(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(Str(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(Str(std::uint8_t{200}), "200");
    EXPECT_EQ(Str(-127), "-127");
}

TEST(Text, TheLeadingNumberOfATextIsRead) {
    const struct {
        std::string_view text;
        double value;
    } cases[] = {{"", 0},
                 {"abc", 0},
                 {"0.2 sec", 0.2},
                 {" \t7x", 7},
                 {"\n7", 0},
                 {"+5", 5},
                 {"-5", -5},
                 {"- 5", 0},
                 {".5", 0.5},
                 {"-.", 0},
                 {"1.2.3", 1.2},
                 {"1,5", 1},
                 {"0x10", 0},
                 {"inf", 0},
                 {"nan", 0},
                 {"1e3", 1000},
                 {"1E+3", 1000},
                 {"1e-3x", 0.001},
                 {"2e", 2},
                 {"2e+", 2},
                 {"1e999", largest},
                 {"-1e999", -largest},
                 {"0e99999999999", 0},
                 {"1e99999999999999999999", largest}};
    for (const auto& item : cases)
        EXPECT_EQ(Val(item.text), item.value) << item.text;
    EXPECT_FALSE(std::signbit(Val("-0")));
    const std::string zeros(400, '0');
    EXPECT_EQ(Val("1" + zeros), largest);
    EXPECT_EQ(Val("0." + zeros + "1"), 0);
    EXPECT_EQ(Val("0." + zeros + "1e401"), 1);
    EXPECT_EQ(Val("1" + zeros + "e-400"), 1);
    EXPECT_EQ(Val(std::string_view("12345").substr(0, 2)), 12);
}

TEST(Text, WhatStrWritesValReadsBack) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        const auto value = std::bit_cast<double>(random());
        if (!std::isfinite(value))
            continue;
        const std::string text = Str(value);
        EXPECT_EQ(text.find_first_not_of("-.0123456789"), std::string::npos) << text;
        EXPECT_LT(text.size(), 345U);
        EXPECT_NEAR(Val(text) / value, 1, 6e-12) << text;
        EXPECT_EQ(Str(Val(text)), text);
        const double hertz = static_cast<double>(random() % 30000000) / 1000;
        EXPECT_EQ(Val(Str(hertz)), hertz);
    }
}

TEST(Text, AMaskShapesANumber) {
    const struct {
        double value;
        std::string_view mask;
        std::string_view text;
    } cases[] = {{7, "00", "07"},
                 {2027, "0000", "2027"},
                 {14200000, "000000000", "014200000"},
                 {1e12, "000000000", "1000000000000"},
                 {0.5, "#.0", ".5"},
                 {0, "#.0", ".0"},
                 {0.25, "#.0", ".3"},
                 {-0.25, "#.0", "-.3"},
                 {-0.04, "#.0", ".0"},
                 {-0.05, "#.0", "-.1"},
                 {2.345, "##.00", "2.35"},
                 {1.005, "##.00", "1.01"},
                 {9.995, "##.00", "10.00"},
                 {99.9996, "#####.000", "100.000"},
                 {0.096, "##.00", ".10"},
                 {-7, "00", "-07"},
                 {0.5, "0", "1"},
                 {1.5, "#.##", "1.5"},
                 {12, "0#0", "012"},
                 {infinite, "0.0", "0.0"},
                 {std::nan(""), "00", "00"},
                 {5, "", "5"}};
    for (const auto& item : cases)
        EXPECT_EQ(Format(item.value, item.mask), item.text) << item.value << " by " << item.mask;
    EXPECT_EQ(Format(-largest, "##.00").size(), 313U);
}

TEST(Text, NoCharacterIsCutInHalf) {
    const struct {
        std::string_view text;
        std::size_t most;
        std::string_view cut;
    } cases[] = {{"abc", 3, "abc"},
                 {"abc", 2, "ab"},
                 {"a\u00e9", 2, "a"},
                 {"a\u00e9", 3, "a\u00e9"},
                 {"\u20ac", 2, ""},
                 {"x\U0001F4FB", 4, "x"},
                 {"x\U0001F4FB", 5, "x\U0001F4FB"},
                 {"abc", 0, ""},
                 {"\x80\x80\x80\x80\x80\x80", 5, "\x80\x80\x80\x80\x80"}};
    for (const auto& item : cases)
        EXPECT_EQ(CutUtf8(item.text, item.most), item.cut);
}

TEST(Text, WholePartsNeverOverflow) {
    EXPECT_EQ(WholePart(2.9), 2);
    EXPECT_EQ(WholePart(-2.9), -2);
    EXPECT_EQ(WholePart(std::nan("")), 0);
    EXPECT_EQ(WholePart(infinite), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(WholePart(9223372036854775807.0), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(WholePart(-1e300), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(WholePart<int>(2147483647.9), 2147483647);
    EXPECT_EQ(WholePart<int>(-2147483648.9), std::numeric_limits<int>::min());
    EXPECT_EQ(WholePart<std::int16_t>(40000), 32767);
}

} // namespace
} // namespace larkspool
