#include "tonebridge/Resampler.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <soxr.h>

namespace tonebridge {

Resampler::Resampler() : upward(MakeConverter(1.0)), any(MakeConverter(LongestStride)) {
    // The converters' queues grow until some thousands of samples have passed through. This lets
    // them grow now and not while sound plays.
    constexpr int Rounds = 6;
    for (int round = 0; round < Rounds; ++round) {
        for (const double stride : {0.95, 1.5, 3.0, 5.5, 0.25}) {
            Clear(stride);
        }
    }
}

Resampler::Converter Resampler::MakeConverter(double longestStride) {
    const soxr_io_spec_t format = soxr_io_spec(SOXR_FLOAT32_I, SOXR_FLOAT32_I);
    const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_HQ, SOXR_VR);
    const soxr_runtime_spec_t oneThread = soxr_runtime_spec(1);
    soxr_error_t error = nullptr;
    Converter made(soxr_create(longestStride, 1.0, 1, &error, &format, &quality, &oneThread));
    if (!made || error != nullptr) {
        throw std::bad_alloc{};
    }
    return made;
}

void Resampler::Deleter::operator()(soxr* converter) const { soxr_delete(converter); }

void Resampler::Clear(double stride) {
    // Stays below 1 if the device is opened again at 44,100 Hz.
    constexpr double LongestUpward = 0.9;
    used = stride < LongestUpward ? upward.get() : any.get();
    Flush(stride);
    lastStride = stride;
    unheard = LookAhead(stride);
    taken = 0.0;
    heard = 0.0;
}

std::size_t Resampler::Pull(SampleReader& reader, std::span<float> out, double stride) {
    if (!SkipOldFrames(reader, stride)) {
        return 0;
    }
    std::size_t made = 0;
    bool isDry = false;
    while (made < out.size() && !isDry) {
        const std::size_t wanted = std::min(StepFrames, out.size() - made);
        const double part = static_cast<double>(made + wanted) / static_cast<double>(out.size());
        const double glide = lastStride + (stride - lastStride) * part;
        const std::size_t count = Make(reader, out.subspan(made, wanted), glide);
        made += count;
        isDry = count < wanted;
    }
    lastStride = stride;
    return made;
}

double Resampler::LookAhead(double stride) {
    // 240 samples, and one more filter for each halving of the rate.
    constexpr double Margin = 1.01;
    const double halvings = std::max(0.0, std::floor(std::log2(stride * Margin)));
    return 360.0 * std::exp2(halvings) - 120.0;
}

std::size_t Resampler::Make(SampleReader& reader, std::span<float> out, double stride) {
    soxr_set_io_ratio(used, stride, 0);
    // First what it holds already: nothing may be left in it at the end of the queue.
    std::size_t made = Convert({}, out);
    while (made < out.size()) {
        const double missing = std::ceil(static_cast<double>(out.size() - made) * stride);
        const std::size_t wanted = std::min(static_cast<std::size_t>(missing), input.size());
        const std::size_t count = reader.Read(std::span(input).first(wanted));
        if (count == 0) {
            break;
        }
        made += Convert(std::span(input).first(count), out.subspan(made));
    }
    heard += static_cast<double>(made) * stride;
    return made;
}

std::size_t Resampler::Convert(std::span<const float> in, std::span<float> out) {
    std::size_t fed = 0;
    std::size_t made = 0;
    // A null pointer would tell the converter that the stream ends.
    const float* const data = in.empty() ? input.data() : in.data();
    if (soxr_process(used, data, in.size(), &fed, out.data(), out.size(), &made) != nullptr) {
        fed = in.size(); // lost, so that no caller repeats this without end
        made = 0;
    }
    taken += static_cast<double>(fed);
    return made;
}

// Feeds silence until it holds nothing else. The converter's own function for this allocates.
void Resampler::Flush(double stride) {
    soxr_set_io_ratio(used, stride, 0);
    std::array<float, StepFrames> lost{};
    input.fill(0.0F);
    const double enough = taken + 2.0 * (LookAhead(stride) + LookAhead(lastStride));
    while (taken < enough) {
        std::size_t made = Convert(input, lost);
        while (made == lost.size()) {
            made = Convert({}, lost);
        }
    }
    lastStride = stride;
}

// False if the reader has no more samples before the first frame that may be heard.
bool Resampler::SkipOldFrames(SampleReader& reader, double stride) {
    std::array<float, StepFrames> lost{};
    while (unheard >= stride) {
        const auto left = static_cast<std::size_t>(unheard / stride);
        const std::size_t wanted = std::min(left, lost.size());
        const std::size_t made = Make(reader, std::span(lost).first(wanted), stride);
        heard -= static_cast<double>(made) * stride;
        unheard -= static_cast<double>(made) * stride;
        if (made < wanted) {
            return false;
        }
    }
    return true;
}

} // namespace tonebridge
