#include "audio/AudioRecordingClass.h"

#include "audio/WavFile.h"
#include "platform/Desktop.h"

#include <algorithm>

namespace larkspool {

bool AudioRecordingClass::CreateFile(Desktop& desktop) {
    if (recordingFile->Exists()) {
        const auto unused = desktop.Lock(*recordingFile); // null: another program records into it
        if (unused == nullptr || !recordingFile->Delete()) {
            return false;
        }
    }
    recordingStream = BinaryStream::Create(*recordingFile);
    if (!recordingStream) {
        return false;
    }
    lock = desktop.Lock(*recordingFile);
    if (lock == nullptr) {
        recordingStream.reset(); // another program has just taken this file
        return false;
    }
    return true;
}

void AudioRecordingClass::WriteHeader() {
    if (!recordingStream) {
        return;
    }
    if (HasFailed()) {
        const std::uint64_t length =
            std::max<std::uint64_t>(recordingStream->Length(), WavHeaderSize);
        recordedSamples = static_cast<std::int64_t>((length - WavHeaderSize) / 2);
    }
    recordingStream->SetPosition(0);
    recordingStream->WriteString(WavHeader(sampleRate, recordedSamples));
}

// An odd last byte is written too, but does not count as a sample.
void AudioRecordingClass::WriteBlock(std::span<const std::uint8_t> block) {
    recordingStream->WriteBytes(block);
    recordedSamples += static_cast<std::int64_t>(block.size() / 2);
}

// In pieces, so that an hour of silence needs little memory.
void AudioRecordingClass::WriteSilence(std::int64_t samples) {
    constexpr std::size_t PieceBytes = std::size_t{64} * 1024;
    const auto bytes = static_cast<std::size_t>(samples) * 2;
    const std::string silence(std::min(bytes, PieceBytes), '\0');
    for (std::size_t left = bytes; left > 0 && !HasFailed();) {
        const std::size_t piece = std::min(left, silence.size());
        recordingStream->WriteString(std::string_view(silence).substr(0, piece));
        left -= piece;
    }
    recordedSamples += samples;
}

bool AudioRecordingClass::Close() {
    const bool holdsHeader = recordingStream->Length() >= WavHeaderSize;
    const bool whole = recordingStream->Close();
    if (!holdsHeader) {
        recordingFile->Delete();
    } else if (!whole) {
        // A failure at the end may have lost some of what was written before.
        const auto shape = LookAtWavFile(*recordingFile);
        if (shape && shape->headerSamples != shape->wholeSamples) {
            PatchWavSizes(*recordingFile, *shape);
        }
    }
    lock.reset();
    return whole;
}

} // namespace larkspool
