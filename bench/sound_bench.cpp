#include "tonebridge/Engine.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

namespace {

constexpr std::int64_t rate = 12000;
constexpr std::size_t frameSize = 512;

std::vector<std::int16_t> Sawtooth(std::size_t count) {
    std::vector<std::int16_t> samples(count);
    for (std::size_t i = 0; i < count; ++i) {
        samples[i] = static_cast<std::int16_t>(i * 997);
    }
    return samples;
}

// One second of sound, in callbacks of 10 ms.
void RenderOneSecond(benchmark::State& state) {
    std::int64_t clock = 0;
    tonebridge::Engine engine([&] { return clock; });
    engine.SetDeviceRate(static_cast<std::uint32_t>(state.range(0)));
    const std::vector<std::int16_t> block = Sawtooth(rate / 100);
    std::vector<float> out(static_cast<std::size_t>(state.range(0)) / 100);
    for (int i = 0; i < 150; ++i) {
        engine.Push(rate / 100, block.data(), rate);
    }
    for (auto unused : state) {
        for (int i = 0; i < 100; ++i) {
            engine.Push(rate / 100, block.data(), rate);
            clock += 10'000'000;
            engine.Render(out);
            benchmark::DoNotOptimize(out.data());
        }
    }
    state.counters["underruns"] = static_cast<double>(engine.Underruns());
}
BENCHMARK(RenderOneSecond)->Arg(48000)->Arg(44100)->Unit(benchmark::kMillisecond);

// A block that the network delivers. A new stream now and then keeps the queue
// from filling up.
void QueueOneBlock(benchmark::State& state) {
    std::int64_t clock = 0;
    tonebridge::Engine engine([&] { return clock; });
    const std::vector<std::int16_t> block = Sawtooth(frameSize);
    std::vector<float> out(480);
    int count = 0;
    for (auto unused : state) {
        engine.Push(frameSize, block.data(), rate);
        if (++count == 1024) {
            state.PauseTiming();
            count = 0;
            engine.Push(tonebridge::Engine::NewStream, block.data(), rate);
            engine.Render(out);
            engine.Render(out);
            state.ResumeTiming();
        }
    }
    state.counters["dropped"] = static_cast<double>(engine.DroppedSamples());
}
BENCHMARK(QueueOneBlock);

// The least that queueing a block could cost.
void CopyOneBlock(benchmark::State& state) {
    const std::vector<std::int16_t> block = Sawtooth(frameSize);
    std::vector<std::int16_t> queue(std::size_t{1} << 20);
    std::size_t position = 0;
    for (auto unused : state) {
        std::memcpy(queue.data() + position, block.data(), frameSize * sizeof(std::int16_t));
        benchmark::ClobberMemory();
        position = (position + frameSize) % queue.size();
    }
}
BENCHMARK(CopyOneBlock);

} // namespace
