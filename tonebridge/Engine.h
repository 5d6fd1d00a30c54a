#pragma once

#include "tonebridge/GainRamp.h"
#include "tonebridge/RateController.h"
#include "tonebridge/Resampler.h"
#include "tonebridge/SampleReader.h"
#include "tonebridge/SampleRing.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>

namespace tonebridge {

// Takes blocks of samples as they come from the network and makes a steady stream at the device's
// rate of them, without a gap, a click or a drift. One thread pushes, one renders; neither waits
// for the other. Owned by the library.
class Engine {
  public:
    static constexpr std::int64_t NewStream = -999;
    static constexpr std::int64_t LowestRate = 1000;
    static constexpr std::int64_t HighestRate = 250000;

    // The clock gives nanoseconds and is read by the pushing and the rendering thread.
    explicit Engine(std::function<std::int64_t()> nanoseconds);

    // The network's thread. Allocates at the first stream and never again.
    void Push(std::int64_t count, const std::int16_t* samples, std::int64_t rate);
    // Any thread. 0 to 1: half as loud at 0.5, the samples are not changed at 1.
    void SetVolume(double loudness);

    // The device's thread, mono, -1 to 1.
    void Render(std::span<float> out);
    // Call it before a device renders for the first time, with its rate in Hz. The device's own
    // buffers are filled with silence; then the sound fades in at the place where the clock is.
    void OpenDevice(std::uint32_t rate);
    // Any thread. Call it before the device is closed: its sound fades out and stays silent.
    void FadeOutForGood() { isEnding.store(true, std::memory_order_relaxed); }
    // Takes the sound from the queue until the present and drops it. Call it while there is no
    // device, so that the sound is on time when there is one.
    void PlayUnheard();

    // For tests and benches, on the rendering thread; DroppedSamples on the pushing thread.
    std::uint64_t Underruns() const { return underruns; }
    std::uint64_t Trims() const { return trims; }
    double Fill() const { return MeasureFill(LongestFrame); }
    double Correction() const { return controller.Correction(); }
    std::uint64_t DroppedSamples() const { return dropped; }

  private:
    enum class State { Holding, Playing, FadingOut };
    static constexpr double LongestFrame = 0.1; // s, a longer block has several frames

    void BeginStream(std::int64_t rate);
    void LookForNewStream();
    void TakeNewStream();
    double MeasureFill(double longestBlock) const;
    void StartIfFilled();
    void Supervise(double fill, std::size_t frames);
    bool IsRunningDry(std::size_t frames) const;
    void Trim(double fill);
    std::size_t Surplus(double fill) const;
    void FadeOut();
    bool IsOpening();
    void Advance(std::span<float> out);
    void RenderSound(std::span<float> out);
    void ApplyGain(std::span<float> out);
    double Stride() const;
    std::int64_t Duration(std::size_t frames) const; // ns
    std::size_t FadeFrames() const { return deviceRate / 100; }

    const std::function<std::int64_t()> now;
    SampleRing ring;

    // Written by the pushing thread. The start of the newest stream: its position in the upper
    // bits, its rate in the lowest 20.
    std::atomic<std::uint64_t> newestStream{0};
    std::atomic<std::int64_t> lastArrival{0};
    std::atomic<std::uint32_t> lastBlock{0};
    std::int64_t pushedRate = 0;
    std::uint64_t dropped = 0;

    // The pushing thread makes it before the first stream, then only the rendering thread uses it.
    std::unique_ptr<Resampler> resampler;

    // Used by the rendering thread only.
    SampleReader reader;
    RateController controller;
    State state = State::Holding;
    GainRamp fade{0.0F};
    GainRamp volume{1.0F};
    std::uint64_t currentStream = 0;
    std::uint64_t pendingStream = 0;
    double streamRate = 0.0;
    std::uint32_t deviceRate = 48000;
    double overfilledFor = 0.0;
    std::int64_t playedUntil = 0; // ns on the clock
    bool isOpening = false;
    std::optional<std::int64_t> openedAt; // when the device asked for its first buffer
    std::uint64_t underruns = 0;
    std::uint64_t trims = 0;

    std::atomic<float> wantedGain{1.0F};
    std::atomic<bool> isEnding{false};
};

} // namespace tonebridge
