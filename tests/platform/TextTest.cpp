#include "platform/Text.h"

#include <gtest/gtest.h>

#include <bit>
#include <random>

namespace larkspool {
namespace {

constexpr double Infinite = std::numeric_limits<double>::infinity();
constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double Largest = std::numeric_limits<double>::max();

TEST(Text, NumbersShowAsAPersonWouldWriteThem) {
    const std::pair<double, std::string_view> cases[] = {{-0.0, "0"},
                                                         {NoNumber, "0"},
                                                         {-Infinite, "0"},
                                                         {-9.89999999999999858, "-9.9"},
                                                         {14074.001, "14074.001"},
                                                         {1e-5, "0.00001"},
                                                         {-1.0 / 3, "-0.333333333333"},
                                                         {999999999999.5, "1000000000000"},
                                                         {1e20, "100000000000000000000"}};
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(Str(value), text);
    }
    EXPECT_EQ(Str(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(Str(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(Str(std::uint8_t{200}), "200");
}

TEST(Text, TheLeadingNumberOfATextIsRead) {
    const std::string zeros(400, '0');
    const std::pair<std::string, double> cases[] = {{"", 0},
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
                                                    {"1E+3", 1000},
                                                    {"1e-3x", 0.001},
                                                    {"2e+", 2},
                                                    {"-1e999", -Largest},
                                                    {"0e99999999999", 0},
                                                    {"1e99999999999999999999", Largest},
                                                    {"1" + zeros, Largest},
                                                    {"0." + zeros + "1", 0},
                                                    {"0." + zeros + "1e401", 1},
                                                    {"1" + zeros + "e-400", 1}};
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(Val(text), value) << text;
    }
    EXPECT_FALSE(std::signbit(Val("-0")));
    EXPECT_EQ(Val(std::string_view("12345").substr(0, 2)), 12);
}

TEST(Text, WhatStrWritesValReadsBack) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        const auto value = std::bit_cast<double>(random());
        if (std::isfinite(value)) {
            const std::string text = Str(value);
            EXPECT_EQ(text.find_first_not_of("-.0123456789"), std::string::npos) << text;
            EXPECT_NEAR(Val(text) / value, 1, 6e-12) << text;
            EXPECT_EQ(Str(Val(text)), text);
        }
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
                 {-7, "00", "-07"},
                 {14200000, "000000000", "014200000"},
                 {1e12, "000000000", "1000000000000"},
                 {0.25, "#.0", ".3"},
                 {-0.04, "#.0", ".0"},
                 {-0.05, "#.0", "-.1"},
                 {1.005, "##.00", "1.01"},
                 {9.995, "##.00", "10.00"},
                 {0.096, "##.00", ".10"},
                 {0.5, "0", "1"},
                 {1.5, "#.##", "1.5"},
                 {12, "0#0", "012"},
                 {Infinite, "0.0", "0.0"},
                 {NoNumber, "00", "00"},
                 {5, "", "5"}};
    for (const auto& [value, mask, text] : cases) {
        EXPECT_EQ(Format(value, mask), text) << value << " by " << mask;
    }
    EXPECT_EQ(Format(-Largest, "##.00").size(), 313U);
}

TEST(Text, NoCharacterIsCutInHalf) {
    const struct {
        std::string_view text;
        std::size_t most;
        std::string_view cut;
    } cases[] = {
        {"abc", 2, "ab"},          {"a\u00e9", 2, "a"},
        {"a\u00e9", 3, "a\u00e9"}, {"\u20ac", 2, ""},
        {"x\U0001F4FB", 4, "x"},   {"\x80\x80\x80\x80\x80\x80", 5, "\x80\x80\x80\x80\x80"}};
    for (const auto& [text, most, cut] : cases) {
        EXPECT_EQ(CutUtf8(text, most), cut);
    }
}

TEST(Text, WholePartsNeverOverflow) {
    using Limits = std::numeric_limits<std::int64_t>;
    const std::pair<double, std::int64_t> cases[] = {{2.9, 2},
                                                     {-2.9, -2},
                                                     {NoNumber, 0},
                                                     {Infinite, Limits::max()},
                                                     {0x1p63, Limits::max()},
                                                     {-1e300, Limits::min()}};
    for (const auto& [value, whole] : cases) {
        EXPECT_EQ(WholePart(value), whole) << value;
    }
    EXPECT_EQ(WholePart<int>(2147483647.9), 2147483647);
    EXPECT_EQ(WholePart<std::int16_t>(-40000), -32768);
}

} // namespace
} // namespace larkspool
