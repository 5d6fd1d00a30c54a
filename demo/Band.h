#pragma once

#include "demo/Antenna.h"
#include "demo/Envelope.h"
#include "demo/Fft.h"
#include "demo/Moment.h"

#include <cstdint>
#include <span>
#include <vector>

namespace larkspool::demo {

// All that is on the air, as a function of time, frequency and seed: equal arguments give equal
// signals. Owns the programmes; receivers borrow the band.
class Band {
  public:
    explicit Band(std::uint64_t seed);

    // Adds the stations to out: the complex baseband around centerHertz as the antenna hears it,
    // rate samples a second. Stations with a carrier beyond half the rate are left out; their
    // sidebands within the range wrap to the far edge.
    void AddStations(const Antenna& antenna, const Moment& from, double centerHertz, double rate,
                     std::span<Sample> out) const;

    // Adds noise and lightning, white over the whole rate.
    void AddNoise(const Antenna& antenna, const Moment& from, double centerHertz, double rate,
                  std::span<Sample> out) const;

    // How many times the quiet noise's power the air holds: 1, more in a lightning crash.
    double CrashFactor(const Antenna& antenna, const Moment& at, double hertz) const;

    std::uint64_t Seed() const { return seed; }

  private:
    float Amplitude(const Transmitter& transmitter, const Antenna& antenna, const Moment& at) const;
    const Programme* ProgrammeFor(const Station& station) const;

    std::uint64_t seed;
    std::vector<Programme> programmes;
    std::vector<Transmitter> transmitters;
};

} // namespace larkspool::demo
