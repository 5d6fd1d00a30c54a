#include "tonebridge/Engine.h"

#include <algorithm>
#include <cmath>

namespace tonebridge {

namespace {

constexpr std::size_t RingCapacity = std::size_t{1} << 20; // 4 s at the highest rate
constexpr unsigned RateBits = 20;
constexpr double LongestFrame = 0.1;    // s, a longer block is a lump of several
constexpr double LongestPriming = 1.0;  // s
constexpr double OverflowFill = 2.5;    // s, cut back at once
constexpr double Overfilled = 1.35;     // s, cut back after a while
constexpr double OverfilledTime = 10.0; // s

std::uint64_t PositionOf(std::uint64_t stream) { return stream >> RateBits; }

double RateOf(std::uint64_t stream) {
    return static_cast<double>(stream & ((std::uint64_t{1} << RateBits) - 1));
}

} // namespace

Engine::Engine(std::function<std::int64_t()> nanoseconds)
    : now(std::move(nanoseconds)), ring(RingCapacity), reader(ring) {}

void Engine::Push(std::int64_t count, const std::int16_t* samples, std::int64_t rate) {
    if (samples == nullptr || rate < LowestRate || rate > HighestRate) {
        return;
    }
    if (count == NewStream) {
        BeginStream(rate);
        return;
    }
    if (count <= 0) {
        return;
    }
    if (rate != pushedRate) {
        BeginStream(rate);
    }
    const auto size = static_cast<std::size_t>(count);
    lastArrival.store(now(), std::memory_order_relaxed);
    lastBlock.store(static_cast<std::uint32_t>(std::min<std::int64_t>(count, rate)),
                    std::memory_order_relaxed);
    const std::size_t written = ring.Write({samples, size});
    if (written < size) {
        dropped.fetch_add(size - written, std::memory_order_relaxed);
    }
}

void Engine::SetGain(double gain) {
    if (!std::isnan(gain)) {
        wantedGain.store(static_cast<float>(std::clamp(gain, 0.0, 1.0)), std::memory_order_relaxed);
    }
}

void Engine::BeginStream(std::int64_t rate) {
    pushedRate = rate;
    newestStream.store((ring.WritePosition() << RateBits) | static_cast<std::uint64_t>(rate),
                       std::memory_order_release);
}

void Engine::Render(std::span<float> out) {
    LookForNewStream();
    const double fill = MeasureFill(LongestFrame);
    lastFill.store(fill, std::memory_order_relaxed);
    if (state == State::Holding) {
        StartIfFilled();
    } else if (state == State::Playing) {
        Supervise(fill, out.size());
    }
    RenderSound(out);
    ApplyGain(out);
    lastCorrection.store(controller.Correction(), std::memory_order_relaxed);
}

void Engine::SetDeviceRate(std::uint32_t rate) {
    if (rate != deviceRate) {
        deviceRate = rate;
        resampler.Clear();
    }
    const bool isSounding = state == State::Playing;
    fade = GainRamp{0.0F};
    fade.Aim(isSounding ? 1.0F : 0.0F, FadeFrames());
    volume = GainRamp{wantedGain.load(std::memory_order_relaxed)};
}

void Engine::LookForNewStream() {
    // The end first: whoever sees samples of a new stream then sees its start too.
    const std::uint64_t end = ring.WritePosition();
    const std::uint64_t newest = newestStream.load(std::memory_order_acquire);
    if (newest == currentStream) {
        reader.SetEnd(end);
        return;
    }
    if (pendingStream == currentStream) {
        // Until it has faded out, the old stream plays on to its end.
        reader.SetEnd(PositionOf(newest));
    }
    pendingStream = newest;
    if (state == State::Playing) {
        FadeOut();
    }
    if (state == State::Holding) {
        TakeNewStream();
        reader.SetEnd(end);
    }
}

void Engine::TakeNewStream() {
    currentStream = pendingStream;
    streamRate = RateOf(currentStream);
    reader.MoveTo(PositionOf(currentStream));
    resampler.Clear();
    controller.Clear();
    overfilledFor = 0.0;
}

double Engine::MeasureFill(double longestBlock) const {
    if (streamRate <= 0.0) {
        return 0.0;
    }
    const double queued = static_cast<double>(reader.Available()) + resampler.Held();
    const double block =
        std::min(lastBlock.load(std::memory_order_relaxed) / streamRate, longestBlock);
    const std::int64_t age = now() - lastArrival.load(std::memory_order_relaxed);
    // A block arrives whole but is played bit by bit: this evens out the steps.
    const double sinceArrival = std::clamp(static_cast<double>(age) * 1e-9, 0.0, block);
    return queued / streamRate + sinceArrival - block / 2.0;
}

void Engine::StartIfFilled() {
    // Counting a long block by halves delays the start until the first frame
    // behind the priming silence shows how late frames are.
    if (streamRate <= 0.0 || MeasureFill(LongestPriming) < RateController::Target) {
        return;
    }
    const double fill = MeasureFill(LongestFrame);
    if (fill > Overfilled) {
        resampler.Clear();
        reader.Skip(std::min(Surplus(fill), reader.Available()));
        trims.fetch_add(1, std::memory_order_relaxed);
    }
    controller.Settle(RateController::Target);
    state = State::Playing;
    fade.Aim(1.0F, FadeFrames());
}

void Engine::Supervise(double fill, std::size_t frames) {
    const double elapsed = static_cast<double>(frames) / deviceRate;
    overfilledFor = fill < Overfilled ? 0.0 : overfilledFor + elapsed;
    if (IsRunningDry(frames)) {
        underruns.fetch_add(1, std::memory_order_relaxed);
        FadeOut();
        return;
    }
    if (fill > OverflowFill || overfilledFor >= OverfilledTime) {
        Trim(fill);
        return;
    }
    controller.Update(fill, elapsed);
}

bool Engine::IsRunningDry(std::size_t frames) const {
    const double ratio = Ratio();
    const double playable =
        static_cast<double>(reader.Available()) + resampler.Held() - Resampler::LookAhead(ratio);
    return playable * ratio < static_cast<double>(frames + FadeFrames());
}

void Engine::Trim(double fill) {
    const auto fadeLength = static_cast<std::size_t>(streamRate / 100.0);
    const std::size_t surplus = Surplus(fill);
    if (reader.IsLeaping() || surplus + fadeLength > reader.Available()) {
        return;
    }
    reader.Leap(surplus, fadeLength);
    controller.Settle(RateController::Target);
    trims.fetch_add(1, std::memory_order_relaxed);
    overfilledFor = 0.0;
}

std::size_t Engine::Surplus(double fill) const {
    return static_cast<std::size_t>((fill - RateController::Target) * streamRate);
}

void Engine::FadeOut() {
    state = State::FadingOut;
    fade.Aim(0.0F, FadeFrames());
}

void Engine::RenderSound(std::span<float> out) {
    while (!out.empty() && state != State::Holding) {
        std::size_t length = out.size();
        if (fade.Remaining() > 0) {
            length = std::min(length, fade.Remaining());
        }
        const std::span<float> piece = out.first(length);
        const std::size_t made = resampler.Pull(reader, piece, Ratio());
        std::fill(piece.begin() + static_cast<std::ptrdiff_t>(made), piece.end(), 0.0F);
        fade.Apply(piece);
        out = out.subspan(length);
        if (state == State::FadingOut && fade.Remaining() == 0) {
            state = State::Holding;
        }
    }
    std::fill(out.begin(), out.end(), 0.0F);
}

void Engine::ApplyGain(std::span<float> out) {
    const float wanted = wantedGain.load(std::memory_order_relaxed);
    if (wanted != volume.Target()) {
        volume.Aim(wanted, FadeFrames());
    }
    volume.Apply(out);
    for (float& value : out) {
        value = std::clamp(value, -1.0F, 1.0F);
    }
}

double Engine::Ratio() const { return deviceRate / (streamRate * (1.0 + controller.Correction())); }

} // namespace tonebridge
