#include "platform/Date.h"
#include "platform/ParseDate.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace larkspool {
namespace {

std::string Fields(const Date& date) {
    const int values[] = {date.Year(), date.Month(),  date.Day(),
                          date.Hour(), date.Minute(), date.Second()};
    std::string text;
    for (const int value : values)
        text += (text.empty() ? "" : " ") + std::to_string(value);
    return text;
}

Date At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    Date date;
    date.SetCalendarDay(year, month, day);
    date.SetTimeOfDay(hour, minute, second);
    return date;
}

int SlowMonthLength(int year, int month) {
    if (month == 2)
        return year % 400 == 0 || (year % 4 == 0 && year % 100 != 0) ? 29 : 28;
    return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

TEST(Date, EveryMonthAgreesWithCountingTheDays) {
    constexpr std::int64_t daysTo1970 = 719162;
    constexpr int mondayFirstOfYearOne = 2;
    std::int64_t days = 0;
    for (int year = 1; year <= 9999; ++year) {
        for (int month = 1; month <= 12; ++month) {
            const int length = SlowMonthLength(year, month);
            ASSERT_EQ(Date::DaysInMonth(year, month), length);
            for (const int day : {1, length}) {
                const auto noon =
                    static_cast<double>((days + day - 1 - daysTo1970) * 86400 + 43200);
                const Date date = Date::FromUnixSeconds(noon);
                ASSERT_EQ(date.Year(), year);
                ASSERT_EQ(date.Month(), month);
                ASSERT_EQ(date.Day(), day);
                ASSERT_EQ(date.DayOfWeek(), (days + day - 1 + mondayFirstOfYearOne - 1) % 7 + 1);
                ASSERT_EQ(At(year, month, day, 12).UnixSeconds(), noon);
            }
            days += length;
        }
    }
}

TEST(Date, KnownMomentsOnBothScales) {
    EXPECT_EQ(Date().TotalSeconds(), 2082844800.0);
    EXPECT_EQ(Fields(Date::FromTotalSeconds(0)), "1904 1 1 0 0 0");
    EXPECT_EQ(Fields(Date::FromUnixSeconds(2000000000)), "2033 5 18 3 33 20");
    EXPECT_EQ(Fields(Date::FromUnixSeconds(-1)), "1969 12 31 23 59 59");
    EXPECT_EQ(At(2027, 3, 1).DayOfWeek(), 2);
}

TEST(Date, AFractionIsKeptAndTheFieldsFloor) {
    for (const double seconds : {1.75, -0.25, 1234567890.125, -1234567890.5, 1e-9}) {
        EXPECT_EQ(Date::FromUnixSeconds(seconds).UnixSeconds(), seconds);
        EXPECT_EQ(Date::FromTotalSeconds(seconds).TotalSeconds(), seconds);
    }
    Date date = Date::FromUnixSeconds(-0.25);
    EXPECT_EQ(Fields(date), "1969 12 31 23 59 59");
    date.SetSecond(60);
    EXPECT_EQ(date.UnixSeconds(), 0.75);
    date.SetTimeOfDay(0, 0, 0);
    EXPECT_EQ(date.UnixSeconds(), 0);
    EXPECT_EQ(Fields(Date::FromUnixSeconds(-1e-20)), "1970 1 1 0 0 0");
}

TEST(Date, FieldsRollIntoTheirNeighbours) {
    const struct {
        Date start;
        void (Date::*set)(int);
        int value;
        std::string_view fields;
    } cases[] = {
        {At(2027, 12, 31, 5), &Date::SetDay, 32, "2028 1 1 5 0 0"},
        {At(2028, 3, 1), &Date::SetDay, 0, "2028 2 29 0 0 0"},
        {At(1900, 3, 1), &Date::SetDay, 0, "1900 2 28 0 0 0"},
        {At(2027, 1, 1), &Date::SetDay, -31, "2026 11 30 0 0 0"},
        {At(2028, 2, 29), &Date::SetYear, 2027, "2027 3 1 0 0 0"},
        {At(2027, 1, 31), &Date::SetMonth, 2, "2027 3 3 0 0 0"},
        {At(2027, 5, 9), &Date::SetMonth, 13, "2028 1 9 0 0 0"},
        {At(2027, 5, 9), &Date::SetMonth, 0, "2026 12 9 0 0 0"},
        {At(2027, 5, 9), &Date::SetMonth, -12, "2025 12 9 0 0 0"},
        {At(2027, 12, 31, 3), &Date::SetHour, 25, "2028 1 1 1 0 0"},
        {At(2027, 1, 1, 0, 7), &Date::SetMinute, -1, "2026 12 31 23 59 0"},
        {At(2027, 1, 1), &Date::SetSecond, -1, "2026 12 31 23 59 59"},
        {At(2027, 6, 15, 1, 2, 3), &Date::SetSecond, 86400, "2027 6 16 1 2 0"},
    };
    for (const auto& item : cases) {
        Date date = item.start;
        (date.*item.set)(item.value);
        EXPECT_EQ(Fields(date), item.fields) << Fields(item.start) << " set to " << item.value;
    }
}

TEST(Date, AbsurdValuesStopAtTheEndsOfTheCalendar) {
    constexpr std::string_view first = "1 1 1 0 0 0";
    constexpr std::string_view last = "9999 12 31 23 59 59";
    constexpr double infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Fields(Date::FromUnixSeconds(infinite)), last);
    EXPECT_EQ(Fields(Date::FromTotalSeconds(-1e300)), first);
    EXPECT_EQ(Fields(Date::FromTotalSeconds(std::numeric_limits<double>::quiet_NaN())),
              "1904 1 1 0 0 0");
    for (const auto set : {&Date::SetYear, &Date::SetMonth, &Date::SetDay}) {
        Date late;
        (late.*set)(std::numeric_limits<int>::max());
        EXPECT_EQ(Fields(late), last);
        Date early;
        (early.*set)(std::numeric_limits<int>::min());
        EXPECT_EQ(Fields(early), first);
    }
    Date hours = At(9999, 1, 1);
    hours.SetHour(std::numeric_limits<int>::max());
    hours.SetDay(32);
    EXPECT_EQ(Fields(hours), last);
}

