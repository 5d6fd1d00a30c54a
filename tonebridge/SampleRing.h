#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tonebridge {

// Samples between the network's thread and the sound card's: one writer, one reader, no lock.
// Positions count samples since the start and never wrap. Owned by the engine.
class SampleRing {
  public:
    // The capacity is a power of two.
    explicit SampleRing(std::size_t capacity);

    // Writer's side: takes as much of the block as fits.
    std::size_t Write(std::span<const std::int16_t> block);
    std::uint64_t WritePosition() const { return writePosition.load(std::memory_order_acquire); }

    // Reader's side: samples from position on, scaled to -1 to 1. The range lies between the read
    // and the write position.
    void Copy(std::uint64_t position, std::span<float> out) const;
    // Frees what is before position.
    void Release(std::uint64_t position);
    std::uint64_t ReadPosition() const { return readPosition.load(std::memory_order_acquire); }

  private:
    std::vector<std::int16_t> samples;
    std::atomic<std::uint64_t> writePosition{0};
    std::atomic<std::uint64_t> readPosition{0};
};

} // namespace tonebridge
