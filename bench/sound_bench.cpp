#include "tonebridge/Engine.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#ifdef LARKSPOOL_HAS_SAMPLERATE
#include <samplerate.h>
#endif

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
    engine.OpenDevice(static_cast<std::uint32_t>(state.range(0)));
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

#ifdef LARKSPOOL_HAS_SAMPLERATE
// The same second through another converter, at the quality that comes nearest
// in what is heard; without ring, gain and control.
void ConvertOneSecondByThePeer(benchmark::State& state) {
    int error = 0;
    SRC_STATE* const converter = src_new(SRC_SINC_MEDIUM_QUALITY, 1, &error);
    std::vector<float> in(rate / 100);
    for (std::size_t i = 0; i < in.size(); ++i) {
        in[i] = static_cast<float>(static_cast<std::int16_t>(i * 997)) / 32768.0F;
    }
    std::vector<float> out(static_cast<std::size_t>(state.range(0)) / 100 + 1);
    SRC_DATA data{};
    for (auto unused : state) {
        for (int i = 0; i < 100; ++i) {
            data.data_in = in.data();
            data.input_frames = static_cast<long>(in.size());
            data.data_out = out.data();
            data.output_frames = static_cast<long>(out.size());
            data.src_ratio = static_cast<double>(state.range(0)) / (rate * (1.0 + i * 1e-8));
            src_process(converter, &data);
            benchmark::DoNotOptimize(out.data());
        }
    }
    src_delete(converter);
}
BENCHMARK(ConvertOneSecondByThePeer)->Arg(48000)->Arg(44100)->Unit(benchmark::kMillisecond);
#endif

// A block that the network delivers. A new stream now and then keeps the queue from filling up.
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
