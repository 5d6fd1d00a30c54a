#include "audio/SoundFrame.h"
#include "console/Window1.h"
#include "platform/Text.h"

namespace larkspool {

// One audio frame goes to the meter, the sound library, the network and the recording.
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

// A lost frame only adds a row to the log: it is not requested again, and no silence fills the gap.
void Window1::NoteSequence(std::uint32_t sequence) {
    kiwiAudioSequence = sequence;
    if (lastKiwiAudioSequence > -1 && lastKiwiAudioSequence != kiwiAudioSequence - 1) {
        Log("Audio packet lost " + Str(lastKiwiAudioSequence) + " " + Str(kiwiAudioSequence));
    }
    lastKiwiAudioSequence = kiwiAudioSequence;
}

} // namespace larkspool
