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

// One recording: the WAV file that is being written, and what it contains. Owned by the console,
// replaced by the next one. A failed write is remembered: call HasFailed after writing.
class AudioRecordingClass {
  public:
    static constexpr std::int64_t RollOverSamples =
        1'000'000'000; // then it continues in a new file

    // Creates recordingFile, replacing an old one, and locks it. False: it can't be created, or
    // another program is writing it.
    bool CreateFile(Desktop& desktop);
    // Call at the start, and again at the end with the final number of samples.
    void WriteHeader();
    void WriteBlock(std::span<const std::uint8_t> block);
    void WriteSilence(std::int64_t samples);
    // Call after the last WriteHeader. False: a write has failed, now or before. The file is valid
    // even then, unless not even its header could be written.
    bool Close();
    bool HasFailed() const { return recordingStream && recordingStream->Failed(); }

    std::optional<BinaryStream> recordingStream;
    std::optional<FolderItem> recordingFile;
    std::int64_t recordedSamples = 0; // 16-bit samples in the file, after the header
    std::int64_t sampleRate = 0;      // Hz
    bool isRecording = false;         // from the first WriteHeader to Close
    double frequency = 0;             // kHz
    std::string mode;
    std::string remoteAddress;
    std::int64_t remotePort = 0;

  private:
    std::unique_ptr<FileLock> lock; // while the file is open
};

} // namespace larkspool
