// Says what a person would have heard in a WAV file: its strongest tone and that tone's level.
//   larkspool-heard FILE.wav [SECONDS]     looks at the loudest stretch of so many seconds (3)
#include "demo/Fft.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using larkspool::demo::Fft;
using larkspool::demo::Sample;
using larkspool::demo::Turn;

struct Sound {
    double rate = 0;            // samples a second
    std::vector<float> samples; // the first channel, full scale is 1
};

struct Tone {
    double hertz = 0;
    double level = 0; // of its amplitude, dB below full scale
};

std::uint32_t Number(std::string_view bytes, std::size_t at, std::size_t width) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < width && at + i < bytes.size(); ++i) {
        value |= std::uint32_t{static_cast<std::uint8_t>(bytes[at + i])} << 8U * i;
    }
    return value;
}

float SampleAt(std::string_view data, std::size_t at, unsigned bits) {
    if (bits == 32) {
        return std::bit_cast<float>(Number(data, at, 4));
    }
    return static_cast<float>(static_cast<std::int16_t>(Number(data, at, 2))) / 32768.0F;
}

// Takes 16-bit PCM and 32-bit floats. A data chunk that is longer than the file ends with the file.
std::optional<Sound> ReadWav(std::string_view file) {
    Sound sound;
    std::size_t frameSize = 0;
    unsigned bits = 0;
    if (file.substr(0, 4) != "RIFF") {
        return std::nullopt;
    }
    for (std::size_t at = 12; at + 8 <= file.size();) {
        const std::string_view kind = file.substr(at, 4);
        const std::string_view chunk = file.substr(at + 8, Number(file, at + 4, 4));
        if (kind == "fmt ") {
            sound.rate = Number(chunk, 4, 4);
            frameSize = Number(chunk, 12, 2);
            bits = Number(chunk, 14, 2);
        } else if (kind == "data" && frameSize > 0 && (bits == 16 || bits == 32)) {
            for (std::size_t i = 0; i + frameSize <= chunk.size(); i += frameSize) {
                sound.samples.push_back(SampleAt(chunk, i, bits));
            }
            return sound;
        }
        at += 8 + chunk.size() + chunk.size() % 2;
    }
    return std::nullopt;
}

std::size_t LoudestStart(const std::vector<float>& samples, std::size_t length) {
    double power = 0;
    double best = -1;
    std::size_t start = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        power += static_cast<double>(samples[i]) * static_cast<double>(samples[i]);
        if (i >= length) {
            power -=
                static_cast<double>(samples[i - length]) * static_cast<double>(samples[i - length]);
        }
        if (i + 1 >= length && power > best) {
            best = power;
            start = i + 1 - length;
        }
    }
    return start;
}

std::optional<Tone> StrongestTone(const Sound& sound, double seconds) {
    const auto most = static_cast<double>(sound.samples.size());
    const auto wanted =
        static_cast<std::size_t>(std::min(std::max(0.0, seconds * sound.rate), most));
    const std::size_t length = std::bit_floor(wanted);
    if (length < 1024) {
        return std::nullopt;
    }
    const std::size_t start = LoudestStart(sound.samples, length);
    std::vector<Sample> bins(length);
    for (std::size_t i = 0; i < length; ++i) {
        const double turn = Turn * static_cast<double>(i) / static_cast<double>(length);
        const auto window = static_cast<float>(0.5 - 0.5 * std::cos(turn));
        bins[i] = {sound.samples[start + i] * window, 0.0F};
    }
    Fft(length).Forward(bins);
    const auto magnitude = [&bins](std::size_t i) {
        return static_cast<double>(std::abs(bins[i]));
    };
    std::size_t peak = 2;
    for (std::size_t i = 2; i < length / 2 - 1; ++i) {
        if (magnitude(i) > magnitude(peak)) {
            peak = i;
        }
    }
    // Between the bins: with this window the two larger of three neighbors tell how far.
    const bool above = magnitude(peak + 1) > magnitude(peak - 1);
    const double ratio = magnitude(above ? peak + 1 : peak - 1) / std::max(magnitude(peak), 1e-30);
    const double offset = (2 * ratio - 1) / (ratio + 1) * (above ? 1 : -1);
    const double amplitude = 4 * magnitude(peak) / static_cast<double>(length);
    return Tone{(static_cast<double>(peak) + offset) * sound.rate / static_cast<double>(length),
                20 * std::log10(std::max(amplitude, 1e-10))};
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: larkspool-heard FILE.wav [SECONDS]\n");
        return 2;
    }
    std::ifstream stream(argv[1], std::ios::binary);
    if (!stream) {
        std::perror(argv[1]);
        return 1;
    }
    const std::string file(std::istreambuf_iterator<char>(stream), {});
    const auto sound = ReadWav(file);
    if (!sound) {
        std::fprintf(stderr, "%s is no WAV file of 16-bit or floating-point samples\n", argv[1]);
        return 1;
    }
    const auto tone = StrongestTone(*sound, argc > 2 ? std::atof(argv[2]) : 3.0);
    if (!tone) {
        std::fprintf(stderr, "%s is too short to say anything\n", argv[1]);
        return 1;
    }
    std::printf("%.1f Hz at %.1f dB below full scale\n", tone->hertz, -tone->level);
    return 0;
}
