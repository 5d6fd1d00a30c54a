#include "audio/RecordingTexts.h"
#include "audio/SoundFrame.h"
#include "console/Window1.h"
#include "platform/Text.h"
#include "shell/App.h"

#include <algorithm>

namespace larkspool {

namespace {

constexpr double LongestDeadSpace = 3600; // seconds

} // namespace

void Window1::PushButtonRecord_Action() {
    if (IsRecording()) {
        EndRecording();
    } else {
        BeginRecording();
    }
}

void Window1::BeginRecording() {
    AudioRecordingStart();
    if (IsRecording()) {
        PushButtonRecord.SetCaption("Stop Recording");
        EndFailedRecording();
    } else {
        PushButtonRecord.SetCaption("Start Recording");
    }
}

void Window1::EndRecording() {
    if (IsRecording()) {
        AudioRecordingStop();
        PushButtonRecord.SetCaption("Start Recording");
    }
}

void Window1::ArmRecording(RecordingWish wish) {
    (wish == RecordingWish::OfEntry ? startRecordingWhenConnected : resumesRecording) = true;
}

void Window1::DisarmRecording(RecordingWish wish) {
    (wish == RecordingWish::OfEntry ? startRecordingWhenConnected : resumesRecording) = false;
}

void Window1::BeginArmedRecording() {
    if ((startRecordingWhenConnected || resumesRecording) && !IsRecording()) {
        DisarmRecording(RecordingWish::OfEntry);
        DisarmRecording(RecordingWish::ToGoOn);
        BeginRecording();
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
    if (!recording.recordingFile || !recording.CreateFile(desktop)) {
        Log("Recording can't begin: its file can't be made: " + name);
        app.TellLoss(RecordingNotMadeText(name));
        return;
    }
    AudioRecordingWriteHeader();
    recording.isRecording = true;
    LabelRecordingStatus.SetText("");
    Log("Recording started: " + name);
}

void Window1::AudioRecordingWriteHeader() {
    if (audioRecording != nullptr) {
        audioRecording->WriteHeader();
    }
}

void Window1::AudioRecordingStop() {
    AudioRecordingWriteHeader();
    const bool complete = audioRecording->Close();
    audioRecording->isRecording = false;
    LabelRecordingStatus.SetText("");
    Log(RecordingEndedText(*audioRecording, complete));
    if (complete) {
        return;
    }
    DisarmRecording(RecordingWish::ToGoOn); // the disk would fail again
    app.TellLoss(RecordingFailedText(*audioRecording));
}

// A failed write ends the recording and nothing else.
void Window1::EndFailedRecording() {
    if (IsRecording() && audioRecording->HasFailed()) {
        EndRecording();
    }
}

// A silent period of any length leaves one piece of silence in the file, at its beginning.
void Window1::RecordSamples(const MemoryBlock& block, std::size_t sampleCount) {
    const bool quiet = SliderSquelch.Value() > 0 && QuietSoundData(block, sampleCount);
    if (!quiet) {
        audioRecording->WriteBlock(block.Bytes());
    } else if (!isSquelched) {
        AudioRecordingWriteSquelchDeadTime();
    }
    isSquelched = quiet;
    EndFailedRecording();
}

void Window1::AudioRecordingWriteSquelchDeadTime() {
    const double seconds = std::clamp(app.prefs.prefsSquelchedDeadSpace, 0.0, LongestDeadSpace);
    const auto rate = static_cast<double>(audioRecording->sampleRate);
    const std::int64_t deadSamples = IsPossibleRate(rate) ? WholePart(seconds * rate) : 0;
    audioRecording->WriteSilence(deadSamples);
    TextArea1.AppendText("AudioRecordingWriteSquelchDeadTime " +
                         Str(app.prefs.prefsSquelchedDeadSpace) + " " + Str(deadSamples) + " " +
                         Str(deadSamples * 2) + "\n");
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
    if (audioRecording->recordedSamples < rollOverSamples) {
        return;
    }
    EndRecording();
    if (!audioRecording->HasFailed()) {
        BeginRecording(); // in the next file
    }
}

} // namespace larkspool
