#pragma once

#include "platform/BinaryStream.h"
#include "platform/FolderItem.h"

#include <cstdint>
#include <optional>
#include <string>

namespace larkspool {

// One recording: the open WAV file and what it is of. Owned by the console, replaced by the next.
struct AudioRecordingClass {
    std::optional<BinaryStream> recordingStream;
    std::optional<FolderItem> recordingFile;
    std::int64_t recordedSamples = 0; // 16-bit samples in the file behind the header
    std::int64_t sampleRate = 0;      // Hz
    bool isRecording = false;         // from the header's first writing to the stop
    double frequency = 0;             // kHz
    std::string mode;
    std::string remoteAddress;
    std::int64_t remotePort = 0;
};

} // namespace larkspool
