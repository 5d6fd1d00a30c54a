#include "console/Window1.h"

namespace larkspool {

namespace {

constexpr int StreamPort = 58286; // where a peer listens for sound
constexpr Color Gray = {150, 150, 150};
constexpr Color Red = {255, 0, 0};

} // namespace

void Window1::StartStreaming() {
    ReplyStreamRate();
    Log("start streaming");
    streamDatagram.address = RxUDPSocket->BroadcastAddress();
    streamDatagram.port = StreamPort;
    audioStream.isStreaming = true;
    WakeTimer4();
}

// The sound in a block that is not full yet is sent before the next stream's sound.
void Window1::EndStreaming() {
    Log("end streaming");
    audioStream.isStreaming = false;
    WakeTimer4();
}

void Window1::ShowStreaming() {
    const bool sends = audioStream.isStreaming && CheckBoxNetwork.Value();
    LabelStreaming.SetText(sends ? "Streaming on" : "Streaming");
    LabelStreaming.spokenName = sends ? "Streaming on" : "Streaming off";
    LabelStreaming.SetTextColor(sends ? Red : Gray); // what is spoken goes with the color
}

// Sent at once: waiting for the timer would wake the program once more for each frame.
void Window1::StreamSoundBlock(std::size_t sampleCount, const MemoryBlock& samples) {
    audioStream.StreamSoundBlock(sampleCount, samples);
    if (audioStream.FirstReadyToSend() != nullptr && CheckBoxNetwork.Value()) {
        Timer4_Action();
    }
}

// The timer ticks once where the stream or the box has changed. While the box is unticked it rests,
// and what waits goes out once the box is ticked.
void Window1::WakeTimer4() {
    if (CheckBoxNetwork.Value() && Timer4->RunMode() == Timer::Mode::Off) {
        Timer4->SetMode(Timer::Mode::Single);
    }
}

// Sends all that waits, in order.
void Window1::Timer4_Action() {
    ShowStreaming();
    while (const MemoryBlock* block = audioStream.FirstReadyToSend()) {
        streamDatagram.data.assign(block->View(0, block->Size()));
        WriteDatagram(streamDatagram);
        audioStream.FirstIsSent();
    }
}

// The library uses the broadcast address itself. A datagram that it can't send is lost; the peer
// sees the gap in the block numbers.
void Window1::WriteDatagram(const Datagram& d) {
    desktop.Raise([&] {
        desktop.Sound().SendUdpCommand(d.data.data(), static_cast<std::int64_t>(d.data.size()),
                                       d.port);
    });
}

} // namespace larkspool
