#include "console/Window1.h"
#include "platform/Text.h"
#include "shell/App.h"

#include <utility>

namespace larkspool {

namespace {

constexpr int CommandPort = 58284;     // where the console listens
constexpr int ReplyPort = 58283;       // where a peer listens for texts
constexpr double LikelyRate = 12001.0; // samples per second, until a receiver has sent its rate
constexpr int Receivers = 1;           // a console is one receiver

// The text that a peer gets as one datagram. The zero byte is part of it.
std::string ZeroEnded(std::string text) {
    text.push_back('\0');
    return text;
}

} // namespace

void Window1::InitNetworking() {
    audioStream.Init();
    RxUDPSocket->port = CommandPort;
    RxUDPSocket->Connect();
    Log("last error " + Str(RxUDPSocket->LastErrorCode()));
}

// Without the tick nothing is sent and rig control ends. The UDP socket stays bound, and its
// commands still work.
void Window1::CheckBoxNetwork_Action(const CheckBox& checkBox) {
    app.prefs.prefsUseNetworking = checkBox.Value();
    Timer4->SetMode(checkBox.Value() ? Timer::Mode::Single : Timer::Mode::Off);
    if (checkBox.Value() && !audioStream.IsReady()) {
        InitNetworking();
    }
    if (checkBox.Value()) {
        OpenRigControl();
    } else {
        rigServer.Close();
    }
    ShowStreaming();
}

void Window1::RxUDPSocket_DataAvailable(UDPSocket& socket) {
    const std::string line = RemoteLine(socket.Read().data);
    Log(line);
    const auto command = ParseRemoteCommand(line);
    if (command && !app.IsQuitting()) { // nothing would close what starts now
        Obey(*command);
    }
}

// Changes a control as the user would; the control's event does the rest.
void Window1::Obey(const RemoteCommand& command) {
    switch (command.verb) {
    case RemoteVerb::TellReceivers:
        SendToPeer(ZeroEnded("vrxcount:" + Str(Receivers)));
        ReplyStreamRate();
        break;
    case RemoteVerb::StartStreaming:
        StartStreaming();
        break;
    case RemoteVerb::EndStreaming:
        EndStreaming();
        break;
    case RemoteVerb::SetFrequency:
        TextFieldFreq.SetText(command.text);
        break;
    case RemoteVerb::SelectMode:
        PopupMenuMode.SetListIndex(command.row);
        break;
    case RemoteVerb::ToggleRecording:
        PushButtonRecord.Push();
        break;
    case RemoteVerb::Connect:
        PushButtonConnect.Push();
        break;
    case RemoteVerb::Disconnect:
        PushButtonDisconnect.Push();
        break;
    case RemoteVerb::SetAddress:
        TextFieldAddress.SetText(command.text);
        break;
    case RemoteVerb::SetHighCut:
        TextFieldHighCut.SetText(command.text);
        break;
    case RemoteVerb::SetLowCut:
        TextFieldLowCut.SetText(command.text);
        break;
    }
}

void Window1::ReplyStreamRate() {
    if (audioRate == 0) {
        audioRate = LikelyRate;
    }
    SendToPeer(ZeroEnded("streamrate:" + Str(audioRate)));
}

void Window1::SendFrequency(double hertz) {
    SendToPeer(ZeroEnded("freq:" + Format(hertz, "000000000")));
}

void Window1::SendToPeer(std::string text) {
    WriteDatagram({RxUDPSocket->BroadcastAddress(), ReplyPort, std::move(text)});
}

} // namespace larkspool
