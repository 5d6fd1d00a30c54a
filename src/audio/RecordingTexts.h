#pragma once

#include "audio/AudioRecordingClass.h"
#include "platform/Date.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace larkspool {

// "KiwiRecording-2021-03-04T05_06_07Z10000.000usb_example_8073.WAV"
std::string RecordingName(const AudioRecordingClass& recording, const Date& start);
bool IsRecordingName(std::string_view name); // one of ours, of whatever time

// The one message of a recording that the disk has refused to take any further.
std::string RecordingFailedText(const AudioRecordingClass& recording);

// The one message of a recording whose file can't be made.
std::string RecordingNotMadeText(const std::string& name);

// What the log says of a recording that has ended: its file, its length, and whether the disk took
// all of it.
std::string RecordingEndedText(const AudioRecordingClass& recording, bool complete);

// "hh:mm:ss", a time of day: it starts over after 24 hours.
std::string SecondsToTimeString(std::int64_t seconds);

} // namespace larkspool
