#include "tonebridge/Engine.h"
#include "support/Allocations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <limits>
#include <numbers>
#include <thread>
#include <vector>

namespace tonebridge::test {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t Callback = 480; // 10 ms

class EngineTest : public ::testing::Test {
  protected:
    // Renders `seconds` of sound, pushing a tone at the same pace, and returns it.
    std::vector<float> Play(double seconds, double amplitude = 16384.0) {
        const auto pieces = static_cast<std::size_t>(std::lround(seconds * 100.0));
        std::vector<float> sound(pieces * Callback);
        for (std::size_t i = 0; i < pieces; ++i) {
            PushTone(static_cast<std::size_t>(rate / 100), amplitude);
            engine.Render(std::span(sound).subspan(i * Callback, Callback));
            clock += 0.01;
        }
        return sound;
    }

    void PushTone(std::size_t count, double amplitude = 16384.0) {
        std::vector<std::int16_t> block(count);
        for (std::int16_t& sample : block) {
            const double phase = std::numbers::pi / 6.0 * static_cast<double>(made++);
            sample = static_cast<std::int16_t>(
                std::clamp(std::lrint(amplitude * std::sin(phase)), -32768L, 32767L));
        }
        engine.Push(static_cast<std::int64_t>(count), block.data(), rate);
    }

    void Begin(std::int64_t newRate = 12000) {
        rate = newRate;
        const std::vector<std::int16_t> silence(static_cast<std::size_t>(rate));
        engine.Push(Engine::NewStream, silence.data(), rate);
        engine.Push(rate, silence.data(), rate);
    }

    static float Peak(const std::vector<float>& sound) {
        float peak = 0.0F;
        for (const float value : sound) {
            peak = std::max(peak, std::abs(value));
        }
        return peak;
    }

    static float LargestStep(const std::vector<float>& sound) {
        float step = 0.0F;
        for (std::size_t i = 1; i < sound.size(); ++i) {
            step = std::max(step, std::abs(sound[i] - sound[i - 1]));
        }
        return step;
    }

    // The largest step of a tone of 1 kHz and this height.
    static float ToneStep(double peak) {
        return static_cast<float>(2.0 * peak * std::sin(std::numbers::pi / 48.0));
    }

