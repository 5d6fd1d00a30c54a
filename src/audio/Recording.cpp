#include "audio/RecordingTexts.h"
#include "audio/SoundFrame.h"
#include "audio/WavHeader.h"
#include "console/Window1.h"
#include "platform/Text.h"
#include "shell/App.h"

#include <algorithm>

namespace larkspool {

namespace {

constexpr std::int64_t RollOverSamples = 1'000'000'000;
constexpr double LongestDeadSpace = 3600;            // seconds
constexpr std::size_t SilencePieceBytes = 64 * 1024; // so that an hour of it takes no memory

} // namespace

void Window1::PushButtonRecord_Action() {
    if (IsRecording()) {
        AudioRecordingStop();
        PushButtonRecord.SetCaption("Start Recording");
    } else {
        AudioRecordingStart();
        PushButtonRecord.SetCaption("Stop Recording");
    }
}

void Window1::AudioRecordingStart() {
    audioRecording = std::make_unique<AudioRecordingClass>();
    AudioRecordingClass& recording = *audioRecording;
    recording.sampleRate = WholePart(audioRate);
    recording.frequency = Val(TextFieldFreq.Text());
    recording.mode = PopupMenuMode.Text();
    recording.remoteAddress = TextFieldAddress.Text();
    recording.remotePort = WholePart(Val(TextFieldPort.Text()));
    const std::string name = RecordingName(recording, app.GetCurrentUtcDate());
    recording.recordingFile = desktop.Folder(SpecialFolder::Documents).Child(name);
    if (!recording.recordingFile) {
        return;
    }
    if (recording.recordingFile->Exists() && !recording.recordingFile->Delete()) {
        return;
    }
    recording.recordingStream = BinaryStream::Create(*recording.recordingFile);
    if (!recording.recordingStream) {
        return;
    }
    AudioRecordingWriteHeader();
    recording.isRecording = true;
    LabelRecordingStatus.SetText("");
}

// Written at the start with sizes for no samples, and again at the stop with the real ones.
void Window1::AudioRecordingWriteHeader() {
    if (audioRecording == nullptr || !audioRecording->recordingStream) {
        return;
    }
    BinaryStream& stream = *audioRecording->recordingStream;
    stream.SetPosition(0);
    stream.WriteString(WavHeader(audioRecording->sampleRate, audioRecording->recordedSamples));
}

void Window1::AudioRecordingStop() {
    AudioRecordingWriteHeader();
    audioRecording->recordingStream->Close();
    audioRecording->isRecording = false;
    LabelRecordingStatus.SetText("");
}

// A quiet stretch, however long, leaves one piece of silence in the file, at its beginning.
void Window1::RecordSamples(const MemoryBlock& block, std::size_t sampleCount) {
    const bool quiet = SliderSquelch.Value() > 0 && QuietSoundData(block, sampleCount);
    if (quiet) {
        if (!isSquelched) {
            AudioRecordingWriteSquelchDeadTime();
        }
        isSquelched = true;
        return;
    }
    audioRecording->recordingStream->WriteBytes(block.Bytes());
    audioRecording->recordedSamples += static_cast<std::int64_t>(block.Size() / 2);
    isSquelched = false;
}

void Window1::AudioRecordingWriteSquelchDeadTime() {
    const double seconds = std::clamp(app.prefs.prefsSquelchedDeadSpace, 0.0, LongestDeadSpace);
    const auto rate = static_cast<double>(audioRecording->sampleRate);
    const std::int64_t deadSamples = IsPossibleRate(rate) ? WholePart(seconds * rate) : 0;
    const auto deadBytes = static_cast<std::size_t>(deadSamples) * 2;
    const std::string silence(std::min(deadBytes, SilencePieceBytes), '\0');
    for (std::size_t left = deadBytes; left > 0;) {
        const std::size_t piece = std::min(left, silence.size());
        if (!audioRecording->recordingStream->WriteString(
                std::string_view(silence).substr(0, piece))) {
            break;
        }
        left -= piece;
    }
    audioRecording->recordedSamples += deadSamples;
    TextArea1.AppendText("AudioRecordingWriteSquelchDeadTime " +
                         Str(app.prefs.prefsSquelchedDeadSpace) + " " + Str(deadSamples) + " " +
                         Str(deadBytes) + "\n");
}

void Window1::TextFieldSquelchedDeadSpace_TextChange() {
    app.prefs.prefsSquelchedDeadSpace = Val(TextFieldSquelchedDeadSpace.Text());
}

void Window1::ShowRecordingTime() {
    if (!IsRecording()) {
        return;
    }
    if (audioRecording->sampleRate <= 0) {
        LabelRecordingStatus.SetText("");
        return;
    }
    LabelRecordingStatus.SetText(
        SecondsToTimeString(audioRecording->recordedSamples / audioRecording->sampleRate));
    if (audioRecording->recordedSamples >= RollOverSamples) {
        PushButtonRecord.Push(); // ends this file
        PushButtonRecord.Push(); // and goes on in the next
    }
}

} // namespace larkspool
