#pragma once

#include "platform/BinaryStream.h"
#include "platform/FileLock.h"
#include "platform/FolderItem.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace larkspool {

class Desktop;

// One recording: the WAV file that is being written, and what it is of. Owned by the console,
// replaced by the next. A write that fails is remembered; whoever writes asks HasFailed afterwards.
class AudioRecordingClass {
  public:
    static constexpr std::int64_t RollOverSamples = 1'000'000'000; // then it goes on in a new file

    // Makes recordingFile anew and holds it. False: it can't be made, or somebody else is writing
    // it at this moment.
    bool CreateFile(Desktop& desktop);
    // At the start for no samples, at the end for what was recorded.
    void WriteHeader();
    void WriteBlock(std::span<const std::uint8_t> block);
    void WriteSilence(std::int64_t samples);
    // After the last WriteHeader. False: the disk has refused something, now or before; what it
    // took is a valid file all the same, unless that was less than a header.
    bool Close();
    bool HasFailed() const { return recordingStream && recordingStream->Failed(); }

    std::optional<BinaryStream> recordingStream;
    std::optional<FolderItem> recordingFile;
    std::int64_t recordedSamples = 0; // 16-bit samples in the file behind the header
    std::int64_t sampleRate = 0;      // Hz
    bool isRecording = false;         // from the header's first writing to the stop
    double frequency = 0;             // kHz
    std::string mode;
    std::string remoteAddress;
    std::int64_t remotePort = 0;

  private:
    std::unique_ptr<FileLock> lock; // while the file is open
};

} // namespace larkspool
