#include "audio/RecordingTexts.h"

#include "platform/Text.h"

namespace larkspool {

std::string RecordingName(const AudioRecordingClass& recording, const Date& start) {
    return "KiwiRecording-" + Format(start.Year(), "0000") + "-" + Format(start.Month(), "00") +
           "-" + Format(start.Day(), "00") + "T" + Format(start.Hour(), "00") + "_" +
           Format(start.Minute(), "00") + "_" + Format(start.Second(), "00") + "Z" +
           Format(recording.frequency, "#####.000") + recording.mode + "_" +
           recording.remoteAddress + "_" + Str(recording.remotePort) + ".WAV";
}

std::string SecondsToTimeString(std::int64_t seconds) {
    const Date time = Date::FromTotalSeconds(static_cast<double>(seconds));
    return Format(time.Hour(), "00") + ":" + Format(time.Minute(), "00") + ":" +
           Format(time.Second(), "00");
}

} // namespace larkspool
