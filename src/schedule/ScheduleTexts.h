#pragma once

#include "platform/Date.h"
#include "schedule/ScheduleFile.h"

#include <string>
#include <string_view>
#include <variant>

namespace larkspool {

// The title of a schedule window: whether it is enabled, the clock, and its state.
std::string SkedTitle(const Date& now, bool schedulesEnabled, int state);

// "2027-03-01 06:29:58 UTC"
std::string DateAndTimeText(const Date& time);

// The time of day, "06:30:00".
std::string TimeOfDayText(const Date& time);

// The Time cell of a new entry: from 5 to 20 seconds from now.
std::string NewEntryTimeText(const Date& now);

// The non-empty cells of an entry, on one line.
std::string EntryText(const ScheduleRow& cells);

// The parts of a frequency list's line that a schedule row uses.
struct StationLine {
    std::string freq; // kHz, as the list writes it
    std::string time; // "06:00:00-07:00:00"
};

// Reads a line of tab-separated fields: the second is the frequency, the third the time as
// "0600-0700". Gives a message for the user if the line can't be used. Only the time of day matters
// in the result; hours and minutes beyond their range continue from the day of now.
std::variant<StationLine, std::string> ParseStationLine(std::string_view line, const Date& now);

} // namespace larkspool
