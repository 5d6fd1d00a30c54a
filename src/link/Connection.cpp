#include "console/Window1.h"
#include "directory/PastedUrl.h"
#include "platform/Text.h"
#include "shell/App.h"

#include <utility>

namespace larkspool {

namespace {

constexpr std::size_t ShortestAddress = 5;
constexpr double HighestPort = 65535;
constexpr int ConnectDelay = 1000;    // ms, so that the receiver sees the end of the old session
constexpr int ReconnectDelay = 60000; // ms

} // namespace

void Window1::PushButtonConnect_Action() {
    if (TidyAddressAndPort()) {
        PushDisconnectButton();
        ConnectSoon();
    }
}

// False: no receiver can have this address or port; the user has seen a message.
bool Window1::TidyAddressAndPort() {
    const PastedUrl typed = TidyReceiver(TextFieldAddress.Text(), TextFieldPort.Text());
    TextFieldAddress.SetText(typed.host);
    TextFieldPort.SetText(typed.port);
    const bool isIPv6 = Contains(typed.host, ":"); // which may be as short as "::1"
    if (typed.host.size() < ShortestAddress && !isIPv6) {
        desktop.MsgBox("Please enter a valid URL for the KiwiSDR you wish to connect to");
        return false;
    }
    const double port = Val(typed.port);
    if (port < 1 || port >= HighestPort + 1) {
        desktop.MsgBox("Please enter a valid port number for the KiwiSDR you wish to connect to");
        return false;
    }
    return true;
}

void Window1::ConnectSoon() {
    ConnectLater(ConnectDelay);
    statusLine.Begin(HostPort(TextFieldAddress.Text(), WholePart(Val(TextFieldPort.Text()))));
    ShowStatusLine();
}

void Window1::PushButtonDisconnect_Action() { EndSession(); }

void Window1::PushDisconnectButton() { PushButtonDisconnect.Push(); }

void Window1::CheckBoxReconnect_Action() { app.prefs.prefsReconnect = CheckBoxReconnect.Value(); }

// A planned call can't be cancelled. Each call has a ticket, and only the call with the current
// ticket acts: a later request replaces an earlier one, and WithdrawConnect cancels it.
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

void Window1::ReconnectLater() {
    Log("Will auto reconnect");
    ConnectLater(ReconnectDelay);
    reconnectTicks = ReconnectDelay / DisplayPeriod;
}

void Window1::WithdrawConnect() {
    pendingConnect = 0;
    reconnectTicks = 0;
}

// Also cancels a planned reconnect; no other one follows.
void Window1::EndSession() {
    WithdrawConnect();
    didManuallyDisconnect = true;
    DoDisconnect();
    didManuallyDisconnect = false;
    ShowStatus("Disconnected");
}

void Window1::HangUp() {
    EndRecording();
    PushButtonRecord.SetEnabled(false);
    isHangingUp = true;
    TCPSocketAudio->Disconnect();
    Timer1->SetMode(Timer::Mode::Off);
    TCPSocketWaterfall->Disconnect();
    isHangingUp = false;
    linkHealth = LinkHealth();
}

void Window1::DoConnect() {
    HangUp();
    WithdrawConnect();
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
    statusLine.Begin(HostPort(theHost, thePort));
    ShowStatusLine();
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

} // namespace larkspool
