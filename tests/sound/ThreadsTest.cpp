#include "tonebridge/Engine.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <thread>
#include <vector>

namespace tonebridge::test {

namespace {

using Clock = std::chrono::steady_clock;

std::int64_t Now() { return std::chrono::nanoseconds(Clock::now().time_since_epoch()).count(); }

// Both threads go as fast as they can, so that they meet in every state.
TEST(TwoThreads, PushAndRenderWithoutWaitingForEachOther) {
    Engine engine(Now);
    std::atomic<bool> isOver{false};
    std::atomic<bool> isBroken{false};
    std::thread device([&] {
        std::vector<float> out(512);
        while (!isOver) {
            engine.Render(out);
            for (const float value : out) {
                if (!(std::abs(value) <= 1.0F)) {
                    isBroken = true;
                }
            }
        }
    });
    std::vector<std::int16_t> block(512);
    const auto end = Clock::now() + std::chrono::seconds(3);
    for (int i = 0; Clock::now() < end; ++i) {
        for (std::size_t k = 0; k < block.size(); ++k) {
            block[k] = static_cast<std::int16_t>(static_cast<std::size_t>(i) * 31 + k * 97);
        }
        if (i % 1000 == 0) {
            engine.Push(Engine::NewStream, block.data(), i % 2000 == 0 ? 12000 : 20250);
        }
        engine.Push(512, block.data(), (i / 1000) % 2 == 0 ? 12000 : 20250);
        engine.SetGain((i % 10) / 10.0);
        if (i % 50 == 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    isOver = true;
    device.join();
    EXPECT_FALSE(isBroken);
}

} // namespace

} // namespace tonebridge::test
