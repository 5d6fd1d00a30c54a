#include "audio/SoundFrame.h"
#include "console/Window1.h"
#include "platform/Text.h"

namespace larkspool {

// One audio frame: to the meter, to the ear, to the network, to the file.
void Window1::ParseSoundData(const std::string& data) {
    const auto frame = ReadSoundFrame(data);
    if (!frame) {
        return;
    }
    numSoundBytes += static_cast<std::int64_t>(data.size());
    linkHealth.SoundArrived();
    sMeter = frame->sMeter;
    kiwiFlags = frame->flags;
    NoteSequence(frame->sequence);
    PlaySound(static_cast<std::int64_t>(frame->SampleCount()), frame->samples.Data());
    if (audioStream.isStreaming) {
        StreamSoundBlock(frame->SampleCount(), frame->samples);
    }
    if (IsRecording()) {
        RecordSamples(frame->samples, frame->SampleCount());
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
