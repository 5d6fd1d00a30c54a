// Any bytes as a text from the clipboard: a station list's line for a new schedule row, and a web
// address pasted into the address field. What is taken out of either can be used.
#include "Input.h"
#include "directory/PastedUrl.h"
#include "platform/Text.h"
#include "schedule/ClockComparison.h"
#include "schedule/ScheduleTexts.h"

#include <string>
#include <variant>

namespace larkspool::fuzz {
namespace {

constexpr double Noon = 3'882'945'600; // 2027-01-16 12:00:00

void CheckStationLine(std::string_view line) {
    const auto read = ParseStationLine(line, Date::FromTotalSeconds(Noon));
    const auto* station = std::get_if<StationLine>(&read);
    if (station == nullptr) {
        Require(std::get<std::string>(read).ends_with("in the clipboard"), "the user is told why");
        return;
    }
    Require(Contains(line, station->freq), "the frequency stands in the line");
    Require(station->time.size() == std::string_view("06:00:00-07:00:00").size(),
            "the time of a row has its form");
    const auto span = SplitTimeCell(station->time);
    Require(span.has_value(), "the schedule can read the time");
    for (const std::string_view time :
         {span->start, span->end}) { // noon lies before it or after it
        Require(DateTimeCompare(Noon, "", "00:00:00", time, false) >= 0,
                "the row can be compared with the clock");
    }
}

void CheckAddress(std::string_view text) {
    const auto pasted = ParsePastedUrl(text);
    if (pasted) {
        Require(!Contains(pasted->host, ":"), "a host has no port in it");
        Require(pasted->host.size() <= text.size(), "a host is part of what was pasted");
        Require(Str(Val(pasted->port)) == pasted->port, "a port is a number");
        Require(!ParsePastedUrl(pasted->host), "the address field doesn't take it apart again");
    }
}

} // namespace
} // namespace larkspool::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    larkspool::fuzz::CheckStationLine(text);
    larkspool::fuzz::CheckAddress(text);
    return 0;
}
