#include "platform/Date.h"

#include "platform/Text.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>

namespace larkspool {

namespace {

namespace chrono = std::chrono;

constexpr std::int64_t SecondsPerDay = 86400;
constexpr auto OffsetFrom1904 = static_cast<std::int64_t>(SecondsFrom1904To1970);

constexpr std::int64_t DaysSince1970(int year, unsigned month) {
    return chrono::sys_days(chrono::year(year) / chrono::month(month) / 1)
        .time_since_epoch()
        .count();
}

constexpr std::int64_t FirstSecond = DaysSince1970(1, 1) * SecondsPerDay;
constexpr std::int64_t LastSecond = DaysSince1970(10000, 1) * SecondsPerDay - 1;

constexpr std::int64_t FloorDivide(std::int64_t value, std::int64_t divisor) {
    return (value >= 0 ? value : value - divisor + 1) / divisor;
}

chrono::year_month_day CalendarDay(std::int64_t dayNumber) {
    return chrono::sys_days(chrono::days(dayNumber));
}

struct Fields {
    int year = 1970;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

bool TakeNumber(std::string_view& text, std::size_t mostDigits, int& number) {
    std::size_t count = 0;
    int value = 0;
    while (count < mostDigits && count < text.size() && text[count] >= '0' && text[count] <= '9') {
        value = value * 10 + (text[count++] - '0');
    }
    text.remove_prefix(count);
    number = value;
    return count > 0;
}

bool TakeField(char kind, std::string_view& text, Fields& fields) {
    switch (kind) {
    case 'Y':
        return TakeNumber(text, 4, fields.year);
    case 'm':
        return TakeNumber(text, 2, fields.month);
    case 'd':
        return TakeNumber(text, 2, fields.day);
    case 'H':
        return TakeNumber(text, 2, fields.hour);
    case 'M':
        return TakeNumber(text, 2, fields.minute);
    case 'S':
        return TakeNumber(text, 2, fields.second);
    default:
        return false;
    }
}

bool Exists(const Fields& fields) {
    return fields.year >= 1 && fields.month >= 1 && fields.month <= 12 && fields.day >= 1 &&
           fields.day <= Date::DaysInMonth(fields.year, fields.month) && fields.hour <= 23 &&
           fields.minute <= 59 && fields.second <= 59;
}

} // namespace

Date Date::FromTotalSeconds(double secondsSince1904) {
    Date date;
    date.Assign(secondsSince1904, -OffsetFrom1904);
    return date;
}

Date Date::FromUnixSeconds(double secondsSince1970) {
    Date date;
    date.Assign(secondsSince1970, 0);
    return date;
}

double Date::TotalSeconds() const {
    return static_cast<double>(seconds + OffsetFrom1904) + fraction;
}

double Date::UnixSeconds() const { return static_cast<double>(seconds) + fraction; }

int Date::Year() const { return int{CalendarDay(DayNumber()).year()}; }

int Date::Month() const { return static_cast<int>(unsigned{CalendarDay(DayNumber()).month()}); }

int Date::Day() const { return static_cast<int>(unsigned{CalendarDay(DayNumber()).day()}); }

int Date::Hour() const { return static_cast<int>(SecondOfDay() / 3600); }

int Date::Minute() const { return static_cast<int>(SecondOfDay() / 60 % 60); }

int Date::Second() const { return static_cast<int>(SecondOfDay() % 60); }

int Date::DayOfWeek() const {
    const chrono::weekday day{chrono::sys_days(chrono::days(DayNumber()))};
    return static_cast<int>(day.c_encoding()) + 1;
}

void Date::SetHour(int hour) { AddSeconds((std::int64_t{hour} - Hour()) * 3600); }

void Date::SetMinute(int minute) { AddSeconds((std::int64_t{minute} - Minute()) * 60); }

void Date::SetSecond(int second) { AddSeconds(std::int64_t{second} - Second()); }

void Date::SetCalendarDay(int year, int month, int day) {
    const std::int64_t monthIndex = std::int64_t{month} - 1;
    const std::int64_t carry = FloorDivide(monthIndex, 12);
    // Well outside of the calendar on both sides, and within what chrono counts.
    const std::int64_t wholeYear = std::clamp<std::int64_t>(year + carry, -30000, 30000);
    const auto monthOfYear = static_cast<unsigned>(monthIndex - carry * 12 + 1);
    const std::int64_t firstOfMonth = DaysSince1970(static_cast<int>(wholeYear), monthOfYear);
    AddSeconds((firstOfMonth + day - 1 - DayNumber()) * SecondsPerDay);
}

void Date::SetTimeOfDay(int hour, int minute, int second) {
    fraction = 0;
    AddSeconds(std::int64_t{hour} * 3600 + std::int64_t{minute} * 60 + second - SecondOfDay());
}

int Date::DaysInMonth(int year, int month) {
    const chrono::year_month_day_last last(
        chrono::year(year), chrono::month_day_last(chrono::month(static_cast<unsigned>(month))));
    return static_cast<int>(unsigned{last.day()});
}

void Date::Assign(double value, std::int64_t secondsFrom1970ToZero) {
    constexpr double Limit = 1e12; // beyond both ends of the calendar
    const double bounded = std::isnan(value) ? 0 : std::clamp(value, -Limit, Limit);
    const double whole = std::floor(bounded);
    seconds = static_cast<std::int64_t>(whole) + secondsFrom1970ToZero;
    fraction = bounded - whole;
    if (fraction >= 1) { // just below 0, the difference rounds up
        fraction = 0;
        ++seconds;
    }
    AddSeconds(0);
}

void Date::AddSeconds(std::int64_t delta) {
    const std::int64_t sum = seconds + delta;
    seconds = std::clamp(sum, FirstSecond, LastSecond);
    if (sum != seconds) {
        fraction = 0;
    }
}

std::int64_t Date::DayNumber() const { return FloorDivide(seconds, SecondsPerDay); }

std::int64_t Date::SecondOfDay() const { return seconds - DayNumber() * SecondsPerDay; }

bool ParseDateMBS(std::string_view format, std::string_view text, Date& result) {
    Fields fields;
    text = WithoutBlanksAround(text);
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] == '%') {
            ++i;
            if (i == format.size() || !TakeField(format[i], text, fields)) {
                return false;
            }
        } else {
            if (!text.starts_with(format[i])) {
                return false;
            }
            text.remove_prefix(1);
        }
    }
    if (!text.empty() || !Exists(fields)) {
        return false;
    }
    Date date;
    date.SetCalendarDay(fields.year, fields.month, fields.day);
    date.SetTimeOfDay(fields.hour, fields.minute, fields.second);
    result = date;
    return true;
}

} // namespace larkspool
