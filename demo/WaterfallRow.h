#pragma once

#include "demo/Band.h"
#include "demo/Command.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace larkspool::demo {

// Shows one client a stretch of the band: makes the W/F rows for its zoom and start, by the
// transform of the same signals that the sound is made from. Borrows band and antenna.
class WaterfallRow {
  public:
    static constexpr std::size_t Bins = 1024;

    WaterfallRow(const Band& sharedBand, const Antenna& ownAntenna);

    // The message of a row that ends at until: tag, 13 bytes of header, one byte a bin, lowest
    // frequency first; a byte is the level in dBm + 255.
    std::vector<std::uint8_t> Row(const Tuning& tuning, const Moment& until);

    // Left edge and span of a row, in Hz.
    static double LeftEdge(const Tuning& tuning);
    static double Span(const Tuning& tuning);

  private:
    void Prepare(std::size_t size);
    void AddNoise(const Tuning& tuning, const Moment& at);

    const Band& band;
    const Antenna& antenna;
    std::unique_ptr<Fft> fft; // of the size that the present zoom asks for
    std::vector<float> window;
    std::vector<Sample> spectrum;
    std::uint32_t sequence = 0;
};

} // namespace larkspool::demo
