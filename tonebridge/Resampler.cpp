#include "tonebridge/Resampler.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <samplerate.h>

namespace tonebridge {

Resampler::Resampler() {
    int error = 0;
    state.reset(src_new(SRC_SINC_MEDIUM_QUALITY, 1, &error));
    if (!state) {
        throw std::bad_alloc{};
    }
}

void Resampler::Deleter::operator()(SRC_STATE_tag* converter) const { src_delete(converter); }

void Resampler::Clear() {
    src_reset(state.get());
    pendingStart = 0;
    pendingCount = 0;
    lastRatio = 0.0;
    taken = 0.0;
    heard = 0.0;
}

std::size_t Resampler::Pull(SampleReader& reader, std::span<float> out, double ratio) {
    std::size_t made = 0;
    while (made < out.size()) {
        if (pendingCount == 0 && !Refill(reader, static_cast<double>(out.size() - made), ratio)) {
            break;
        }
        made += Convert(out.subspan(made), ratio);
    }
    return made;
}

double Resampler::LookAhead(double ratio) {
    // Half the length of the medium filter, in input samples.
    constexpr double HalfFilter = 46.0;
    return HalfFilter / std::min(1.0, ratio) + 2.0;
}

bool Resampler::Refill(SampleReader& reader, double framesToMake, double ratio) {
    const double wanted = std::ceil(framesToMake / ratio);
    const std::size_t count = std::min(static_cast<std::size_t>(wanted) + 1, pending.size());
    pendingStart = 0;
    pendingCount = reader.Read(std::span(pending).first(count));
    return pendingCount > 0;
}

std::size_t Resampler::Convert(std::span<float> out, double ratio) {
    SRC_DATA data{};
    data.data_in = pending.data() + pendingStart;
    data.input_frames = static_cast<long>(pendingCount);
    data.data_out = out.data();
    data.output_frames = static_cast<long>(out.size());
    data.src_ratio = ratio;
    if (src_process(state.get(), &data) != 0) {
        pendingCount = 0;
        return 0;
    }
    const auto used = static_cast<std::size_t>(data.input_frames_used);
    const auto made = static_cast<double>(data.output_frames_gen);
    if (lastRatio <= 0.0) {
        lastRatio = ratio;
    }
    // The converter glides linearly over the frames that it was asked for.
    const double reached = lastRatio + (ratio - lastRatio) * made / static_cast<double>(out.size());
    heard += made * 2.0 / (lastRatio + reached);
    lastRatio = reached;
    taken += static_cast<double>(used);
    pendingStart += used;
    pendingCount -= used;
    return static_cast<std::size_t>(data.output_frames_gen);
}

} // namespace tonebridge
