#include "platform/Date.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>

namespace larkspool {
namespace {

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
    constexpr double Infinite = std::numeric_limits<double>::infinity();
    constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();
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

} // namespace
} // namespace larkspool
