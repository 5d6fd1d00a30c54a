#pragma once

namespace tonebridge {

// Keeps the mean delay between arrival and sound at its target, by playing a few parts per million
// faster or slower than the nominal rate. It corrects the difference between the receiver's clock
// and the sound card's, so slowly that no change of pitch is heard. Owned by the engine.
class RateController {
  public:
    // Seconds between arrival and sound.
    static constexpr double Target = 1.0;

    // For a new stream, which may have another clock.
    void Clear() { *this = RateController{}; }
    // After a jump of the fill. It keeps what it has learned of the clocks.
    void Settle(double fill) { meanFill = fill; }
    // Takes the fill in seconds, elapsed seconds after the last one.
    void Update(double fill, double elapsed);

    // By how much faster than the nominal rate to play: 1e-6 is one part per million.
    double Correction() const { return correction; }

  private:
    double meanFill = Target;
    double integral = 0.0;
    double correction = 0.0;
};

} // namespace tonebridge
