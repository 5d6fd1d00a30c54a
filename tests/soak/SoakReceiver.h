#pragma once

#include "soak/Books.h"
#include "support/VirtualDesktop.h"

#include <cstdint>
#include <memory>
#include <random>
#include <string>

namespace larkspool::soak {

// A frame as it goes over the wire; samples big-endian.
void WriteSoundFrame(std::string& wire, const Piece& frame, std::uint32_t sequence);
std::string WaterfallFrame();

inline constexpr int Rate = 12000;            // samples a second
inline constexpr double RowPeriod = 1.0 / 25; // seconds, of the waterfall

// A receiver as bad nights have it, by a seed: transmissions with pauses between them, frames that
// get lost one by one and in bursts, links that break in the middle of a frame, minutes in which
// it is gone or full, seconds in which it says nothing.
class SoakReceiver {
  public:
    SoakReceiver(VirtualDesktop& host, Books& account, std::uint32_t seed);

    void Attach();         // to the console's links
    bool IsSteady() const; // both links have been up for a while

    std::int64_t connects = 0;
    std::int64_t cuts = 0;
    std::int64_t rows = 0;
    std::int64_t frames = 0;

  private:
    using Life = std::weak_ptr<int>;

    void AnswerAudio();
    void AnswerWaterfall();
    void Upgrade(VirtualTCPSocket& socket);
    void Greet();
    void SendFrame(const Life& life);
    void SendRow(const Life& life);
    void Cut(const Piece& frame);
    void SendOrLose(const Piece& frame);
    Piece NextFrame();
    bool Happens(double every, double within); // seconds
    double Between(double least, double most);
    std::size_t Whole(double least, double most) {
        return static_cast<std::size_t>(Between(least, most));
    }

    VirtualDesktop& desktop;
    Books& books;
    std::mt19937_64 chance;
    std::shared_ptr<int> audioLife; // of one connection
    std::shared_ptr<int> waterfallLife;
    std::string wire;
    const std::string row = WaterfallFrame();
    std::uint32_t sequence = 0;
    std::size_t lossesToCome = 0; // frames
    double stretchEnd = 0;        // when a transmission or a pause ends
    bool isQuiet = false;
    double goneUntil = 0;
    double lastConnect = 0;
};

} // namespace larkspool::soak
