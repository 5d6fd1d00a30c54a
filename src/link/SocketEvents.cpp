#include "console/Window1.h"
#include "link/CommandText.h"
#include "platform/Text.h"

namespace larkspool {

namespace {

constexpr std::size_t KeyBytes = 16;
constexpr int ReconnectDelay = 60000; // ms

} // namespace

void Window1::SendRequest(LinkKind kind, WebsocketsClass* websocket) {
    const std::string key = desktop.RandomBytes(KeyBytes);
    const std::string hostPort = theHost + ":" + Str(thePort);
    if (websocket == nullptr) {
        return;
    }
    const std::int64_t stamp = WholePart(desktop.UtcNow());
    Listbox1.AddRow(Str(stamp));
    websocket->waitingForConnectReply = true;
    SendString(UpgradeRequest(kind, stamp, hostPort, key),
               kind == LinkKind::Audio ? TCPSocketAudio.get() : TCPSocketWaterfall.get());
    Listbox1.AddRow("SendRequest ");
}

void Window1::SendString(const std::string& text, TCPSocket* socket) {
    if (socket != nullptr) {
        socket->Write(text);
    }
}

void Window1::TCPSocketAudio_Connected() {
    Listbox1.AddRow("Connected");
    LabelStatus.SetText("Connected");
    lastKiwiAudioSequence = -1;
    SendRequest(LinkKind::Audio, audioWebsocket.get());
    Timer1->SetMode(Timer::Mode::Multiple);
}

void Window1::TCPSocketWaterfall_Connected() {
    Listbox1.AddRow("Waterfall Connected");
    SendRequest(LinkKind::Waterfall, waterfallWebsocket.get());
}

void Window1::TCPSocketAudio_DataAvailable() {
    if (audioWebsocket == nullptr) {
        return;
    }
    if (!audioWebsocket->waitingForConnectReply) {
        ReadFrames(*audioWebsocket, true);
    } else if (TakeConnectReply(*audioWebsocket, *TCPSocketAudio)) {
        SendSetAuthorization(audioWebsocket.get());
        LabelStatus.SetText("Switched to WebSocket protocol");
    }
}

void Window1::TCPSocketWaterfall_DataAvailable() {
    if (waterfallWebsocket == nullptr) {
        return;
    }
    if (!waterfallWebsocket->waitingForConnectReply) {
        ReadFrames(*waterfallWebsocket, false);
    } else if (TakeConnectReply(*waterfallWebsocket, *TCPSocketWaterfall)) {
        SendSetAuthorization(waterfallWebsocket.get());
        RecentreWaterfall();
        LabelStatus.SetText("Waterfall Switched to WebSocket protocol");
    }
}

// The first data on a link is the reply to the upgrade request, with whatever else came in the same
// read. True: the receiver speaks WebSocket from here on.
bool Window1::TakeConnectReply(WebsocketsClass& websocket, TCPSocket& socket) {
    const std::string reply = socket.ReadAll();
    TextArea1.AppendText(reply + "\n");
    Listbox1.AddRow("Connect reply: " + reply);
    websocket.waitingForConnectReply = false;
    return Contains(reply, SwitchingProtocols);
}

void Window1::ReadFrames(WebsocketsClass& websocket, bool takesSound) {
    std::size_t received = 0;
    do {
        received = websocket.ReadNewData();
        while (websocket.WebsocketRead(frameTag, frameBody)) {
            DispatchFrame(frameTag, frameBody, takesSound);
        }
    } while (received > 0);
}

void Window1::DispatchFrame(const std::string& tag, const std::string& body, bool takesSound) {
    if (tag == "MSG") {
        ParseMessage(body);
    } else if (tag == "SND" && takesSound) {
        ParseSoundData(body);
    } else if (tag == "W/F") {
        ParseWaterfallData(body);
    }
}

void Window1::TCPSocketAudio_Error() {
    Listbox1.AddRow("Audio Socket Error " + Str(TCPSocketAudio->LastErrorCode()));
    if (didManuallyDisconnect) {
        Listbox1.AddRow("didManuallyDisconnect set");
    }
    const bool lost = TCPSocketAudio->LastErrorCode() == ErrorLostConnection;
    if (lost && CheckBoxReconnect.Value() && !didManuallyDisconnect) {
        Listbox1.AddRow("Will auto reconnect");
        if (IsRecording()) {
            // Nobody asked for the recording to end: it goes on in a new file, if the disk takes
            // one.
            resumesRecording = true;
            PushButtonRecord.SetEnabled(true);
            PushButtonRecord.Push();
        }
        ConnectLater(ReconnectDelay, ConnectKind::Reconnect);
    }
    didManuallyDisconnect = false;
}

void Window1::TCPSocketWaterfall_Error() {
    Listbox1.AddRow("Waterfall Socket Error " + Str(TCPSocketWaterfall->LastErrorCode()));
}

} // namespace larkspool
