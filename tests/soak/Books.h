#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <numeric>
#include <span>
#include <string>
#include <vector>

namespace larkspool {

using Samples = std::vector<std::int16_t>;

// What the console does with a frame that it takes.
struct ConsoleState {
    bool records = false;
    bool leavesQuietOut = false;
    std::size_t deadSamples = 0; // of the silence for a quiet stretch
};

// The accounts of every sample from the receiver to the files. The only knowledge of the program in
// them is what its user has been promised. Every sample has a number, and a value that follows from
// it: one that is lost, doubled or displaced shows.
class Books {
  public:
    Books() { awaited.reserve(LongestFiles); }

    // What the receiver sends next: its sound, or the squelch's filler.
    Samples Next(std::size_t count, bool quiet) {
        Samples frame(count, 1);
        if (!quiet) {
            std::ranges::generate(frame, [this] { return Numbered(nextNumber++); });
        }
        sent += std::ssize(frame);
        return frame;
    }
    void Lose(const Samples& frame) { lost += std::ssize(frame); }
    void Travel(const Samples& frame) { onTheWire.push_back(frame); }
    void LinkGone() { // with all that was still on its way
        for (; !onTheWire.empty(); onTheWire.pop_front()) {
            Lose(onTheWire.front());
        }
    }

    // The program has handed these samples to the sound output, and will record them next. False if
    // they aren't what was sent.
    bool Hear(std::span<const std::int16_t> samples, const ConsoleState& console) {
        if (onTheWire.empty() || !std::ranges::equal(samples, onTheWire.front())) {
            return false;
        }
        const Samples frame = std::move(onTheWire.front());
        onTheWire.pop_front();
        if (!console.records) {
            idle += std::ssize(frame);
            return true;
        }
        const bool quiet = frame.front() == 1 && console.leavesQuietOut;
        if (!quiet) {
            Await(frame);
        } else {
            leftOut += std::ssize(frame);
            if (!inQuietStretch) {
                Await(Samples(console.deadSamples));
                silence += static_cast<std::int64_t>(console.deadSamples);
            }
        }
        inQuietStretch = quiet;
        return true;
    }

    // The sound of a file that is no longer written, the earliest first. False unless all of it is
    // what was to come.
    bool ReadBack(const std::string& sound) {
        const bool same = awaited.starts_with(sound);
        inFiles += std::ssize(sound) / 2;
        awaited.erase(0, sound.size());
        return same;
    }

    // Of what was sent and what the program has put in place of quiet stretches, neither in a file
    // nor explained. It must be what is still on its way to one.
    std::int64_t Unexplained() const { return sent + silence - inFiles - leftOut - lost - idle; }
    std::int64_t OnTheWay() const {
        return std::accumulate(
            onTheWire.begin(), onTheWire.end(), std::ssize(awaited) / 2,
            [](std::int64_t sum, const Samples& frame) { return sum + std::ssize(frame); });
    }

    // Samples.
    std::int64_t sent = 0;
    std::int64_t inFiles = 0; // read back, silence included
    std::int64_t leftOut = 0; // by the quiet rule
    std::int64_t lost = 0;    // on the wire
    std::int64_t idle = 0;    // heard while nothing was recording
    std::int64_t silence = 0; // in place of quiet stretches

  private:
    // Room for all that is awaited at a time; made at once, so that the books don't grow while
    // memory is compared.
    static constexpr std::size_t LongestFiles = std::size_t{64} * 1024 * 1024;

    // Never 0 or 1, which silence and filler are.
    static std::int16_t Numbered(std::uint64_t number) {
        const auto value = static_cast<std::uint16_t>(number * 40503U + (number >> 16U) * 12347U);
        return static_cast<std::int16_t>(value < 2 ? value + 2 : value);
    }
    void Await(std::span<const std::int16_t> samples) { // a file has them in this order of bytes
        awaited.append(reinterpret_cast<const char*>(samples.data()), samples.size_bytes());
    }

    std::deque<Samples> onTheWire;
    std::string awaited; // in the files, in order
    std::uint64_t nextNumber = 0;
    bool inQuietStretch = false;
};

} // namespace larkspool