    double clock = 0.0;
    std::int64_t rate = 12000;
    std::uint64_t made = 0;
    Engine engine{[this] { return static_cast<std::int64_t>(clock * 1e9); }};
};

TEST_F(EngineTest, SamplesAtTheirLimitsNeitherWrapNorExceedFullScale) {
    Begin();
    Play(1.5, 32767.0);
    // Cut to almost a square, which overshoots when it is resampled.
    const std::vector<float> square = Play(1.0, 1e6);
    EXPECT_FLOAT_EQ(Peak(square), 1.0F);
    EXPECT_LT(LargestStep(square), 0.9F) << "a wrapped sample leaps by two";
}

TEST_F(EngineTest, AStepOfTheVolumeIsNotAClickAndOneOutOfRangeIsClamped) {
    constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();
    engine.SetGain(0.0);
    Begin();
    Play(1.5);
    const std::pair<double, double> steps[] = {{0.0, 0.0},      {1.0, 0.5},  {0.0, 0.0},
                                               {0.7, 0.35},     {0.1, 0.05}, {17.0, 0.5},
                                               {NoNumber, 0.5}, {-1.0, 0.0}, {1.0, 0.5}};
    for (const auto& [gain, peak] : steps) {
        engine.SetGain(gain);
        EXPECT_LE(LargestStep(Play(0.05)), 1.05F * ToneStep(0.5)) << gain;
        EXPECT_NEAR(Peak(Play(0.1)), peak, 0.001) << gain;
    }
}

TEST_F(EngineTest, ANewStreamEndsTheOldOneSoftlyAndStartsAtItsOwnRate) {
    Begin();
    Play(2.0);
    engine.SetGain(0.5);
    Play(0.1);
    Begin(20250);
    const std::vector<float> change = Play(0.9);
    EXPECT_LE(LargestStep(change), 1.05F * ToneStep(0.25));
    EXPECT_EQ(Peak({change.begin() + 2 * Callback, change.end()}), 0.0F)
        << "what was queued before the new stream is still heard";
    Play(0.5);
    // Samples of a 1 kHz tone at 12,000 Hz, played at 20,250 Hz, and the volume stays.
    const std::vector<float> sound = Play(0.5);
    EXPECT_NEAR(Peak(sound), 0.25, 0.001);
    EXPECT_LE(LargestStep(sound),
              1.05F * 0.25F * 2.0F *
                  static_cast<float>(std::sin(std::numbers::pi * 1687.5 / 48000)));
}

TEST_F(EngineTest, ABlockAtAnotherRateBeginsANewStream) {
    Begin();
    Play(1.5);
    rate = 24000;
    EXPECT_LE(LargestStep(Play(1.5)), 1.05F * ToneStep(1.0));
    EXPECT_EQ(engine.Underruns(), 0U);
    EXPECT_NEAR(engine.Fill(), 1.0, 0.1);
}

TEST_F(EngineTest, SoundWithoutPrimingIsHeldBackUntilASecondIsThere) {
    EXPECT_EQ(Peak(Play(0.95)), 0.0F);
    Play(0.2);
    EXPECT_NEAR(Peak(Play(0.1)), 0.5, 0.001);
}

TEST_F(EngineTest, NonsenseIsIgnored) {
    Begin();
    Play(1.5);
    using Limits = std::numeric_limits<std::int64_t>;
    const std::vector<std::int16_t> noise(100, 32767);
    for (const std::int64_t count :
         {std::int64_t{0}, std::int64_t{-1}, std::int64_t{-998}, Limits::min()}) {
        engine.Push(count, noise.data(), 12000);
    }
    for (const std::int64_t count : {std::int64_t{100}, Engine::NewStream}) {
        for (const std::int64_t badRate :
             {std::int64_t{0}, std::int64_t{-12000}, std::int64_t{999}, Limits::max()}) {
            engine.Push(count, noise.data(), badRate);
        }
        engine.Push(count, nullptr, 12000);
    }
    EXPECT_LE(LargestStep(Play(0.1)), 1.001F * ToneStep(0.5));
    EXPECT_NEAR(Peak(Play(0.1)), 0.5, 0.001) << "the stream has begun anew";
    EXPECT_LE(LargestStep(Play(2.0)), 1.001F * ToneStep(0.5));
    EXPECT_EQ(engine.Underruns() + engine.Trims(), 0U);
}

TEST_F(EngineTest, NeitherThreadAllocatesWhateverTheStreamDoes) {
    Begin();
    const std::vector<std::int16_t> block(512, 1000);
    std::vector<float> out(Callback);
    const std::int64_t& asked = larkspool::Allocations::OfThisThread().made;
    const std::int64_t before = asked;
    for (int i = 0; i < 1000; ++i) {
        const std::int64_t count = i % 400 == 399 ? Engine::NewStream : i % 300 < 150 ? 512 : 100;
        engine.Push(count, block.data(), i < 500 ? 12000 : 20250);
        engine.Render(out);
        clock += 0.01;
    }
    EXPECT_EQ(asked, before);
    EXPECT_GT(engine.Underruns() + engine.Trims(), 0U);
}

TEST_F(EngineTest, AFullQueueDropsTheNewestAndRecovers) {
    Begin();
    for (int second = 0; second < 200; ++second) {
        PushTone(12000);
    }
    EXPECT_GT(engine.DroppedSamples(), 1000000U);
    Play(1.5);
    EXPECT_NEAR(engine.Fill(), 1.0, 0.1);
    EXPECT_NEAR(Peak(Play(0.5)), 0.5, 0.001);
    EXPECT_EQ(engine.Underruns(), 0U);
}

TEST_F(EngineTest, AChangeOfTheDeviceGoesOnWhereTheOldOneStopped) {
    Begin();
    Play(2.0);
    engine.SetDeviceRate(44100);
    const std::vector<float> sound = Play(0.5);
    EXPECT_LE(sound.front(), 0.01F);
    EXPECT_LE(LargestStep(sound), 1.05F * ToneStep(0.5) * 48.0F / 44.1F);
    EXPECT_NEAR(Peak(Play(0.1)), 0.5, 0.001);
    EXPECT_EQ(engine.Underruns(), 0U);
}

// Both threads go as fast as they can, so that they meet in every state.
TEST(TwoThreads, PushAndRenderWithoutWaitingForEachOther) {
    Engine engine([] { return std::chrono::nanoseconds(Clock::now().time_since_epoch()).count(); });
    std::atomic<bool> isOver{false};
    std::atomic<bool> isBroken{false};
    std::thread device([&] {
        std::vector<float> out(512);
        while (!isOver) {
            engine.Render(out);
            isBroken = isBroken || !std::ranges::all_of(
                                       out, [](float value) { return std::abs(value) <= 1.0F; });
        }
    });
    std::vector<std::int16_t> block(512);
    const auto end = Clock::now() + std::chrono::seconds(3);
    for (int i = 0; Clock::now() < end; ++i) {
        for (std::size_t k = 0; k < block.size(); ++k) {
            block[k] = static_cast<std::int16_t>(static_cast<std::size_t>(i) * 31 + k * 97);
        }
        const std::int64_t rate = i % 2000 < 1000 ? 12000 : 20250;
        if (i % 1000 == 0) {
            engine.Push(Engine::NewStream, block.data(), rate);
        }
        engine.Push(512, block.data(), rate);
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
