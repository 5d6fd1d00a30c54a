// A waterfall row beside the plain move of the same picture.
#include "platform/Picture.h"
#include "waterfall/WaterfallClass.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <vector>

namespace larkspool {
namespace {

constexpr int Width = 1024;
constexpr int Height = 100;

void WaterfallRow(benchmark::State& state) {
    WaterfallClass canvas;
    canvas.Place("canvas", {0, 0, Width, Height + 5});
    canvas.SetLevels(1.0, 0);
    std::string frame(13 + 1024, '\0');
    for (std::size_t i = 0; i < frame.size(); ++i) {
        frame[i] = static_cast<char>(i * 7);
    }
    for (auto _ : state) {
        canvas.NewData(frame);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(WaterfallRow);

void MoveThePicture(benchmark::State& state) {
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(Width) * Height);
    const std::size_t moved = (pixels.size() - Width) * sizeof(std::uint32_t);
    for (auto _ : state) {
        std::memmove(pixels.data() + Width, pixels.data(), moved);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(MoveThePicture);

void NewLevels(benchmark::State& state) {
    WaterfallClass canvas;
    int offset = 0;
    for (auto _ : state) {
        canvas.SetLevels(1.5, ++offset % 64);
    }
}
BENCHMARK(NewLevels);

} // namespace
} // namespace larkspool
