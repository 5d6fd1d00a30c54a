#include "console/Window1.h"
#include "link/CommandText.h"
#include "platform/Text.h"

namespace larkspool {

namespace {

constexpr std::size_t KeyBytes = 16;

} // namespace

void Window1::SendRequest(LinkKind kind, WebsocketsClass* websocket) {
    const std::string key = desktop.RandomBytes(KeyBytes);
    const std::string hostPort = HostPort(theHost, thePort);
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
    } else if (websocket->ReadReply()) {
        TakeConnectReply(kind);
    }
}

// From now on the receiver sends WebSocket frames.
void Window1::LinkIsUp(LinkKind kind) {
    SendSetAuthorization(WebsocketOf(kind).get());
    if (kind == LinkKind::Audio) {
        ShowStatus("Switched to WebSocket protocol");
    } else {
        RecenterWaterfall();
        ShowStatus("Waterfall Switched to WebSocket protocol");
    }
}

void Window1::TakeConnectReply(LinkKind kind) {
    const std::string& reply = WebsocketOf(kind)->connectReply;
    TextArea1.AppendText(reply + "\n");
    Log("Connect reply: " + reply);
    if (kind == LinkKind::Audio) {
        linkHealth.Arrived();
    }
    if (Contains(reply, SwitchingProtocols)) {
        LinkIsUp(kind);
    } else if (kind == LinkKind::Audio) {
        linkHealth.NotAReceiver(reply);
        ShowRemark();
    } else {
        linkHealth.WaterfallFailed();
    }
}

void Window1::ReadFrames(LinkKind kind) {
    WebsocketsClass& websocket = *WebsocketOf(kind);
    std::size_t received = 0;
    do {
        received = websocket.ReadNewData();
        while (websocket.WebsocketRead(frameTag, frameBody)) {
            if (kind == LinkKind::Audio) {
                linkHealth.Arrived();
            }
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
    const int code = TCPSocketAudio->LastErrorCode();
    Log("Audio Socket Error " + Str(code));
    if (didManuallyDisconnect) {
        Log("didManuallyDisconnect set");
    }
    isConnected = false;
    if (code == ErrorLostConnection && CheckBoxReconnect.Value() && !didManuallyDisconnect) {
        if (IsRecording()) {
            ArmRecording(RecordingWish::ToGoOn); // EndRecording disarms it if the disk fails
            EndRecording();
        }
        if (pendingConnect == 0) { // otherwise a connect is already planned
            ReconnectLater();
        }
    }
    if (!isHangingUp) {
        const std::string& reply = audioWebsocket->connectReply;
        if (Contains(reply, SwitchingProtocols)) { // it was up, perhaps for less than a second
            statusLine.SayStatistics(static_cast<double>(numSoundBytes) / 2.0,
                                     audioWebsocket->numRxBytes);
        } else if (Contains(reply, "\n")) {
            linkHealth.NotAReceiver(reply); // though it has not ended as a reply does
        }
        linkHealth.Failed(TCPSocketAudio->LastFailure(), code);
        ShowRemark();
    }
}

void Window1::TCPSocketWaterfall_Error() {
    Log("Waterfall Socket Error " + Str(TCPSocketWaterfall->LastErrorCode()));
    linkHealth.WaterfallFailed(); // the next second's statistics show it
}

} // namespace larkspool
