#pragma once

#include "sound/ToneMeter.h"
#include "tonebridge/Engine.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tonebridge::test {

// The engine on a virtual clock, between a receiver of one tone and a sound card.
struct Player {
    // Begins a stream with the second of silence that its sound waits behind.
    void Begin() {
        const std::vector<std::int16_t> silence(static_cast<std::size_t>(rate));
        engine.Push(Engine::NewStream, silence.data(), rate);
        Push(silence);
        source = ToneSource(tone, static_cast<double>(rate));
    }
    void Push(const std::vector<std::int16_t>& block) {
        engine.Push(static_cast<std::int64_t>(block.size()), block.data(), rate);
    }
    void Open(std::uint32_t newRate) {
        deviceRate = newRate;
        engine.OpenDevice(deviceRate);
        lastSample = 0.0F;
    }
    // What the sound card plays in at least so many seconds. `deliver` pushes what arrives until
    // the time it is given, and is called before each of the card's callbacks.
    template <typename Deliver>
    std::vector<float> Play(double seconds, const Deliver& deliver) {
        const auto count = static_cast<std::size_t>(std::ceil(seconds * deviceRate / callback));
        std::vector<float> sound(count * callback);
        for (std::size_t i = 0; i < count; ++i) {
            const double time = clock;
            deliver(time);
            clock = time;
            engine.Render(std::span(sound).subspan(i * callback, callback));
            clock = time + static_cast<double>(callback) / deviceRate;
        }
        for (const float value : sound) {
            largestStep = std::max(largestStep, std::abs(value - lastSample));
            lastSample = value;
        }
        return sound;
    }
    // Between neighboring samples, since the last call.
    float TakeLargestStep() { return std::exchange(largestStep, 0.0F); }

    double tone = 1000.0;         // Hz
    std::int64_t rate = 12000;    // Hz, the receiver's
    std::uint32_t callback = 480; // frames
    std::uint32_t deviceRate = 48000;
    double clock = 0.0;      // s
    float lastSample = 0.0F; // sample
    float largestStep = 0.0F;
    ToneSource source{tone, static_cast<double>(rate)};
    Engine engine{[this] { return static_cast<std::int64_t>(clock * 1e9); }};
};

} // namespace tonebridge::test
