#include "schedule/ClockComparison.h"

#include "platform/Date.h"
#include "platform/Text.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace larkspool {

namespace {

constexpr double HourLength = 3600; // seconds
// How late the end of a window over midnight may be noticed and still belong to this night.
constexpr double EndSlack = 10; // seconds

std::optional<double> BeginOfRowsDay(double currentSeconds, std::string_view dateText,
                                     int gmOffset) {
    if (dateText.empty() || DayIsToday(currentSeconds, dateText, gmOffset)) {
        return DayBegin(currentSeconds);
    }
    Date day;
    if (!ParseDateMBS("%Y-%m-%d", dateText, day)) {
        return std::nullopt;
    }
    return day.TotalSeconds();
}

} // namespace

std::optional<double> SecondOfDay(std::string_view text) {
    Date time; // on the day with which its Unix seconds begin
    if (!ParseDateMBS("%H:%M:%S", text, time)) {
        return std::nullopt;
    }
    return time.UnixSeconds();
}

double DayBegin(double seconds) { return std::floor(seconds / DayLength) * DayLength; }

std::optional<TimeSpan> SplitTimeCell(std::string_view cell) {
    const std::size_t hyphen = cell.find('-');
    if (hyphen == std::string_view::npos || cell.find('-', hyphen + 1) != std::string_view::npos) {
        return std::nullopt;
    }
    return TimeSpan{cell.substr(0, hyphen), cell.substr(hyphen + 1)};
}

bool DayIsToday(double currentSeconds, std::string_view dateText, int gmOffset) {
    static constexpr std::array<std::string_view, 7> Codes = {"Su", "M", "Tu", "W",
                                                              "Th", "F", "Sa"};
    const Date today = Date::FromTotalSeconds(currentSeconds + gmOffset * HourLength);
    return Contains(dateText, Codes[static_cast<std::size_t>(today.DayOfWeek() - 1)]);
}

bool CanEverStart(std::string_view dateText, std::string_view timeCell) {
    const auto span = SplitTimeCell(timeCell);
    if (!span || !SecondOfDay(span->start) || !SecondOfDay(span->end)) {
        return false;
    }
    bool namesDay = false;
    for (int day = 0; day < 7; ++day) {
        namesDay = namesDay || BeginOfRowsDay(day * DayLength, dateText, 0).has_value();
    }
    return namesDay;
}

int DateTimeCompare(double currentSeconds, std::string_view dateText, std::string_view startText,
                    std::string_view endText, bool forEnding, int gmOffset) {
    const auto day = BeginOfRowsDay(currentSeconds, dateText, gmOffset);
    const auto startOfDay = SecondOfDay(startText);
    const auto endOfDay = SecondOfDay(endText);
    if (!day || !startOfDay || !endOfDay) {
        return -1;
    }
    double start = *day + *startOfDay;
    double end = *day + *endOfDay;
    if (start > end) { // over midnight
        const double nowOfDay = std::floor(currentSeconds - DayBegin(currentSeconds));
        if (forEnding && *endOfDay + EndSlack > nowOfDay) {
            start -= DayLength;
        } else {
            end += DayLength;
        }
    }
    if (currentSeconds > end) {
        return 1;
    }
    return currentSeconds >= start ? 0 : -1;
}

} // namespace larkspool
