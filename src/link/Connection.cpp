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
    didManuallyDisconnect = false;
    ConnectLater(ConnectDelay, ConnectKind::Wanted);
}

void Window1::PushButtonDisconnect_Action() {
    didManuallyDisconnect = true;
    DoDisconnect();
}

void Window1::PushDisconnectButton() { PushButtonDisconnect.Push(); }

void Window1::CheckBoxReconnect_Action() { app.prefs.prefsReconnect = CheckBoxReconnect.Value(); }

// Calls can't be withdrawn, so each has a ticket, and only the newest ticket's call does anything.
// A wish replaces whatever waits; a reconnect waits only if nothing else does. A session that has
// begun meanwhile has taken the ticket away, and with it every stale reconnect.
void Window1::ConnectLater(int milliseconds, ConnectKind kind) {
    if (kind == ConnectKind::Reconnect && pendingConnect != 0) {
        return;
    }
    pendingConnect = ++lastTicket;
    desktop.CallLater(milliseconds, [this, ticket = pendingConnect] {
        if (ticket == pendingConnect) {
            DoConnect();
        }
    });
}

void Window1::DoDisconnect() {
    resumesRecording = false;
    HangUp();
}

void Window1::HangUp() {
    if (IsRecording()) {
        // The button may be disabled at this moment; the recording must end all the same.
        PushButtonRecord.SetEnabled(true);
        PushButtonRecord.Push();
    }
    PushButtonRecord.SetEnabled(false);
    isConnected = false;
    TCPSocketAudio->Disconnect();
    Timer1->SetMode(Timer::Mode::Off);
    TCPSocketWaterfall->Disconnect();
}

void Window1::DoConnect() {
    HangUp();
    pendingConnect = 0;
    didManuallyDisconnect = false;
    WaterfallCanvas.DropPicture();
    MakeLink(audioWebsocket, *TCPSocketAudio);
    MakeLink(waterfallWebsocket, *TCPSocketWaterfall);
    Timer1->SetMode(Timer::Mode::Off);
    theHost = TextFieldAddress.Text();
    thePort = WholePart(Val(TextFieldPort.Text()));
    for (TCPSocket* socket : {TCPSocketAudio.get(), TCPSocketWaterfall.get()}) {
        socket->address = theHost;
        socket->port = WholePart<int>(static_cast<double>(thePort));
        socket->Connect();
    }
    LabelStatus.SetText("Connecting to " + theHost + ":" + Str(thePort));
}

void Window1::MakeLink(std::unique_ptr<WebsocketsClass>& websocket, TCPSocket& socket) {
    if (websocket != nullptr) {
        websocket->Closing();
    }
    websocket = std::make_unique<WebsocketsClass>(desktop, app.myRandom);
    websocket->Init(socket);
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
