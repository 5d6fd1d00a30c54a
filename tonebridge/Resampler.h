#pragma once

#include "tonebridge/SampleReader.h"

#include <array>
#include <cstddef>
#include <memory>
#include <span>

struct soxr;

namespace tonebridge {

// Turns samples at the receiver's rate into frames at the device's. Its "stride" is the ratio of
// the two: input samples per output frame. Allocates only when it is made. Owned by the engine.
class Resampler {
  public:
    static constexpr std::size_t LongestStride = 6; // 250,000 Hz to 44,100 Hz

    Resampler();

    // Drops all sound that it holds, so that the next frame is made of the samples that are read
    // next, at about this stride.
    void Clear(double stride);
    // Fills out from reader while the ratio changes gradually to stride. Returns the number of
    // frames, which is less than asked for only if reader and converter have no more.
    std::size_t Pull(SampleReader& reader, std::span<float> out, double stride);
    // Input samples taken from the reader but not yet heard.
    double Held() const { return taken - heard; }
    // Input samples that must follow a frame before it can be made.
    static double LookAhead(double stride);

  private:
    // Output frames at one ratio. With steps the count of held samples stays exact; with the
    // converter's own gradual change over a whole block it doesn't.
    static constexpr std::size_t StepFrames = 64;

    struct Deleter {
        void operator()(soxr* converter) const;
    };
    using Converter = std::unique_ptr<soxr, Deleter>;

    static Converter MakeConverter(double longestStride);

    std::size_t Make(SampleReader& reader, std::span<float> out, double stride);
    std::size_t Convert(std::span<const float> in, std::span<float> out);
    void Flush(double stride);
    bool SkipOldFrames(SampleReader& reader, double stride);

    // Converts upwards only, in two thirds of the time that the other needs.
    const Converter upward;
    const Converter any;
    soxr* used = nullptr;
    std::array<float, StepFrames * LongestStride> input{};
    double lastStride = 1.0;
    double unheard = 0.0; // input samples of silence that Clear has left
    double taken = 0.0;
    double heard = 0.0;
};

} // namespace tonebridge
