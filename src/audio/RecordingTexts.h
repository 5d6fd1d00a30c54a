#pragma once

#include "audio/AudioRecordingClass.h"
#include "platform/Date.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace larkspool {

// "KiwiRecording-2021-03-04T05_06_07Z10000.000usb_example_8073.WAV"
std::string RecordingName(const AudioRecordingClass& recording, const Date& start);
bool IsRecordingName(std::string_view name); // a name that RecordingName makes

// The message if a recording's file can't be written any further.
std::string RecordingFailedText(const AudioRecordingClass& recording);

// The message if a recording's file can't be created.
std::string RecordingNotMadeText(const std::string& name);

// The log's row for a recording that has ended: its file, its length, and whether all of it could
// be written.
std::string RecordingEndedText(const AudioRecordingClass& recording, bool complete);

// "hh:mm:ss", a time of day: after 24 hours it starts again from 0.
std::string SecondsToTimeString(std::int64_t seconds);

} // namespace larkspool
