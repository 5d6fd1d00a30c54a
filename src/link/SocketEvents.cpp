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
    Log(Str(stamp));
    websocket->waitingForConnectReply = true;
    SendString(UpgradeRequest(kind, stamp, hostPort, key), &SocketOf(kind));
    Log("SendRequest ");
}

void Window1::SendString(const std::string& text, TCPSocket* socket) {
    if (socket != nullptr) {
        socket->Write(text);
    }
}

void Window1::TCPSocket_Connected(LinkKind kind) {
    if (kind == LinkKind::Audio) {
        ShowStatus("Connected");
        lastKiwiAudioSequence = -1;
        Timer1->SetMode(Timer::Mode::Multiple);
    } else {
        Log("Waterfall Connected");
    }
    SendRequest(kind, WebsocketOf(kind).get());
}

void Window1::TCPSocket_DataAvailable(LinkKind kind) {
    WebsocketsClass* const websocket = WebsocketOf(kind).get();
    if (websocket == nullptr) {
        return;
    }
    if (!websocket->waitingForConnectReply) {
        ReadFrames(kind);
    } else if (TakeConnectReply(*websocket, SocketOf(kind))) {
        LinkIsUp(kind);
    }
}

// The receiver speaks WebSocket from here on.
void Window1::LinkIsUp(LinkKind kind) {
    SendSetAuthorization(WebsocketOf(kind).get());
    if (kind == LinkKind::Audio) {
        ShowStatus("Switched to WebSocket protocol");
    } else {
        RecentreWaterfall();
        ShowStatus("Waterfall Switched to WebSocket protocol");
    }
}

// The first data on a link is the reply to the upgrade request, with whatever else came in the same
// read. True: the receiver speaks WebSocket from here on.
bool Window1::TakeConnectReply(WebsocketsClass& websocket, TCPSocket& socket) {
    const std::string reply = socket.ReadAll();
    TextArea1.AppendText(reply + "\n");
    Log("Connect reply: " + reply);
    websocket.waitingForConnectReply = false;
    return Contains(reply, SwitchingProtocols);
}

void Window1::ReadFrames(LinkKind kind) {
    WebsocketsClass& websocket = *WebsocketOf(kind);
    std::size_t received = 0;
    do {
        received = websocket.ReadNewData();
        while (websocket.WebsocketRead(frameTag, frameBody)) {
            DispatchFrame(kind, frameTag, frameBody);
        }
    } while (received > 0);
}

void Window1::DispatchFrame(LinkKind kind, const std::string& tag, const std::string& body) {
    if (tag == "MSG") {
        ParseMessage(body);
    } else if (tag == "SND" && kind == LinkKind::Audio) {
        ParseSoundData(body);
    } else if (tag == "W/F") {
        ParseWaterfallData(body);
    }
}

void Window1::TCPSocketAudio_Error() {
    Log("Audio Socket Error " + Str(TCPSocketAudio->LastErrorCode()));
    if (didManuallyDisconnect) {
        Log("didManuallyDisconnect set");
    }
    const bool lost = TCPSocketAudio->LastErrorCode() == ErrorLostConnection;
    if (lost && CheckBoxReconnect.Value() && !didManuallyDisconnect) {
        if (IsRecording()) {
            ArmRecording(RecordingWish::ToGoOn); // if the disk takes another file
            EndRecording();
        }
        if (pendingConnect == 0) { // else a wish waits, and goes first
            Log("Will auto reconnect");
            ConnectLater(ReconnectDelay);
        }
    }
}

void Window1::TCPSocketWaterfall_Error() {
    Log("Waterfall Socket Error " + Str(TCPSocketWaterfall->LastErrorCode()));
}

} // namespace larkspool
