// What the status line and the meter show of the session.
#include "console/Window1.h"

namespace larkspool {

namespace {

constexpr int TicksASecond = 10; // of Timer3

} // namespace

// An event's own words. A failure of the audio link stays to be seen whatever the other link does.
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

// What the status line says in words, the log says too.
void Window1::ShowStatusLine() {
    statusLine.SetSecondsToReconnect((reconnectTicks + TicksASecond - 1) / TicksASecond);
    LabelStatus.SetText(statusLine.Text());
    if (const std::string news = statusLine.TakeNews(); !news.empty()) {
        Log(news);
    }
}

// Every second while the audio link is up, and behind its loss until somebody acts.
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
        TCPSocketAudio->Disconnect(); // lost, and its error event shows it
    } else {
        ShowRemark();
    }
}

// Ten times a second. The text changes once: by the statistics where they run.
void Window1::CountDown() {
    if (reconnectTicks > 1) {
        --reconnectTicks;
        if (reconnectTicks % TicksASecond == 0 && Timer1->RunMode() == Timer::Mode::Off) {
            ShowStatusLine();
        }
    }
}

} // namespace larkspool
