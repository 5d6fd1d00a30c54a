#pragma once

#include <optional>
#include <string_view>

namespace larkspool {

constexpr double DayLength = 86400; // seconds

// Start and end of a schedule row's Time cell, unchanged.
struct TimeSpan {
    std::string_view start;
    std::string_view end;
};

// Empty unless the cell has exactly one hyphen. The parts are views of the cell.
std::optional<TimeSpan> SplitTimeCell(std::string_view cell);

// Seconds since midnight of "06:30:00". Empty if the text is no time of day, as "24:00:00".
std::optional<double> SecondOfDay(std::string_view text);

// The beginning of the day of a moment; both in seconds since 1904-01-01 UTC.
double DayBegin(double seconds);

// Whether the day codes in a Date cell ("Su", "M", "Tu", "W", "Th", "F", "Sa") contain the day of
// this moment, in a time zone gmOffset hours east of UTC.
bool DayIsToday(double currentSeconds, std::string_view dateText, int gmOffset);

// Whether a row with these cells can ever start: both times and the date, or a day, can be read.
bool CanEverStart(std::string_view dateText, std::string_view timeCell);

// Compares a moment, in seconds since 1904-01-01 UTC, with a row's window:
//   -1  the window is in the future, not today, or can't be read
//    0  inside the window, both ends included
//    1  after its end
// A window over midnight starts on the row's day. To find the end of a running row (forEnding), it
// is the window that started yesterday until a little after its end.
int DateTimeCompare(double currentSeconds, std::string_view dateText, std::string_view startText,
                    std::string_view endText, bool forEnding, int gmOffset = 0);

} // namespace larkspool
