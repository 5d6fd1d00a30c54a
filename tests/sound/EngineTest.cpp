#include "sound/Player.h"
#include "support/Allocations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <limits>
#include <numbers>
#include <random>
#include <thread>

// Where a sanitizer is linked, what C code asks of `malloc` is counted as well.
extern "C" [[gnu::weak]] int
__sanitizer_install_malloc_and_free_hooks(void (*made)(const volatile void*, std::size_t),
                                          void (*freed)(const volatile void*));

namespace tonebridge::test {

namespace {

thread_local std::int64_t mallocs = 0;

float Peak(std::span<const float> sound) {
    float peak = 0.0F;
    for (const float value : sound) {
        peak = std::max(peak, std::abs(value));
    }
    return peak;
}

// The largest step that a tone of 1 kHz and this height may have; one of its own has 5 % less.
float ToneStep(double peak, double deviceRate = 48000.0) {
    return static_cast<float>(2.1 * peak * std::sin(std::numbers::pi * 1000.0 / deviceRate));
}

class EngineTest : public ::testing::Test, protected Player {
  protected:
    // Plays while the receiver sends its tone at the pace of the sound card, or nothing.
    std::vector<float> Play(double seconds, double amplitude = 16384.0) {
        return Player::Play(seconds, [&](double) {
            owed += static_cast<double>(rate) * callback / deviceRate;
            Push(source.Next(static_cast<std::size_t>(owed), amplitude));
            owed -= std::floor(owed);
        });
    }
    std::vector<float> PlayOut(double seconds) {
        return Player::Play(seconds, [](double) {});
    }

    // A whole turn of the session: the tone plays, its link is lost and comes back, a new stream
    // begins, the device is opened again and closed.
    void PlayEveryEnd(double phase) {
        const auto plays = [](std::span<const float> sound) {
            EXPECT_NEAR(Peak(sound.last(4800)), 0.5, 0.002);
        };
        const auto ends = [](std::span<const float> sound) {
            EXPECT_EQ(Peak(sound.last(480)), 0.0F);
        };
        Begin();
        plays(Play(1.3 + phase));
        ends(PlayOut(1.3));
        plays(Play(1.3 + phase));
        Begin();
        plays(Play(1.4));
        Open(48000);
        plays(Play(0.4));
        engine.FadeOutForGood();
        ends(Play(0.1));
        Open(48000);
    }

