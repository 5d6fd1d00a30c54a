#include "console/Window1.h"
#include "link/CommandText.h"
#include "platform/Text.h"

namespace larkspool {

void Window1::SendCommand(std::string_view text) {
    if (audioWebsocket != nullptr) {
        audioWebsocket->WebsocketWrite(text);
    }
}

void Window1::SendSetAuthorization(WebsocketsClass* websocket) {
    if (websocket == nullptr) {
        return;
    }
    websocket->WebsocketWrite(command::Authorization);
    Log("SendSetAuthorization");
}

void Window1::SendSetAudioOK() {
    if (audioWebsocket == nullptr) {
        return;
    }
    for (const std::string_view text : command::AudioOK) {
        SendCommand(text);
    }
    Log("SendSetAudioOK ");
}

void Window1::SendSetModulation() {
    if (audioWebsocket == nullptr) {
        return;
    }
    lowCut = WholePart(Val(TextFieldLowCut.Text()));
    hiCut = WholePart(Val(TextFieldHighCut.Text()));
    tunedFreq = Val(TextFieldFreq.Text());
    WaterfallCanvas.SetPassband(static_cast<double>(lowCut), static_cast<double>(hiCut));
    SendCommand(command::Modulation(PopupMenuMode.Text(), lowCut, hiCut, TextFieldFreq.Text()));
    RecenterWaterfall();
}

void Window1::SendSetAGC() {
    SendCommand(command::SetAgc({.on = CheckBoxAgc.Value(),
                                 .hang = CheckBoxHang.Value(),
                                 .threshold = SliderAgcThreshold.Value(),
                                 .slope = SliderAgcSlope.Value(),
                                 .decay = SliderAgcDecay.Value(),
                                 .manualGain = SliderAgcManualGain.Value()}));
}

void Window1::SendSetIdentity(const std::string& name) {
    if (audioWebsocket == nullptr) {
        return;
    }
    SendCommand(command::Identity(name));
    Listbox1.AddRow("SendSetIdentity " + name); // not into the log's file
}

void Window1::SendSetGeoLocation(const std::string& place) {
    if (audioWebsocket == nullptr) {
        return;
    }
    SendCommand(command::GeoLocation(place));
    Listbox1.AddRow("SendSetGeoLocation " + place); // not into the log's file
}

void Window1::SendSetBrowser() {
    if (audioWebsocket == nullptr) {
        return;
    }
    SendCommand(command::Browser);
    Log("SendSetBrowser ");
}

void Window1::SetSquelch(int level, double seconds) {
    SendCommand(command::Squelch(level, seconds));
}

void Window1::SetDeEmphasis(int index) { SendCommand(command::DeEmphasis(index)); }

void Window1::SetMute(bool mute) { SendCommand(command::Mute(mute)); }

} // namespace larkspool
