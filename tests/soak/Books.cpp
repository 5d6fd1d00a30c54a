#include "soak/Books.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <memory>

namespace larkspool::soak {

namespace {

constexpr std::size_t HeaderBytes = 44;
constexpr std::size_t MostFaults = 10;
// Frames of the longest file; made at once, so that the books don't grow while memory is compared.
constexpr std::size_t ExpectedPieces = 100'000;

struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

std::uint32_t LittleEndian(const unsigned char* bytes) {
    return static_cast<std::uint32_t>(bytes[0]) | static_cast<std::uint32_t>(bytes[1]) << 8U |
           static_cast<std::uint32_t>(bytes[2]) << 16U |
           static_cast<std::uint32_t>(bytes[3]) << 24U;
}

// The samples that a file's header tells of; -1 where it doesn't tell what there is.
std::int64_t SamplesTold(std::FILE* file, std::uint64_t length) {
    std::array<unsigned char, HeaderBytes> header = {};
    if (std::fread(header.data(), 1, header.size(), file) != header.size() ||
        std::memcmp(header.data(), "RIFF", 4) != 0 ||
        std::memcmp(header.data() + 36, "data", 4) != 0) {
        return -1;
    }
    const std::uint32_t bytes = LittleEndian(header.data() + 40);
    const bool fits =
        bytes + HeaderBytes == length && LittleEndian(header.data() + 4) == bytes + 36;
    return fits ? bytes / 2 : -1;
}

bool Holds(std::FILE* file, const Piece& piece) {
    std::array<unsigned char, 2048> bytes = {};
    std::size_t done = 0;
    while (done < piece.samples) {
        const std::size_t portion = std::min(piece.samples - done, bytes.size() / 2);
        if (std::fread(bytes.data(), 2, portion, file) != portion) {
            return false;
        }
        for (std::size_t i = 0; i < portion; ++i) {
            const auto sample = static_cast<std::uint16_t>(piece.At(done + i));
            if (bytes[2 * i] != (sample & 0xFFU) || bytes[2 * i + 1] != sample >> 8U) {
                return false;
            }
        }
        done += portion;
    }
    return true;
}

} // namespace

std::int16_t SampleNumbered(std::uint64_t number) {
    const auto value = static_cast<std::uint16_t>(number * 40503U + (number >> 16U) * 12347U);
    return static_cast<std::int16_t>(value < 2 ? value + 2 : value);
}

std::int16_t Piece::At(std::size_t index) const {
    switch (kind) {
    case Kind::Sound:
        return SampleNumbered(first + index);
    case Kind::Filler:
        return 1;
    case Kind::Silence:
        return 0;
    }
    return 0;
}

Books::Books(std::size_t hoursToCome) : hours(hoursToCome) { awaited.reserve(ExpectedPieces); }

void Books::Fault(const std::string& text) {
    if (faults.size() < MostFaults) {
        faults.push_back("hour " + std::to_string(hour + 1) + ": " + text);
    }
}

Piece Books::Send(std::size_t samples, bool quiet) {
    const Piece frame = {quiet ? Piece::Kind::Filler : Piece::Kind::Sound, nextSample, samples,
                         hour};
    nextSample += samples;
    hours[hour].sent += Count(frame);
    return frame;
}

void Books::LinkGone() {
    for (const Piece& frame : onTheWire) {
        Lose(frame);
    }
    onTheWire.clear();
}

void Books::Hear(std::span<const std::int16_t> samples, const ConsoleState& console) {
    if (onTheWire.empty()) {
        Fault("sound that nobody has sent");
        return;
    }
    const Piece frame = onTheWire.front();
    onTheWire.pop_front();
    bool same = samples.size() == frame.samples;
    for (std::size_t i = 0; same && i < samples.size(); ++i) {
        same = samples[i] == frame.At(i);
    }
    if (!same) {
        Fault("heard what was not sent, at sample " + std::to_string(frame.first));
    }
    if (console.records) {
        Expect(frame, console);
    } else {
        hours[frame.hour].idle += Count(frame);
    }
}

void Books::Expect(const Piece& frame, const ConsoleState& console) {
    const bool quiet = frame.kind == Piece::Kind::Filler && console.leavesQuietOut;
    if (!quiet) {
        awaited.push_back(frame);
    } else {
        hours[frame.hour].leftOut += Count(frame);
        if (!inQuietStretch) {
            awaited.push_back({Piece::Kind::Silence, 0, console.deadSamples, frame.hour});
        }
    }
    inQuietStretch = quiet;
}

void Books::ReadBack(const FolderItem& file) {
    ++files;
    const std::unique_ptr<std::FILE, Closer> stream(std::fopen(file.Path().c_str(), "rb"));
    std::int64_t left = stream == nullptr ? -1 : SamplesTold(stream.get(), file.Length());
    if (left < 0) {
        Fault("not a finished recording: " + file.Name());
        return;
    }
    auto piece = awaited.begin();
    for (; left > 0 && piece != awaited.end(); ++piece) {
        if (!Holds(stream.get(), *piece)) {
            break;
        }
        HourBook& book = hours[piece->hour];
        (piece->kind == Piece::Kind::Silence ? book.silence : book.recorded) += Count(*piece);
        left -= Count(*piece);
    }
    if (left != 0) {
        Fault("not what was sent, " + std::to_string(left) + " samples before the end of " +
              file.Name());
    }
    awaited.erase(awaited.begin(), piece);
}

} // namespace larkspool::soak
