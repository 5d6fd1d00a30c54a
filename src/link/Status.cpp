// What the status line shows of the session.
#include "console/Window1.h"

namespace larkspool {

namespace {

constexpr int TicksPerSecond = 10; // of Timer3

} // namespace

// Shows an event's words until the next statistics, one second later at most. A failure of the
// audio link stays visible whatever the waterfall's link does.
void Window1::ShowStatus(const std::string& words) {
    statusLine.Say(words);
    if (linkHealth.HasFailed()) {
        statusLine.SetRemark(linkHealth.Problem());
    }
    ShowStatusLine();
}

void Window1::ShowRemark() {
    statusLine.SetRemark(linkHealth.Problem());
    ShowStatusLine();
}

// The words of the status line also go to the log.
void Window1::ShowStatusLine() {
    statusLine.SetSecondsToReconnect((reconnectTicks + TicksPerSecond - 1) / TicksPerSecond);
    LabelStatus.SetText(statusLine.Text());
    if (const std::string news = statusLine.TakeNews(); !news.empty()) {
        Log(news);
    }
}

// Every second while the audio link is up, and after its loss until the next connect or disconnect.
void Window1::Timer1_Action() {
    if (audioWebsocket == nullptr) {
        return;
    }
    if (TCPSocketAudio->IsConnected()) {
        linkHealth.Tick();
    }
    statusLine.SayStatistics(static_cast<double>(numSoundBytes) / 2.0, audioWebsocket->numRxBytes);
    numSoundBytes = 0;
    audioWebsocket->numRxBytes = 0;
    if (linkHealth.IsSilent() && CheckBoxReconnect.Value() && TCPSocketAudio->IsConnected()) {
        TCPSocketAudio->Disconnect(); // the socket's error event then handles the lost link
    } else {
        ShowRemark();
    }
}

// Ten times per second. The text changes once per second, by the statistics while they run.
void Window1::CountDown() {
    if (reconnectTicks > 1) {
        --reconnectTicks;
        if (reconnectTicks % TicksPerSecond == 0 && Timer1->RunMode() == Timer::Mode::Off) {
            ShowStatusLine();
        }
    }
}

} // namespace larkspool
