#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace larkspool::demo {

// The antenna of one receiver. All receivers share one band; the antenna decides how strong each
// station and the noise are.
struct Antenna {
    std::string_view name;
    double gainDb;                 // at its best frequency
    double bestKhz;                // where it works best
    double dbPerOctave;            // loss away from there
    double noiseDbmHz;             // noise density at 10 MHz; more below, less above
    double crashDb;                // added to the strength of lightning crashes
    std::optional<double> bearing; // degrees; empty: the same in all directions

    // Gain in dB for a station at a frequency, in a direction in degrees.
    double GainDb(double hertz, double stationBearing) const;

    // Noise density in dBm per Hz at a frequency.
    double NoiseDbmHz(double hertz) const;
};

// The seven of the site, in the order of their ports. The first has a gain of 0 dB at 10 MHz, so
// that the levels of the station table are what it hears there.
const std::array<Antenna, 7>& Antennas();

} // namespace larkspool::demo
