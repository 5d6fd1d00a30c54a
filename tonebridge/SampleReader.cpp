#include "tonebridge/SampleReader.h"

#include <algorithm>
#include <array>

namespace tonebridge {

std::size_t SampleReader::Available() const {
    const std::uint64_t next = position + leap;
    return end > next ? static_cast<std::size_t>(end - next) : 0;
}

std::size_t SampleReader::Read(std::span<float> out) {
    std::size_t count = std::min(out.size(), Available());
    if (IsLeaping()) {
        count = std::min(count, fadeTotal - fadeDone);
    }
    out = out.first(count);
    ring.Copy(position, out);
    position += count;
    if (IsLeaping()) {
        CrossFade(out);
    }
    ring.Release(position);
    return count;
}

void SampleReader::Leap(std::size_t count, std::size_t fadeLength) {
    leap = count;
    fadeTotal = fadeLength;
    fadeDone = 0;
}

void SampleReader::MoveTo(std::uint64_t newPosition) {
    position = newPosition;
    leap = 0;
    ring.Release(position);
}

void SampleReader::CrossFade(std::span<float> out) {
    std::array<float, 64> other{};
    for (std::size_t done = 0; done < out.size();) {
        const std::span<float> piece = out.subspan(done, std::min(other.size(), out.size() - done));
        ring.Copy(position - out.size() + done + leap, std::span(other).first(piece.size()));
        for (std::size_t i = 0; i < piece.size(); ++i) {
            ++fadeDone;
            const float share = static_cast<float>(fadeDone) / static_cast<float>(fadeTotal);
            piece[i] += (other[i] - piece[i]) * share;
        }
        done += piece.size();
    }
    if (fadeDone == fadeTotal) {
        position += leap;
        leap = 0;
    }
}

} // namespace tonebridge
