#pragma once

#include "platform/Date.h"
#include "schedule/ScheduleFile.h"

#include <string>
#include <string_view>
#include <variant>

namespace larkspool {

// The title of a schedule window: the clock, and what the window is about.
std::string SkedTitle(const Date& now, bool schedulesEnabled, int state);

// "2027-03-01 06:29:58 UTC"
std::string DateAndTimeText(const Date& time);

// The time of day, "06:30:00".
std::string TimeOfDayText(const Date& time);

// The Time cell of a new entry: from 5 to 20 seconds from now.
std::string NewEntryTimeText(const Date& now);

// The cells of an entry that aren't empty, on one line.
std::string EntryText(const ScheduleRow& cells);

// What a line of a frequency list gives for a schedule row.
struct StationLine {
    std::string freq; // kHz, as it stands in the list
    std::string time; // "06:00:00-07:00:00"
};

// Reads a line of tab-separated fields: the second is the frequency, the third the span of time as
// "0600-0700". What can't be used gives the message that says why. The calendar day of now only
// lends itself for hours and minutes beyond their range to roll over on.
std::variant<StationLine, std::string> ParseStationLine(std::string_view line, const Date& now);

} // namespace larkspool