    double owed = 0.0; // samples
};

TEST_F(EngineTest, SamplesAtTheirLimitsNeitherWrapNorExceedFullScale) {
    Begin();
    Play(1.5, 32767.0);
    // Cut to almost a square, which overshoots when it is resampled.
    EXPECT_FLOAT_EQ(Peak(Play(1.0, 1e6)), 1.0F);
    EXPECT_LT(TakeLargestStep(), 0.9F) << "a wrapped sample leaps by two";
}

TEST_F(EngineTest, AStepOfTheVolumeIsNotAClickAndOneOutOfRangeIsClamped) {
    constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();
    engine.SetVolume(0.0);
    Begin();
    Play(1.5);
    // The middle is 10 dB less, half as loud; a tenth is a tenth as loud.
    const std::pair<double, double> steps[] = {{0.0, 0.0},      {1.0, 0.5},    {0.0, 0.0},
                                               {0.5, 0.158},    {0.1, 0.0108}, {17.0, 0.5},
                                               {NoNumber, 0.5}, {-1.0, 0.0},   {1.0, 0.5}};
    for (const auto& [volume, peak] : steps) {
        engine.SetVolume(volume);
        Play(0.05);
        EXPECT_NEAR(Peak(Play(0.1)), peak, 0.001) << volume;
        EXPECT_LE(TakeLargestStep(), ToneStep(0.5)) << volume;
    }
}

TEST_F(EngineTest, ANewStreamEndsTheOldOneSoftlyAndStartsAtItsOwnRate) {
    engine.SetVolume(0.5);
    Begin();
    Play(2.0);
    // First without a marker and the silence behind it.
    for (const std::int64_t newRate : {24000, 20250}) {
        rate = newRate;
        source = ToneSource(tone, static_cast<double>(rate));
        if (newRate == 20250) {
            Begin();
        }
        const std::vector<float> change = Play(0.9);
        EXPECT_LT(Peak(std::span(change).subspan(2 * callback)), 1e-9F)
            << "what was queued before the new stream is still heard";
        Play(0.5);
        EXPECT_NEAR(Line(Play(0.5), tone, deviceRate), 0.158, 0.001) << newRate;
        EXPECT_LE(TakeLargestStep(), ToneStep(0.158)) << newRate;
    }
    EXPECT_EQ(engine.Underruns(), 0U);
}

TEST_F(EngineTest, NonsenseIsIgnored) {
    Begin();
    Play(1.5);
    using Limits = std::numeric_limits<std::int64_t>;
    const std::vector<std::int16_t> noise(100, 32767);
    for (const std::int64_t count : {std::int64_t{0}, std::int64_t{-1}, Limits::min()}) {
        engine.Push(count, noise.data(), rate);
    }
    for (const std::int64_t count : {std::int64_t{100}, Engine::NewStream}) {
        engine.Push(count, nullptr, rate);
        engine.Push(count, noise.data(), Engine::LowestRate - 1);
        engine.Push(count, noise.data(), Limits::max());
    }
    EXPECT_NEAR(Line(Play(2.0), tone, deviceRate), 0.5, 0.001) << "a new stream has begun";
    EXPECT_LE(TakeLargestStep(), ToneStep(0.5));
    EXPECT_EQ(engine.Underruns() + engine.Trims(), 0U);
}

TEST_F(EngineTest, NeitherThreadAllocatesWhateverTheStreamDoes) {
    Begin();
    const std::vector<std::int16_t> block(512, 1000);
    std::vector<float> out(callback);
    if (__sanitizer_install_malloc_and_free_hooks != nullptr) {
        __sanitizer_install_malloc_and_free_hooks(
            [](const volatile void*, std::size_t) { ++mallocs; }, [](const volatile void*) {});
    }
    const auto asked = [] { return mallocs + larkspool::Allocations::OfThisThread().made; };
    const std::int64_t before = asked();
    for (int i = 0; i < 1000; ++i) {
        const std::int64_t count = i % 400 == 399 ? Engine::NewStream : i % 300 < 150 ? 512 : 100;
        engine.Push(count, block.data(), i < 500 ? 12000 : 20250);
        engine.Render(out);
        clock += 0.01;
    }
    EXPECT_EQ(asked(), before);
    EXPECT_GT(engine.Underruns() + engine.Trims(), 0U);
}

TEST_F(EngineTest, AFullQueueDropsTheNewestAndRecovers) {
    Begin();
    for (int second = 0; second < 200; ++second) {
        Push(source.Next(12000));
    }
    EXPECT_GT(engine.DroppedSamples(), 1000000U);
    Play(1.5);
    EXPECT_NEAR(engine.Fill(), 1.0, 0.1);
    EXPECT_NEAR(Peak(Play(0.5)), 0.5, 0.0015);
    EXPECT_EQ(engine.Underruns(), 0U);
}

TEST_F(EngineTest, NoEndOfSoundClicks) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> phase(0.0, 0.1);
    for (const std::uint32_t size : {300U, 480U, 512U, 960U, 1024U, 1536U, 2048U, 4096U, 4800U}) {
        callback = size;
        for (int i = 0; i < (std::getenv("SOUND_SOAK") != nullptr ? 100 : 12); ++i) {
            PlayEveryEnd(phase(random));
        }
        EXPECT_LE(TakeLargestStep(), ToneStep(0.5)) << size;
    }
}

TEST_F(EngineTest, ThePassbandIsLevelAndHasNoImages) {
    for (const double hertz : {300.0, 1000.0, 3000.0, 5000.0, 5200.0, 5400.0}) {
        tone = hertz;
        Begin();
        Play(1.5);
        const std::vector<float> sound = Play(1.0);
        const auto decibels = [&](double frequency) {
            return 20.0 * std::log10(Line(sound, frequency, deviceRate) / 0.5);
        };
        EXPECT_NEAR(decibels(tone), 0.0, 0.5) << tone;
        for (const double image : {12000.0 - tone, 12000.0 + tone, 24000.0 - tone}) {
            EXPECT_LE(decibels(image), -90.0) << tone << " at " << image;
        }
    }
}

TEST_F(EngineTest, AReopenedDeviceCostsNothingOfTheQueue) {
    for (const std::uint32_t size : {300U, 1024U, 4800U}) {
        callback = size;
        Begin();
        Play(5.0);
        const double before = engine.Fill();
        for (int i = 0; i < 20; ++i) { // a second without a device
            Push(source.Next(600));
            clock += 0.05;
            engine.PlayUnheard();
        }
        Open(44100);
        std::vector<float> buffer(callback);
        for (std::uint32_t filled = 0; filled < 14400; filled += callback) {
            engine.Render(buffer);
            EXPECT_EQ(Peak(buffer), 0.0F);
        }
        const std::vector<float> sound = Play(0.5);
        EXPECT_NEAR(engine.Fill(), before, 0.05) << size;
        EXPECT_LE(TakeLargestStep(), ToneStep(0.5, deviceRate));
        EXPECT_NEAR(Peak(std::span(sound).last(4800)), 0.5, 0.001);
        Open(48000);
    }
    EXPECT_EQ(engine.Underruns() + engine.Trims(), 0U);
}

// Both threads go as fast as they can, so that they meet in every state.
TEST(TwoThreads, PushAndRenderWithoutWaitingForEachOther) {
    std::atomic<std::int64_t> clock{0};
    Engine engine([&] { return clock.load(); });
    std::atomic<bool> isOver{false};
    std::thread device([&] {
        for (std::vector<float> out(512); !isOver; clock += 10'000'000) {
            engine.Render(out);
            EXPECT_LE(Peak(out), 1.0F);
        }
    });
    std::mt19937 random(1);
    std::vector<std::int16_t> block(512);
    for (int i = 0; i < 50000; ++i) {
        block[static_cast<std::size_t>(i) % 512] = static_cast<std::int16_t>(random());
        const std::int64_t rate = i % 2000 < 1000 ? 12000 : 20250;
        engine.Push(i % 1000 == 0 ? Engine::NewStream : 512, block.data(), rate);
        engine.SetVolume((i % 10) / 10.0);
        if (i % 50 == 0) {
            std::this_thread::yield();
        }
    }
    isOver = true;
    device.join();
}

} // namespace

} // namespace tonebridge::test
