#pragma once

#include <optional>
#include <string_view>

namespace larkspool {

constexpr double DayLength = 86400; // seconds

// Start and end of a schedule row's Time cell, as they stand there.
struct TimeSpan {
    std::string_view start;
    std::string_view end;
};

// Nothing unless the cell has exactly one hyphen. The parts look into the cell.
std::optional<TimeSpan> SplitTimeCell(std::string_view cell);

// Seconds since midnight of "06:30:00". Nothing if that is no time of day, as "24:00:00".
std::optional<double> SecondOfDay(std::string_view text);

// The begin of a moment's day; both in seconds since 1904-01-01 UTC.
double DayBegin(double seconds);

// Whether the day codes in a Date cell ("Su", "M", "Tu", "W", "Th", "F", "Sa") name the day of this
// moment, in a zone so many hours east of UTC.
bool DayIsToday(double currentSeconds, std::string_view dateText, int gmOffset);

// Whether a row with these cells can ever start: both times and the date, or a day, can be read.
bool CanEverStart(std::string_view dateText, std::string_view timeCell);

// Where a moment, in seconds since 1904-01-01 UTC, stands to a row's window:
//   -1  the window lies ahead, is not today's, or can't be read
//    0  inside it, both ends included
//    1  past its end
// To find the end of a row that runs (forEnding), a window over midnight is taken as yesterday's
// until a little after its end; else it is the one that starts on the row's day.
int DateTimeCompare(double currentSeconds, std::string_view dateText, std::string_view startText,
                    std::string_view endText, bool forEnding, int gmOffset = 0);

} // namespace larkspool
