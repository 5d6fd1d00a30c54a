#include "platform/Date.h"
#include "platform/MemoryBlock.h"
#include "platform/Random.h"
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

std::string Fields(const Date& date) {
    std::string text = std::to_string(date.Year());
    for (const int value : {date.Month(), date.Day(), date.Hour(), date.Minute(), date.Second()}) {
        text += " " + std::to_string(value);
    }
    return text;
}

Date At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    Date date;
    date.SetCalendarDay(year, month, day);
    date.SetTimeOfDay(hour, minute, second);
    return date;
}

Date With(Date date, void (Date::*set)(int), int value) {
    (date.*set)(value);
    return date;
}

TEST(Date, EveryMomentHasItsFieldsAndFieldsRollIntoTheirNeighbors) {
    constexpr int Most = std::numeric_limits<int>::max();
    const std::pair<Date, std::string_view> moments[] = {
        {Date::FromTotalSeconds(0), "1904 1 1 0 0 0"},
        {Date::FromUnixSeconds(2000000000), "2033 5 18 3 33 20"},
        {Date::FromUnixSeconds(-0.25), "1969 12 31 23 59 59"},
        {Date::FromUnixSeconds(-1e-20), "1970 1 1 0 0 0"},
        {Date::FromUnixSeconds(Infinite), "9999 12 31 23 59 59"},
        {Date::FromTotalSeconds(-1e300), "1 1 1 0 0 0"},
        {Date::FromTotalSeconds(NoNumber), "1904 1 1 0 0 0"},
        {At(2028, 2, 30), "2028 3 1 0 0 0"},
        {At(1900, 2, 29), "1900 3 1 0 0 0"},
        {At(2027, 13, 32), "2028 2 1 0 0 0"},
        {At(2027, -11, 0), "2025 12 31 0 0 0"},
        {At(-Most, 1, 1), "1 1 1 0 0 0"},
        {With(At(2027, 12, 31, 3), &Date::SetHour, 25), "2028 1 1 1 0 0"},
        {With(At(2027, 1, 1, 0, 7), &Date::SetMinute, -1), "2026 12 31 23 59 0"},
        {With(At(2027, 6, 15, 1, 2, 3), &Date::SetSecond, 86400), "2027 6 16 1 2 0"},
        {With(At(9999, 12, 31), &Date::SetHour, Most), "9999 12 31 23 59 59"}};
    for (const auto& [date, fields] : moments) {
        EXPECT_EQ(Fields(date), fields);
    }
    EXPECT_EQ(Date().TotalSeconds(), 2082844800.0);
    EXPECT_EQ(At(2027, 3, 1).DayOfWeek(), 2);
    EXPECT_EQ(Date::FromUnixSeconds(-1).DayOfWeek(), 4);
}

TEST(Date, AFractionIsKept) {
    for (const double seconds : {1.75, -0.25, 1234567890.125, -1234567890.5, 1e-9}) {
        EXPECT_EQ(Date::FromUnixSeconds(seconds).UnixSeconds(), seconds);
        EXPECT_EQ(Date::FromTotalSeconds(seconds).TotalSeconds(), seconds);
    }
    Date date = With(Date::FromUnixSeconds(-0.25), &Date::SetSecond, 60);
    EXPECT_EQ(date.UnixSeconds(), 0.75);
    date.SetTimeOfDay(0, 0, 0);
    EXPECT_EQ(date.UnixSeconds(), 0);
}

TEST(ParseDate, OnlyRealDatesAndTimesAreTaken) {
    const struct {
        std::string_view format;
        std::string_view text;
        std::string_view fields;
    } cases[] = {
        {"%Y-%m-%d", "2027-03-01", "2027 3 1 0 0 0"},
        {"%Y-%m-%d", " 2028-2-29 ", "2028 2 29 0 0 0"},
        {"%Y-%m-%d", "2027-02-29", ""},
        {"%Y-%m-%d", "2027-13-01", ""},
        {"%Y-%m-%d", "2027-01-00", ""},
        {"%Y-%m-%d", "0-01-01", ""},
        {"%Y-%m-%d", "2027-01-011", ""},
        {"%Y-%m-%d", "2027-01-", ""},
        {"%Y-%m-%d", "2027-+1-01", ""},
        {"%Y-%m-%d", "", ""},
        {"%H:%M:%S", "6:3:09", "1970 1 1 6 3 9"},
        {"%H:%M:%S", "24:00:00", ""},
        {"%H:%M:%S", "12:60:00", ""},
        {"%H:%M:%S", "12:00:60", ""},
        {"%H:%M:%S", "12:00:00Z", ""},
        {"%Y%", "2027", ""},
        {"%q", "1", ""},
    };
    for (const auto& [format, text, fields] : cases) {
        Date date = At(1999, 9, 9, 9);
        const bool isRead = ParseDateMBS(format, text, date);
        EXPECT_EQ(isRead, !fields.empty()) << text;
        EXPECT_EQ(Fields(date), isRead ? fields : "1999 9 9 9 0 0") << text;
    }
}

TEST(MemoryBlock, NothingOutsideIsReadOrWritten) {
    MemoryBlock block(std::string_view("freq:7100\0\xFF\xFF\xFF", 13));
    const MemoryBlock before = block;
    for (const std::size_t offset : {std::size_t{12}, std::size_t{13}, ~std::size_t{0}}) {
        EXPECT_EQ(block.UInt16(offset, ByteOrder::BigEndian), 0);
        EXPECT_EQ(block.UInt32(offset - 1, ByteOrder::BigEndian), 0U);
        block.SetUInt8(offset | 16U, 0);
        EXPECT_EQ(block, before);
    }
    EXPECT_EQ(block.CString(0), "freq:7100");
    EXPECT_EQ(block.CString(10), "\xFF\xFF\xFF") << "a text without its NUL";
    EXPECT_EQ(block.View(9, 100).size(), 4U);
    EXPECT_EQ(block.View(100, 100), "");
}

TEST(Random, AnEmptyRangeGivesItsLowerEnd) { EXPECT_EQ(Random(1).InRange(0, -1), 0); }

} // namespace
} // namespace larkspool
