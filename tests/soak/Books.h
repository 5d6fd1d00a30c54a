#pragma once

#include "platform/FolderItem.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <vector>

namespace larkspool::soak {

// Every sample that the receiver sends has a number, and a value that follows from it: one that is
// lost, doubled or displaced shows. Never 0 or 1, which silence and the squelch's filler are.
std::int16_t SampleNumbered(std::uint64_t number);

// A run of samples: of the receiver's sound, of its filler, or of the silence that stands in a file
// for a quiet stretch.
struct Piece {
    enum class Kind { Sound, Filler, Silence };

    std::int16_t At(std::size_t index) const;

    Kind kind = Kind::Sound;
    std::uint64_t first = 0; // number of the first sample
    std::size_t samples = 0;
    std::size_t hour = 0; // in which it was sent
};

// What has become of the samples of one hour.
struct HourBook {
    std::int64_t sent = 0;
    std::int64_t recorded = 0; // found in a file, in their place
    std::int64_t leftOut = 0;  // by the quiet rule
    std::int64_t lost = 0;     // on the wire
    std::int64_t idle = 0;     // heard while nothing was recording
    std::int64_t silence = 0;  // found in a file; nobody has sent it

    std::int64_t Difference() const { return sent - recorded - leftOut - lost - idle; }
};

// How the console stands while it takes a frame.
struct ConsoleState {
    bool records = false;
    bool leavesQuietOut = false;
    std::size_t deadSamples = 0; // of the silence for a quiet stretch
};

// The accounts of every sample from the receiver to the files. The only knowledge of the program in
// them is what its user has been promised.
class Books {
  public:
    explicit Books(std::size_t hours);

    Piece Send(std::size_t samples, bool quiet); // what the receiver sends next
    void Lose(const Piece& frame) { hours[frame.hour].lost += Count(frame); }
    void Travel(const Piece& frame) { onTheWire.push_back(frame); }
    void LinkGone(); // with all that was still on its way

    // The program has handed these samples to the sound output, and will record them next.
    void Hear(std::span<const std::int16_t> samples, const ConsoleState& console);

    // A file that is no longer written, the earliest first: all of it must be what was to come.
    void ReadBack(const FolderItem& file);

    std::vector<HourBook> hours;
    std::size_t hour = 0; // the one that runs
    std::int64_t files = 0;
    std::vector<std::string> faults; // in words; the first few

  private:
    static std::int64_t Count(const Piece& piece) {
        return static_cast<std::int64_t>(piece.samples);
    }
    void Fault(const std::string& text);
    void Expect(const Piece& frame, const ConsoleState& console);

    std::deque<Piece> onTheWire;
    std::vector<Piece> awaited; // in the files, in order
    std::uint64_t nextSample = 0;
    bool inQuietStretch = false;
};

} // namespace larkspool::soak
