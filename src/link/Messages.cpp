#include "console/Window1.h"
#include "platform/Text.h"

namespace larkspool {

// The four keys of a receiver's messages that the console uses. They may be anywhere in the body,
// and one body may hold several.
void Window1::ParseMessage(const std::string& body) {
    static constexpr std::string_view AudioRateKey = "audio_rate=";
    for (const std::string_view refusal : {"too_busy=", "monitor"}) {
        if (Contains(body, refusal)) {
            if (IsRecording() && CheckBoxReconnect.Value()) {
                ArmRecording(RecordingWish::ToGoOn);
            }
            whyNotRecorded = "the receiver was full";
            HangUp();
            ShowStatus("Too many users on Kiwi, disconnecting");
        }
    }
    if (Contains(body, "audio_init=")) {
        AudioInitReceived();
    }
    if (const std::size_t key = body.find(AudioRateKey); key != std::string::npos) {
        AudioRateReceived(std::string_view(body).substr(key + AudioRateKey.size()));
    }
}

void Window1::AudioInitReceived() {
    ShowStatus("Connected to " + HostPort(theHost, thePort));
    Log("got audio_init=");
    SendSetAudioOK();
    // SendSetAudioOK has switched both off at the receiver: send what the console shows.
    if (SliderSquelch.Value() != 0) {
        SetSquelch(SliderSquelch.Value(), Val(PopupMenuSquelchTime.Text()));
    }
    if (PopupMenuDeEmphasis.ListIndex() > 0) {
        SetDeEmphasis(PopupMenuDeEmphasis.ListIndex());
    }
    SendSetModulation();
    SendSetAGC();
    SendSetIdentity(TextFieldIdentity.Text());
    SendSetGeoLocation(TextFieldGeoLocation.Text());
}

void Window1::AudioRateReceived(std::string_view value) {
    audioRate = Val(value);
    Log("audioRate = " + Str(audioRate));
    PrimeSoundOutputBuffer();
    if (!TCPSocketAudio->IsConnected()) {
        return; // a refusal in the same message has already ended the link
    }
    isConnected = true;
    PushButtonRecord.SetEnabled(true);
    BeginArmedRecording();
}

} // namespace larkspool
