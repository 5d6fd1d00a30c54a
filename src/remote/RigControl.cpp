// Rig control changes the controls as the user would, and answers with what they show.
#include "console/Window1.h"
#include "platform/Text.h"
#include "shell/App.h"
#include "shell/Version.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace larkspool {

namespace {

using Code = RigReply::Code;

constexpr double HertzPerKilohertz = 1000;
constexpr double HighestFrequency = 1e12; // Hz; a field shows no more digits
constexpr double MeterAtS9 = -73;         // dBm, on shortwave
constexpr std::string_view Recording = "RECORD";

RigReply WithValue(std::string_view label, std::string text) {
    return {Code::Done, {{label, std::move(text)}}};
}

std::string Share(const Slider& slider) {
    return Format(static_cast<double>(slider.Value()) / slider.Maximum(), "0.000000");
}

} // namespace

void Window1::OpenRigControl() {
    if (const int code = rigServer.Open(); code != 0) {
        Log("rig control: port " + Str(RigServer::Port) + ", error " + Str(code));
    }
}

// While the program quits, nothing would close what a command starts.
std::string Window1::AnswerRig(const RigCommand& command) {
    return app.IsQuitting() ? std::string() : RigReplyText(command, ObeyRig(command));
}

RigReply Window1::ObeyRig(const RigCommand& command) {
    switch (command.verb) {
    case RigVerb::GetFrequency:
        return WithValue("Frequency", Str(Val(TextFieldFreq.Text()) * HertzPerKilohertz));
    case RigVerb::SetFrequency:
        return SetRigFrequency(*command.number);
    case RigVerb::GetMode:
        return TellRigMode();
    case RigVerb::SetMode:
        return SetRigMode(command);
    case RigVerb::GetLevel:
        return TellRigLevel(command.word);
    case RigVerb::SetLevel:
        return SetRigLevel(command);
    case RigVerb::GetFunction:
        return command.word == Recording ? WithValue("", IsRecording() ? "1" : "0")
                                         : RigReply{Code::NotAvailable};
    case RigVerb::SetFunction:
        return command.word == Recording ? RecordByRig(*command.number != 0)
                                         : RigReply{Code::NotAvailable};
    case RigVerb::StartRecording:
        return RecordByRig(true);
    case RigVerb::StopRecording:
        return RecordByRig(false);
    case RigVerb::GetRigInfo:
        return TellRig();
    default:
        return ReplyWithoutConsole(command);
    }
}

RigReply Window1::SetRigFrequency(double hertz) {
    if (hertz < 0 || hertz > HighestFrequency) {
        return {Code::Invalid};
    }
    TextFieldFreq.SetText(Str(hertz / HertzPerKilohertz));
    return {};
}

RigPassband Window1::PassbandShown() const {
    return {Val(TextFieldLowCut.Text()), Val(TextFieldHighCut.Text())};
}

RigReply Window1::TellRigMode() {
    return {Code::Done,
            {{"Mode", std::string(RigModeName(PopupMenuMode.ListIndex()))},
             {"Passband", RigWidthText(PassbandShown())}}};
}

// The mode sets its own passband. The widths 0 (default) and -1 (no change) leave it so.
RigReply Window1::SetRigMode(const RigCommand& command) {
    const auto row = RigModeRow(command.word);
    const double wanted = command.number.value_or(0);
    if (!row || wanted < -1 || wanted > WidestPassband) {
        return {Code::Invalid};
    }
    PopupMenuMode.SetListIndex(*row);
    if (wanted > 0) {
        const RigPassband edges = RigEdges(*row, PassbandShown(), wanted);
        TextFieldLowCut.SetText(Str(edges.low));
        TextFieldHighCut.SetText(Str(edges.high));
    }
    return {};
}

RigReply Window1::TellRigLevel(const std::string& name) {
    if (name == "STRENGTH") {
        return WithValue("", Str(std::lround(sMeter - MeterAtS9)));
    }
    if (name == "AF") {
        return WithValue("", Share(OutputVolumeSlider));
    }
    return name == "SQL" ? WithValue("", Share(SliderSquelch)) : RigReply{Code::NotAvailable};
}

RigReply Window1::SetRigLevel(const RigCommand& command) {
    const bool isVolume = command.word == "AF";
    if (!isVolume && command.word != "SQL") {
        return {Code::NotAvailable};
    }
    Slider& slider = isVolume ? OutputVolumeSlider : SliderSquelch;
    const double share = std::clamp(*command.number, 0.0, 1.0);
    slider.SetValue(static_cast<int>(std::lround(share * slider.Maximum())));
    return {};
}

// Without a session the button is disabled, and a disk may refuse the file.
RigReply Window1::RecordByRig(bool wanted) {
    if (IsRecording() != wanted) {
        PushButtonRecord.Push();
    }
    return {IsRecording() == wanted ? Code::Done : Code::Rejected};
}

RigReply Window1::TellRig() {
    return WithValue("",
                     "VFO=" + std::string(OnlyRigVfo) +
                         " Freq=" + Str(Val(TextFieldFreq.Text()) * HertzPerKilohertz) +
                         " Mode=" + std::string(RigModeName(PopupMenuMode.ListIndex())) +
                         " Width=" + RigWidthText(PassbandShown()) +
                         " RX=1 TX=0\nSplit=0 SatMode=0\nRig=Larkspool\nApp=Larkspool\nVersion=" +
                         version::Short + "\n");
}

} // namespace larkspool
