#include "console/Window1.h"
#include "platform/Text.h"
#include "shell/App.h"

#include <utility>

namespace larkspool {

namespace {

constexpr std::size_t ShortestAddress = 5;

} // namespace

void Window1::PushButtonConnect_Action() {
    if (TextFieldAddress.Text().size() < ShortestAddress) {
        desktop.MsgBox("Please enter a valid URL for the KiwiSDR you wish to connect to");
        return;
    }
    if (Val(TextFieldPort.Text()) < 1) {
        desktop.MsgBox("Please enter a valid port number for the KiwiSDR you wish to connect to");
        return;
    }
    PushDisconnectButton();
    ConnectLater(ConnectDelay);
}

void Window1::PushButtonDisconnect_Action() {
    EndSession();
    ShowStatus("Disconnected");
}

void Window1::PushDisconnectButton() { PushButtonDisconnect.Push(); }

void Window1::CheckBoxReconnect_Action() { app.prefs.prefsReconnect = CheckBoxReconnect.Value(); }

// Calls can't be withdrawn, so each has a ticket, and only the newest ticket's call does anything:
// the later of two wishes wins, and what was withdrawn stays so.
void Window1::ConnectLater(int milliseconds) {
    pendingConnect = ++lastTicket;
    desktop.CallLater(milliseconds, [this, ticket = pendingConnect] {
        if (ticket == pendingConnect) {
            DoConnect();
        }
    });
}

void Window1::DoDisconnect() {
    DisarmRecording(RecordingWish::ToGoOn);
    HangUp();
}

// For good: no reconnect follows, and none that waits comes.
void Window1::EndSession() {
    pendingConnect = 0;
    didManuallyDisconnect = true;
    DoDisconnect();
    didManuallyDisconnect = false;
}

void Window1::HangUp() {
    EndRecording();
    PushButtonRecord.SetEnabled(false);
    isConnected = false;
    TCPSocketAudio->Disconnect();
    Timer1->SetMode(Timer::Mode::Off);
    TCPSocketWaterfall->Disconnect();
}

void Window1::DoConnect() {
    HangUp();
    pendingConnect = 0;
    WaterfallCanvas.DropPicture();
    MakeLink(LinkKind::Audio);
    MakeLink(LinkKind::Waterfall);
    Timer1->SetMode(Timer::Mode::Off);
    theHost = TextFieldAddress.Text();
    thePort = WholePart(Val(TextFieldPort.Text()));
    for (TCPSocket* socket : {TCPSocketAudio.get(), TCPSocketWaterfall.get()}) {
        socket->address = theHost;
        socket->port = WholePart<int>(static_cast<double>(thePort));
        socket->Connect();
    }
    ShowStatus("Connecting to " + theHost + ":" + Str(thePort));
}

void Window1::MakeLink(LinkKind kind) {
    std::unique_ptr<WebsocketsClass>& websocket = WebsocketOf(kind);
    if (websocket != nullptr) {
        websocket->Closing();
    }
    websocket = std::make_unique<WebsocketsClass>(desktop, app.myRandom);
    websocket->Init(SocketOf(kind));
}

TCPSocket& Window1::SocketOf(LinkKind kind) {
    return kind == LinkKind::Audio ? *TCPSocketAudio : *TCPSocketWaterfall;
}

std::unique_ptr<WebsocketsClass>& Window1::WebsocketOf(LinkKind kind) {
    return kind == LinkKind::Audio ? audioWebsocket : waterfallWebsocket;
}

// What the status line says, the log says too.
void Window1::ShowStatus(const std::string& text) {
    if (LabelStatus.Text() != text) {
        LabelStatus.SetText(text);
        Log(text);
    }
}

// Every second while the audio link is up.
void Window1::Timer1_Action() {
    if (audioWebsocket == nullptr) {
        return;
    }
    LabelStatus.SetText(Str(static_cast<double>(numSoundBytes) / 2.0) + " samples/sec    " +
                        Str(audioWebsocket->numRxBytes) + " bytes/sec");
    numSoundBytes = 0;
    audioWebsocket->numRxBytes = 0;
}

} // namespace larkspool
