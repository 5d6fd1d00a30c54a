#include "schedule/ScheduleTexts.h"

#include "platform/Text.h"

namespace larkspool {

namespace {

constexpr int NewEntryDelay = 5;   // seconds
constexpr int NewEntryLength = 15; // seconds

// Four digits of hours and minutes; "630" is "0630".
void SetHourAndMinute(Date& time, std::string_view fourDigits) {
    const double value = Val(fourDigits);
    const int hour = WholePart<int>(value / 100);
    time.SetHour(hour);
    time.SetMinute(WholePart<int>(value - hour * 100.0));
}

} // namespace

std::string SkedTitle(const Date& now, bool schedulesEnabled, int state) {
    return std::string("Schedules ") + (schedulesEnabled ? " Enabled " : " Disabled ") +
           DateAndTimeText(now) + "  state: " + Str(state);
}

std::string DateAndTimeText(const Date& time) {
    return Format(time.Year(), "0000") + "-" + Format(time.Month(), "00") + "-" +
           Format(time.Day(), "00") + " " + TimeOfDayText(time) + " UTC";
}

std::string TimeOfDayText(const Date& time) {
    return Format(time.Hour(), "00") + ":" + Format(time.Minute(), "00") + ":" +
           Format(time.Second(), "00");
}

std::string NewEntryTimeText(const Date& now) {
    Date time = now;
    time.SetSecond(time.Second() + NewEntryDelay);
    const std::string start = TimeOfDayText(time);
    time.SetSecond(time.Second() + NewEntryLength);
    return start + "-" + TimeOfDayText(time);
}

std::string EntryText(const ScheduleRow& cells) {
    std::string text;
    for (const std::string& cell : cells) {
        if (!cell.empty()) {
            text += (text.empty() ? "" : "  ") + cell;
        }
    }
    return text;
}

std::variant<StationLine, std::string> ParseStationLine(std::string_view line, const Date& now) {
    const auto fields = SplitB(line, "\t");
    if (fields.size() < 3) {
        return "Incorrect text in the clipboard";
    }
    const auto span = SplitB(fields[2], "-");
    if (span.size() != 2) {
        return "Incorrect time text in the clipboard";
    }
    Date time = now;
    time.SetSecond(0);
    SetHourAndMinute(time, span[0]);
    const std::string start = TimeOfDayText(time);
    SetHourAndMinute(time, span[1]);
    return StationLine{std::string(fields[1]), start + "-" + TimeOfDayText(time)};
}

} // namespace larkspool
