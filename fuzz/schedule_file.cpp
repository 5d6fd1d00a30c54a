// Any bytes as the schedule file: what has been read and written once stays the same for good, and
// no row's texts upset the comparison with the clock.
#include "Input.h"
#include "schedule/ClockComparison.h"
#include "schedule/RunningEntry.h"
#include "schedule/ScheduleFile.h"

#include <string>
#include <utility>
#include <vector>

namespace {

std::vector<larkspool::ScheduleRow> Read(std::string text) {
    auto file = larkspool::TextInputStream::FromText(std::move(text));
    return larkspool::ReadSchedule(file);
}

void Compare(const larkspool::ScheduleRow& row) {
    constexpr double Evening = 3'882'985'200; // 2027-01-16 23:00:00
    if (const auto span = larkspool::SplitTimeCell(row[2])) {
        for (const bool forEnding : {false, true}) {
            larkspool::DateTimeCompare(Evening, row[1], span->start, span->end, forEnding);
        }
        larkspool::RunningEntry entry;
        entry.Begin(Evening, row[2]);
        const bool hasEnded = entry.Compare(Evening + 86401, row[2], 0) == 1;
        larkspool::fuzz::Require(hasEnded == larkspool::SecondOfDay(span->end).has_value(),
                                 "an end that can be read comes within a day");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto rows = Read(text);
    larkspool::fuzz::Require(Read(larkspool::ScheduleText(rows)) == rows,
                             "what is written is read the same");
    for (const auto& row : rows) {
        Compare(row);
    }
    return 0;
}
