#pragma once

#include "demo/Fft.h"
#include "demo/Moment.h"
#include "demo/Programme.h"
#include "demo/StationTable.h"

#include <cstdint>
#include <span>
#include <vector>

namespace larkspool::demo {

// A station with the data that its kind needs to be rendered fast. It borrows the programme.
struct Transmitter {
    Station station;
    const Programme* programme = nullptr; // none for kinds without one
    std::vector<std::uint8_t> keying;     // of Morse and Teleprinter
    double offset = 0.0;                  // seconds by which its programme is ahead of others
};

// The station's signal relative to its own frequency, amplitude 1 for the bare carrier, one element
// each 1/rate seconds from a moment on.
void RenderEnvelope(const Transmitter& transmitter, const Moment& from, double rate,
                    std::span<Sample> out);

} // namespace larkspool::demo
