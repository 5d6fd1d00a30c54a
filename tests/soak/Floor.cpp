#include "soak/Floor.h"

#include "link/WebsocketsClass.h"
#include "soak/SoakReceiver.h"

namespace larkspool::soak {

std::int64_t ReadBare(double hours) {
    constexpr std::size_t FrameSamples = 512; // the mean of the session's
    constexpr double FramePeriod = static_cast<double>(FrameSamples) / Rate;
    VirtualDesktop desktop;
    Random random(1);
    WebsocketsClass link(desktop, random);
    VirtualTCPSocket socket(desktop.queue);
    link.Init(socket);
    socket.Connect();
    socket.Accept();
    Books books(1);
    std::string wire;
    std::string tag;
    std::string body;
    const std::string row = WaterfallFrame();
    std::int64_t read = 0;
    const auto frames = static_cast<std::uint32_t>(hours * 3600 / FramePeriod);
    double rowsDue = 0;
    for (std::uint32_t sequence = 0; sequence < frames; ++sequence) {
        WriteSoundFrame(wire, books.Send(FrameSamples, false), sequence);
        socket.Deliver(wire);
        rowsDue += FramePeriod / RowPeriod;
        while (rowsDue >= 1) {
            rowsDue -= 1;
            socket.Deliver(row);
        }
        desktop.Advance(FramePeriod);
        socket.TakeSent();
        link.ReadNewData();
        while (link.WebsocketRead(tag, body)) {
            ++read;
        }
    }
    return read;
}

} // namespace larkspool::soak
