#include "remote/AudioStream.h"

#include <algorithm>
#include <span>

namespace larkspool {

namespace {

constexpr std::size_t SequenceLSBOffset = 1024;
constexpr std::size_t SequenceMSBOffset = 1025;

} // namespace

void AudioStream::Init() {
    streamingDataMB.clear();
    streamingDataMB.emplace_back(BlockBytes);
    streamingSequenceLSB = 0;
    streamingSequenceMSB = 0;
}

void AudioStream::StreamSoundBlock(std::size_t sampleCount, const MemoryBlock& samples) {
    auto rest = samples.Bytes().first(std::min(sampleCount, samples.Size() / 2) * 2);
    while (!rest.empty() && IsReady()) {
        const auto room =
            streamingDataMB.front().Bytes().first(SoundBytes).subspan(streamingDataMBCurrentLength);
        const std::size_t count = std::min(rest.size(), room.size());
        std::ranges::copy(rest.first(count), room.begin());
        rest = rest.subspan(count);
        streamingDataMBCurrentLength += count;
        if (streamingDataMBCurrentLength >= SoundBytes) {
            FinishBlock();
        }
    }
}

void AudioStream::FinishBlock() {
    MemoryBlock& block = streamingDataMB.front();
    block.SetUInt8(SequenceLSBOffset, streamingSequenceLSB);
    block.SetUInt8(SequenceMSBOffset, streamingSequenceMSB);
    if (++streamingSequenceLSB == 0) {
        ++streamingSequenceMSB;
    }
    auto& ready = streamingDataMBsReadyToSend;
    ready.splice(ready.end(), streamingDataMB);
    if (ready.size() > MostWaiting) {
        FirstIsSent(); // blocks are not being sent: drop the oldest one
    }
    auto& used = streamingDataMBsUsed;
    if (used.empty()) {
        streamingDataMB.emplace_back(BlockBytes);
    } else {
        streamingDataMB.splice(streamingDataMB.end(), used, used.begin());
    }
    streamingDataMBCurrentLength = 0;
}

const MemoryBlock* AudioStream::FirstReadyToSend() const {
    return streamingDataMBsReadyToSend.empty() ? nullptr : &streamingDataMBsReadyToSend.front();
}

void AudioStream::FirstIsSent() {
    auto& ready = streamingDataMBsReadyToSend;
    if (!ready.empty()) {
        streamingDataMBsUsed.splice(streamingDataMBsUsed.end(), ready, ready.begin());
    }
}

} // namespace larkspool
