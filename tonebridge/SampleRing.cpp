#include "tonebridge/SampleRing.h"

#include <algorithm>

namespace tonebridge {

SampleRing::SampleRing(std::size_t capacity) : samples(capacity) {}

std::size_t SampleRing::Write(std::span<const std::int16_t> block) {
    const std::uint64_t position = writePosition.load(std::memory_order_relaxed);
    const std::size_t room = samples.size() - static_cast<std::size_t>(position - ReadPosition());
    const std::size_t count = std::min(block.size(), room);
    const std::size_t start = static_cast<std::size_t>(position) & (samples.size() - 1);
    const std::size_t untilEnd = std::min(count, samples.size() - start);
    std::copy_n(block.data(), untilEnd, samples.data() + start);
    std::copy_n(block.data() + untilEnd, count - untilEnd, samples.data());
    writePosition.store(position + count, std::memory_order_release);
    return count;
}

void SampleRing::Copy(std::uint64_t position, std::span<float> out) const {
    constexpr float Scale = 1.0F / 32768.0F;
    for (float& value : out) {
        value = static_cast<float>(samples[position & (samples.size() - 1)]) * Scale;
        ++position;
    }
}

void SampleRing::Release(std::uint64_t position) {
    readPosition.store(position, std::memory_order_release);
}

} // namespace tonebridge
