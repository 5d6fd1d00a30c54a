#pragma once

#include "demo/Agc.h"
#include "demo/Band.h"
#include "demo/Command.h"
#include "demo/Demodulator.h"
#include "demo/PassbandFilter.h"

#include <cstdint>
#include <vector>

namespace larkspool::demo {

// What one client hears: makes the SND frames for its tuning, one after another. Borrows band and
// antenna.
class SoundStream {
  public:
    static constexpr std::size_t SamplesPerFrame = PassbandFilter::OutputSize;

    SoundStream(const Band& sharedBand, const Antenna& ownAntenna, double samplesPerSecond);

    void Tune(const Tuning& wanted);

    // The message of the next frame, which begins at from: tag, flags, sequence number
    // (little-endian), S-meter (big-endian), samples (big-endian).
    std::vector<std::uint8_t> Frame(const Moment& from);

    // The next frame is lost: its number is used, no frame is made.
    void SkipFrame() { ++sequence; }

    // Power in the passband during the last frame, dBm.
    double SMeter() const { return sMeter; }

  private:
    bool IsSquelched() const { return tuning.squelch > 0.0 && tailFrames <= 0; }
    double NoiseDbm() const;
    void Receive(const Moment& from);
    void FillFilter(const Moment& from);
    void MeasureAndSquelch();
    void PutSamples(std::vector<std::uint8_t>& message);

    const Band& band;
    const Antenna& antenna;
    double rate;
    Tuning tuning;
    PassbandFilter filter;
    Demodulator demodulator;
    Agc agc;
    std::vector<Sample> air;
    std::vector<Sample> passed;
    std::vector<float> sound;
    float emphasis = 0.0F;      // state of the de-emphasis
    float emphasisShare = 1.0F; // how far it moves a sample; 1: off
    double sMeter = -127.0;
    double smoothedPower = -1.0; // mW, over the last frames
    bool filled = false;         // the filter holds the past of this frequency
    int tailFrames = 0;          // frames until the squelch closes
    std::uint32_t sequence = 0;
};

} // namespace larkspool::demo
