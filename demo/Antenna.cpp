#include "demo/Antenna.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace larkspool::demo {

double Antenna::GainDb(double hertz, double stationBearing) const {
    constexpr double FrontToBackDb = 20.0;
    const double octaves = std::log2(std::max(hertz, 1000.0) / (bestKhz * 1000.0));
    double gain = gainDb - dbPerOctave * std::abs(octaves);
    if (bearing) {
        const double off = (stationBearing - *bearing) * std::numbers::pi / 180.0;
        gain -= FrontToBackDb * (1.0 - std::cos(off)) / 2.0;
    }
    return gain;
}

double Antenna::NoiseDbmHz(double hertz) const {
    constexpr double DbPerDecade = 18.0;
    constexpr double ReceiverDbmHz = -164.0; // the receiver's own noise is below all others
    const double outside = noiseDbmHz - DbPerDecade * std::log10(std::max(hertz, 10000.0) / 10.0e6);
    return 10.0 * std::log10(std::pow(10.0, outside / 10.0) + std::pow(10.0, ReceiverDbmHz / 10.0));
}

const std::array<Antenna, 7>& Antennas() {
    static const std::array<Antenna, 7> antennas{{
        {"Demo site, 20 m dipole", 1.487, 14100.0, 3.0, -155.0, 0.0, std::nullopt},
        {"Demo site, 40 m dipole", 3.0, 7100.0, 3.0, -151.0, 2.0, std::nullopt},
        {"Demo site, 80 m dipole", 4.0, 3650.0, 3.0, -148.0, 4.0, std::nullopt},
        {"Demo site, 160 m beverage north", 2.0, 1850.0, 3.0, -160.0, -6.0, 0.0},
        {"Demo site, 160 m beverage west", 2.0, 1850.0, 3.0, -160.0, -6.0, 270.0},
        {"Demo site, active loop", -5.0, 6000.0, 1.0, -153.0, -3.0, std::nullopt},
        {"Demo site, 2 m whip in the attic", -9.0, 24000.0, 4.0, -139.0, -8.0, std::nullopt},
    }};
    return antennas;
}

} // namespace larkspool::demo
