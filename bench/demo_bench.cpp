#include "demo/Link.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace larkspool::demo {
namespace {

constexpr int TicksPerSecond = 100;

// A client with both its links, reading all that comes at once.
class Client {
  public:
    Client(const Band& band, std::size_t number, TimePoint now, const Moment& utc)
        : sound(LinkKind::Sound, band, Antennas()[number % 7], {}, now),
          waterfall(LinkKind::Waterfall, band, Antennas()[number % 7], {}, now) {
        static const std::vector<std::string> tunings{
            "mod=am low_cut=-5000 high_cut=5000 freq=9525",
            "mod=cw low_cut=300 high_cut=700 freq=14011.5",
            "mod=lsb low_cut=-2700 high_cut=-300 freq=7078",
            "mod=usb low_cut=300 high_cut=2700 freq=14195",
            "mod=sam low_cut=-4900 high_cut=4900 freq=6160",
            "mod=nbfm low_cut=-6000 high_cut=6000 freq=29600",
        };
        Say(sound, "SET auth t=kiwi p=#", now, utc);
        Say(sound, "SET AR OK in=12000 out=44100", now, utc);
        Say(sound, "SET " + tunings[number % tunings.size()], now, utc);
        Say(waterfall, "SET auth t=kiwi p=#", now, utc);
        Say(waterfall, "SET maxdb=0 mindb=-200 wf_speed=4", now, utc);
        Say(waterfall, "SET zoom=11 start=7828000", now, utc); // some 14 MHz, full of Morse
    }

    void Pass(TimePoint now, const Moment& utc) {
        for (Link* link : {&sound, &waterfall}) {
            Say(*link, "SET keepalive", now, utc);
            link->Tick(now, utc);
            for (auto bytes = link->Output().Ready(now); !bytes.empty();
                 bytes = link->Output().Ready(now)) {
                received += bytes.size();
                link->Output().Consume(bytes.size());
            }
        }
    }

    std::size_t received = 0;

  private:
    // With a mask of zeros a frame's payload is plain.
    static void Say(Link& link, const std::string& text, TimePoint now, const Moment& utc) {
        std::vector<std::uint8_t> frame{
            0x82, static_cast<std::uint8_t>(0x80 + text.size()), 0, 0, 0, 0};
        frame.insert(frame.end(), text.begin(), text.end());
        link.Receive(frame, now, utc);
    }

    Link sound;
    Link waterfall;
};

// A second of sound and of 25 waterfall rows for so many clients. One client is the peer: a dozen
// should cost at most a dozen times as much, and far less than the second that it lasts.
void StreamOneSecond(benchmark::State& state) {
    const Band band(1);
    TimePoint now = TimePoint{} + Seconds(1000.0);
    Moment utc{1'700'000'010, 0.25};
    std::vector<std::unique_ptr<Client>> clients;
    for (std::size_t i = 0; i < static_cast<std::size_t>(state.range(0)); ++i) {
        clients.push_back(std::make_unique<Client>(band, i, now, utc));
    }
    for (auto unused : state) {
        for (int tick = 0; tick < TicksPerSecond; ++tick) {
            now += Seconds(1.0 / TicksPerSecond);
            utc = utc.After(1.0 / TicksPerSecond);
            for (const auto& client : clients) {
                client->Pass(now, utc);
            }
        }
    }
    std::size_t received = 0;
    for (const auto& client : clients) {
        received += client->received;
    }
    const double seconds = static_cast<double>(state.iterations() * state.range(0));
    state.counters["bytes_per_client_s"] = static_cast<double>(received) / seconds;
}
BENCHMARK(StreamOneSecond)->Arg(1)->Arg(12)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace larkspool::demo
