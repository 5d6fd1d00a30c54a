// A recorded session replayed as fast as it goes: frames off the wire, decoded, heard, tested for
// quiet and written to a file by the whole console, beside a plain write of the same bytes.
#include "support/ConsoleFixture.h"

#include <benchmark/benchmark.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace larkspool {
namespace {

constexpr int Rate = 12000;
constexpr int FrameSamples = 512;
constexpr double FrameSeconds = static_cast<double>(FrameSamples) / Rate;

// A channel that is in use half of the time: an over of 13 seconds, and as long nothing.
std::vector<std::int16_t> Samples(int frame) {
    constexpr int FramesInAnOver = 300;
    const bool quiet = frame / FramesInAnOver % 2 == 1;
    std::vector<std::int16_t> samples(FrameSamples, 1);
    for (int i = 0; !quiet && i < FrameSamples; ++i) {
        samples[static_cast<std::size_t>(i)] =
            static_cast<std::int16_t>((frame * FrameSamples + i) * 40503 % 20000 - 10000);
    }
    return samples;
}

class Session : public ConsoleFixture {
  public:
    using ConsoleFixture::Recordings;

    explicit Session(int squelch) {
        for (int frame = 0; frame < 600; ++frame) {
            frames.push_back(
                ServerFrame("SND" + SoundBody(static_cast<std::uint32_t>(frame), Samples(frame))));
        }
        desktop.sound.keepsSound = false;
        Start();
        ConnectAndStream();
        Console().TextFieldSquelchedDeadSpace.SetText("1");
        Console().SliderSquelch.SetValue(squelch);
        desktop.Advance(0.1);
        Console().PushButtonRecord.Push();
    }
    void TestBody() override {}

    // One frame, and all that the program does besides until the next.
    void Replay() {
        Audio().socket.Deliver(frames[next]);
        next = (next + 1) % frames.size();
        desktop.Advance(FrameSeconds);
    }

    // What the virtual desktop keeps for tests to look at would grow without limit.
    void Forget() {
        desktop.sound.TakeCalls();
        Audio().TakeRequest();
        Waterfall().TakeRequest();
    }

    std::uintmax_t BytesOnDisk() {
        std::uintmax_t bytes = 0;
        for (const FolderItem& file : Recordings()) {
            bytes += file.Length();
        }
        return bytes;
    }

  private:
    std::vector<std::string> frames;
    std::size_t next = 0;
};

void CountTime(benchmark::State& state, double seconds) {
    state.counters["times real time"] = benchmark::Counter(seconds, benchmark::Counter::kIsRate);
}

// With the squelch at 0 every frame is written; above, half of them are left out.
void ReplayASecond(benchmark::State& state) {
    Session session(static_cast<int>(state.range(0)));
    constexpr int FramesPerTurn = 24; // a little over a second
    for (auto _ : state) {
        for (int i = 0; i < FramesPerTurn; ++i) {
            session.Replay();
        }
        session.Forget();
    }
    CountTime(state, static_cast<double>(state.iterations()) * FramesPerTurn * FrameSeconds);
}
BENCHMARK(ReplayASecond)->UseRealTime()->ArgName("squelch")->Arg(0)->Arg(7);

void PlainWriteOfASecond(benchmark::State& state) {
    const auto path = std::filesystem::temp_directory_path() / "larkspool-plain-write";
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    std::array<std::vector<std::int16_t>, 24> frames;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        frames[i] = Samples(static_cast<int>(i));
    }
    for (auto _ : state) {
        for (const auto& frame : frames) {
            const auto written = write(file, frame.data(), frame.size() * sizeof frame[0]);
            benchmark::DoNotOptimize(written);
        }
    }
    close(file);
    std::filesystem::remove(path);
    CountTime(state, static_cast<double>(state.iterations()) * static_cast<double>(frames.size()) *
                         FrameSeconds);
}
BENCHMARK(PlainWriteOfASecond)->UseRealTime();

double ResidentKilobytes() {
    std::ifstream status("/proc/self/statm");
    double pages = 0;
    status >> pages >> pages;
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1024;
}

// A day and a night in one go, roll-over included: what the program holds after the first hour is
// what it holds after the last.
void ReplayADay(benchmark::State& state) {
    constexpr int Hours = 24;
    constexpr int FramesPerHour = static_cast<int>(3600 / FrameSeconds);
    for (auto _ : state) {
        Session session(0);
        std::array<double, Hours> resident = {};
        for (double& after : resident) {
            for (int i = 0; i < FramesPerHour; ++i) {
                session.Replay();
                if (i % 1000 == 0) {
                    session.Forget();
                }
            }
            session.Forget();
            after = ResidentKilobytes();
        }
        state.counters["kB after an hour"] = resident.front();
        state.counters["kB after half a day"] = resident[Hours / 2 - 1];
        state.counters["kB after a day"] = resident.back();
        state.counters["files"] = static_cast<double>(session.Recordings().size());
        state.counters["MB on disk"] = static_cast<double>(session.BytesOnDisk()) / 1e6;
    }
    CountTime(state,
              static_cast<double>(state.iterations()) * Hours * FramesPerHour * FrameSeconds);
}
BENCHMARK(ReplayADay)->UseRealTime()->Iterations(1)->Unit(benchmark::kSecond);

} // namespace
} // namespace larkspool
