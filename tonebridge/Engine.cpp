#include "tonebridge/Engine.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tonebridge {

namespace {

constexpr std::size_t RingCapacity = std::size_t{1} << 20; // 4 s at the highest rate
constexpr unsigned RateBits = 20;
constexpr double LongestPriming = 1.0;  // s
constexpr double OverflowFill = 2.5;    // s, cut back at once
constexpr double Overfilled = 1.35;     // s, cut back after a while
constexpr double OverfilledTime = 10.0; // s
constexpr double LongestAbsence = 5.0;  // s, the longest pause after which PlayUnheard catches up
constexpr std::int64_t OpeningTime = 50'000'000; // ns in which a device fills its buffers

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
    dropped += size - written;
}

void Engine::SetVolume(double loudness) {
    if (std::isnan(loudness)) {
        return;
    }
    // Loudness grows with the 0.6th power of the gain: half as loud is 10 dB less.
    constexpr double LoudnessPower = 0.6;
    const double gain = std::pow(std::clamp(loudness, 0.0, 1.0), 1.0 / LoudnessPower);
    wantedGain.store(static_cast<float>(gain), std::memory_order_relaxed);
}

void Engine::BeginStream(std::int64_t rate) {
    if (!resampler) {
        resampler =
            std::make_unique<Resampler>(); // takes some ms, too long for the program's start
    }
    pushedRate = rate;
    newestStream.store((ring.WritePosition() << RateBits) | static_cast<std::uint64_t>(rate),
                       std::memory_order_release);
}

void Engine::Render(std::span<float> out) {
    if (IsOpening()) {
        PlayUnheard();
        std::fill(out.begin(), out.end(), 0.0F);
        return;
    }
    playedUntil = now();
    Advance(out);
    ApplyGain(out);
}

void Engine::OpenDevice(std::uint32_t rate) {
    deviceRate = rate;
    isOpening = true;
    openedAt.reset();
    isEnding.store(false, std::memory_order_relaxed);
}

// A device asks for its first buffers all at once. If they were filled from the queue, the queue
// would have too little left.
bool Engine::IsOpening() {
    if (!isOpening) {
        return false;
    }
    const std::int64_t time = now();
    openedAt = openedAt.value_or(time);
    isOpening = time - *openedAt < OpeningTime;
    if (!isOpening) {
        PlayUnheard();
        fade = GainRamp{0.0F};
        fade.Aim(state == State::Playing ? 1.0F : 0.0F, FadeFrames());
        volume = GainRamp{wantedGain.load(std::memory_order_relaxed)};
    }
    return isOpening;
}

void Engine::PlayUnheard() {
    const auto absence = static_cast<std::int64_t>(LongestAbsence * 1e9);
    const std::int64_t time = now();
    playedUntil = std::max(playedUntil, time - absence);
    std::array<float, 512> unheard{};
    const std::int64_t piece = Duration(unheard.size());
    while (time - playedUntil >= piece) {
        Advance(unheard);
    }
}

// Plays from `playedUntil` on.
void Engine::Advance(std::span<float> out) {
    LookForNewStream();
    if (state == State::Holding) {
        StartIfFilled();
    } else if (state == State::Playing) {
        Supervise(MeasureFill(LongestFrame), out.size());
    }
    RenderSound(out);
    playedUntil += Duration(out.size());
}

void Engine::LookForNewStream() {
    // Read the end first: then a new stream's start is known whenever its samples are.
    const std::uint64_t end = ring.WritePosition();
    const std::uint64_t newest = newestStream.load(std::memory_order_acquire);
    if (newest == currentStream) {
        reader.SetEnd(end);
        return;
    }
    if (pendingStream == currentStream) {
        // The old stream fades out, and nothing after its end is part of the fade.
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
    controller.Clear();
    resampler->Clear(Stride());
    overfilledFor = 0.0;
}

double Engine::MeasureFill(double longestBlock) const {
    if (streamRate <= 0.0) {
        return 0.0;
    }
    const double queued = static_cast<double>(reader.Available()) + resampler->Held();
    const double block =
        std::min(lastBlock.load(std::memory_order_relaxed) / streamRate, longestBlock);
    const std::int64_t time = now();
    const std::int64_t age = time - lastArrival.load(std::memory_order_relaxed);
    // A block arrives at once but is played gradually: this evens out the steps.
    const double sinceArrival = std::clamp(static_cast<double>(age) * 1e-9, 0.0, block);
    const double behind = static_cast<double>(time - playedUntil) * 1e-9;
    return queued / streamRate + sinceArrival - block / 2.0 - behind;
}

void Engine::StartIfFilled() {
    // Only half of a long block is counted. This delays the start until the first frame after the
    // priming silence, which shows how late frames are.
    if (streamRate <= 0.0 || MeasureFill(LongestPriming) < RateController::Target) {
        return;
    }
    if (MeasureFill(LongestFrame) > Overfilled) {
        resampler->Clear(Stride());
        reader.Skip(std::min(Surplus(MeasureFill(LongestFrame)), reader.Available()));
        ++trims;
    }
    controller.Settle(RateController::Target);
    state = State::Playing;
    fade.Aim(1.0F, FadeFrames());
}

void Engine::Supervise(double fill, std::size_t frames) {
    const double elapsed = static_cast<double>(frames) / deviceRate;
    overfilledFor = fill < Overfilled ? 0.0 : overfilledFor + elapsed;
    if (IsRunningDry(frames)) {
        ++underruns;
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
    const double stride = Stride();
    const double playable =
        static_cast<double>(reader.Available()) + resampler->Held() - Resampler::LookAhead(stride);
    return playable < static_cast<double>(frames + FadeFrames()) * stride;
}

void Engine::Trim(double fill) {
    const auto fadeLength = static_cast<std::size_t>(streamRate / 100.0);
    const std::size_t surplus = Surplus(fill);
    if (reader.IsLeaping() || surplus + fadeLength > reader.Available()) {
        return;
    }
    reader.Leap(surplus, fadeLength);
    controller.Settle(RateController::Target);
    ++trims;
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
        const std::size_t made = resampler->Pull(reader, piece, Stride());
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
    const float wanted = isEnding.load(std::memory_order_relaxed)
                             ? 0.0F
                             : wantedGain.load(std::memory_order_relaxed);
    if (wanted != volume.Target()) {
        volume.Aim(wanted, FadeFrames());
    }
    volume.Apply(out);
    for (float& value : out) {
        value = std::clamp(value, -1.0F, 1.0F);
    }
}

double Engine::Stride() const {
    return streamRate * (1.0 + controller.Correction()) / static_cast<double>(deviceRate);
}

std::int64_t Engine::Duration(std::size_t frames) const {
    return static_cast<std::int64_t>(frames) * 1'000'000'000 / deviceRate;
}

} // namespace tonebridge
