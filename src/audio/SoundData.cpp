#include "audio/SoundFrame.h"
#include "console/Window1.h"
#include "platform/Text.h"

namespace larkspool {

// One audio frame: to the meter, to the ear, to the network, to the file.
void Window1::ParseSoundData(const std::string& data) {
    const auto header = ReadSoundHeader(data);
    if (!header) {
        return;
    }
    numSoundBytes += static_cast<std::int64_t>(data.size());
    sMeter = header->sMeter;
    kiwiFlags = header->flags;
    NoteSequence(header->sequence);
    const MemoryBlock block = SoundSamples(data);
    const std::size_t sampleCount = block.Size() / 2;
    PlaySound(static_cast<std::int64_t>(sampleCount), block.Data());
    if (audioStream.isStreaming) {
        StreamSoundBlock(sampleCount, block);
    }
    if (IsRecording()) {
        RecordSamples(block, sampleCount);
    }
}

// A lost frame is noted and that is all: nothing is asked for again, and no silence fills the gap.
void Window1::NoteSequence(std::uint32_t sequence) {
    kiwiAudioSequence = sequence;
    if (lastKiwiAudioSequence > -1 && lastKiwiAudioSequence != kiwiAudioSequence - 1) {
        Log("Audio packet lost " + Str(lastKiwiAudioSequence) + " " + Str(kiwiAudioSequence));
    }
    lastKiwiAudioSequence = kiwiAudioSequence;
}

} // namespace larkspool
