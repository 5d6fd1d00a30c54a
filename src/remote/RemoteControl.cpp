#include "console/Window1.h"
#include "platform/Text.h"
#include "remote/RemoteReply.h"
#include "shell/App.h"

#include <utility>

namespace larkspool {

namespace {

constexpr int CommandPort = 58284;     // where the console listens
constexpr int ReplyPort = 58283;       // where a peer listens for texts
constexpr double LikelyRate = 12001.0; // samples a second, told before a receiver has told its own

} // namespace

void Window1::InitNetworking() {
    audioStream.Init();
    RxUDPSocket->port = CommandPort;
    RxUDPSocket->Connect();
    Log("last error " + Str(RxUDPSocket->LastErrorCode()));
}

// Unticking stops what goes out and ends rig control; the UDP socket stays bound and its commands
// are still obeyed.
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
    if (command && !app.IsQuitting()) { // what began now would end without being closed
        Obey(*command);
    }
}

// Does what the user's hand would do; the control's own event does the rest.
void Window1::Obey(const RemoteCommand& command) {
    switch (command.verb) {
    case RemoteVerb::TellReceivers:
        SendToPeer(reply::ReceiverCount());
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
    SendToPeer(reply::StreamRate(audioRate));
}

void Window1::SendFrequency(double hertz) { SendToPeer(reply::Frequency(hertz)); }

void Window1::SendToPeer(std::string text) {
    WriteDatagram({RxUDPSocket->BroadcastAddress(), ReplyPort, std::move(text)});
}

} // namespace larkspool