TEST(ParseDate, OnlyRealDatesAndTimesAreTaken) {
    const struct {
        std::string_view format;
        std::string_view text;
        std::string_view fields;
    } cases[] = {
        {"%Y-%m-%d", "2027-03-01", "2027 3 1 0 0 0"},
        {"%Y-%m-%d", "2027-3-1", "2027 3 1 0 0 0"},
        {"%Y-%m-%d", "2028-02-29", "2028 2 29 0 0 0"},
        {"%Y-%m-%d", "2027-02-29", ""},
        {"%Y-%m-%d", "2027-04-31", ""},
        {"%Y-%m-%d", "2027-13-01", ""},
        {"%Y-%m-%d", "2027-00-01", ""},
        {"%Y-%m-%d", "2027-01-00", ""},
        {"%Y-%m-%d", "0-01-01", ""},
        {"%Y-%m-%d", "20270-01-01", ""},
        {"%Y-%m-%d", "2027-01-011", ""},
        {"%Y-%m-%d", " 2027-01-01", "2027 1 1 0 0 0"},
        {"%Y-%m-%d", "2027-01-01  ", "2027 1 1 0 0 0"},
        {"%Y-%m-%d", "2027- 01-01", ""},
        {"%Y-%m-%d", "   ", ""},
        {"%Y-%m-%d", "2027-01-", ""},
        {"%Y-%m-%d", "2027-+1-01", ""},
        {"%Y-%m-%d", "MWF", ""},
        {"%Y-%m-%d", "", ""},
        {"%H:%M:%S", "06:30:00", "1970 1 1 6 30 0"},
        {"%H:%M:%S", "6:3:9", "1970 1 1 6 3 9"},
        {"%H:%M:%S", "23:59:59", "1970 1 1 23 59 59"},
        {"%H:%M:%S", "24:00:00", ""},
        {"%H:%M:%S", "12:60:00", ""},
        {"%H:%M:%S", "12:00:60", ""},
        {"%H:%M:%S", "12:00", ""},
        {"%H:%M:%S", "12:00:00Z", ""},
        {"%Y%", "2027", ""},
        {"%q", "1", ""},
    };
    for (const auto& item : cases) {
        Date date = At(1999, 9, 9, 9);
        const bool parsed = ParseDateMBS(item.format, item.text, date);
        EXPECT_EQ(parsed, !item.fields.empty()) << item.text;
        EXPECT_EQ(Fields(date), parsed ? item.fields : "1999 9 9 9 0 0") << item.text;
    }
}

} // namespace
} // namespace larkspool
