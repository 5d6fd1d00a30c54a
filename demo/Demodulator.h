#pragma once

#include "demo/Command.h"
#include "demo/Fft.h"

#include <span>

namespace larkspool::demo {

// Turns a filtered baseband into sound, on the amplitude scale of the baseband; only FM has a scale
// of its own, see IsLeveled.
class Demodulator {
  public:
    void Set(Mode newMode, double rate);

    // FM doesn't follow the signal's strength: full scale is 1 and no AGC is wanted.
    bool IsLeveled() const { return mode == Mode::Nbfm; }

    // A new station: forget the carrier of the old one.
    void Restart();

    void Process(std::span<const Sample> baseband, std::span<float> sound);

  private:
    float Envelope(const Sample& sample);
    float Synchronous(const Sample& sample);
    float Discriminator(const Sample& sample);
    float WithoutMean(float value);

    Mode mode = Mode::Am;
    float mean = 0.0F;
    bool meanKnown = false;
    Sample previous{};
    double phase = 0.0; // of the tracked carrier, radians
    double pace = 0.0;  // radians per sample
    double fastest = 0.0;
    float fmScale = 0.0F;
};

} // namespace larkspool::demo
