#include "audio/RecordingTexts.h"

#include "platform/Text.h"

#include <string_view>

namespace larkspool {

namespace {

constexpr std::string_view NameStart = "KiwiRecording-";
constexpr std::string_view NameEnd = ".WAV";

} // namespace

std::string RecordingName(const AudioRecordingClass& recording, const Date& start) {
    return std::string(NameStart) + Format(start.Year(), "0000") + "-" +
           Format(start.Month(), "00") + "-" + Format(start.Day(), "00") + "T" +
           Format(start.Hour(), "00") + "_" + Format(start.Minute(), "00") + "_" +
           Format(start.Second(), "00") + "Z" + Format(recording.frequency, "#####.000") +
           recording.mode + "_" + recording.remoteAddress + "_" + Str(recording.remotePort) +
           std::string(NameEnd);
}

bool IsRecordingName(std::string_view name) {
    return name.starts_with(NameStart) && name.ends_with(NameEnd);
}

std::string RecordingFailedText(const AudioRecordingClass& recording) {
    const std::string file = recording.recordingFile ? recording.recordingFile->Name() : "";
    std::string text =
        "The recording has ended, because its file could not be written any further: " + file + ".";
    if (recording.recordedSamples > 0) {
        text += " What was recorded until then is in it.";
    }
    return text + " Is the disk full?";
}

std::string RecordingNotMadeText(const std::string& name) {
    return "The recording could not begin, because its file could not be made: " + name +
           ". Can files be written in the documents folder?";
}

std::string RecordingEndedText(const AudioRecordingClass& recording, bool complete) {
    const std::int64_t seconds =
        recording.sampleRate > 0 ? recording.recordedSamples / recording.sampleRate : 0;
    return std::string(complete ? "Recording finished: " : "Recording cut short by the disk: ") +
           (recording.recordingFile ? recording.recordingFile->Name() : "") + ", " +
           SecondsToTimeString(seconds);
}

std::string SecondsToTimeString(std::int64_t seconds) {
    const Date time = Date::FromTotalSeconds(static_cast<double>(seconds));
    return Format(time.Hour(), "00") + ":" + Format(time.Minute(), "00") + ":" +
           Format(time.Second(), "00");
}

} // namespace larkspool
