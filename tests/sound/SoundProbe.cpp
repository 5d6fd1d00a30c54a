// Plays a tone through the seven entry points as the program does, and judges
// what a sound server recorded of it. The script beside it uses both.
#include "sound/ToneMeter.h"
#include "tonebridge/tonebridge.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <random>
#include <string>
#include <thread>

namespace {

constexpr int Rate = 12000;
constexpr double Tone = 1000.0;

// list: one line a device: input channels, output channels, name.
int List() {
    const std::int64_t count = BuildSoundDeviceList();
    for (std::int64_t i = 0; i < count; ++i) {
        std::array<std::uint32_t, 256> info{};
        std::array<char, 1024> name{};
        GetSoundDeviceInfo(i, info.data(), name.data());
        std::cout << info[1] << ' ' << info[2] << ' ' << name.data() << '\n';
    }
    return 0;
}

// play SECONDS PPM JITTER: the jitter in seconds. Ends with silence.
int Play(double seconds, double clockError, double jitter) {
    BuildSoundDeviceList();
    StopSoundOutput();
    StartSoundOutput(0, 1.0);
    setSoundOutputVolume(4.0);
    const std::vector<std::int16_t> silence(Rate);
    OutputSoundBlock(TONEBRIDGE_NEW_STREAM, silence.data(), Rate);
    OutputSoundBlock(Rate, silence.data(), Rate);
    std::mt19937 random(1);
    std::uniform_real_distribution<double> lateness(0.0, jitter);
    const auto start = std::chrono::steady_clock::now();
    tonebridge::test::ToneSource source(Tone, Rate);
    while (source.Seconds() < seconds) {
        const double due = source.Seconds() / (1.0 + clockError * 1e-6) + lateness(random);
        const std::vector<std::int16_t> frame = source.Next(512);
        std::this_thread::sleep_until(start + std::chrono::duration<double>(due));
        OutputSoundBlock(std::ssize(frame), frame.data(), Rate);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    return 0;
}

// judge FILE SECONDS: fails unless a whole tone of that length was recorded, or without SECONDS
// unless any sound was.
int Judge(const std::string& file, double seconds) {
    std::ifstream in(file, std::ios::binary);
    std::vector<float> left;
    bool areSidesEqual = true;
    for (std::array<float, 2> frame{};
         in.read(reinterpret_cast<char*>(frame.data()), sizeof frame);) {
        left.push_back(frame[0]);
        areSidesEqual = areSidesEqual && frame[0] == frame[1];
    }
    tonebridge::test::ToneMeter meter(Tone, 48000.0);
    meter.Add(left);
    const auto isHeard = [](float sample) { return std::abs(sample) > 1e-4F; };
    const double length = static_cast<double>(std::ranges::count_if(left, isHeard)) / 48000.0;
    const auto first = std::ranges::find_if(left, isHeard) - left.begin();
    std::cout << "recorded " << length << " s of sound after "
              << static_cast<double>(first) / 48000.0 << " s, " << meter.Gaps().size()
              << " gaps, step " << meter.LargestStep() << " of the tone's own, peak "
              << meter.Peak() << ", sides " << (areSidesEqual ? "equal" : "different") << '\n';
    if (seconds == 0.0) {
        return meter.Peak() > 0.01 ? 0 : 1;
    }
    const bool isGood = areSidesEqual && meter.Gaps().empty() && meter.LargestStep() <= 1.05 &&
                        std::abs(meter.Peak() - 0.5) < 0.01 && std::abs(length - seconds) < 0.3;
    return isGood ? 0 : 1;
}

} // namespace

int main(int count, char** texts) {
    std::vector<std::string> words(texts + 1, texts + count);
    words.resize(4);
    const auto number = [&](std::size_t word) { return std::strtod(words[word].c_str(), nullptr); };
    if (words[0] == "list") {
        return List();
    }
    if (words[0] == "play") {
        return Play(number(1), number(2), number(3));
    }
    if (words[0] == "judge") {
        return Judge(words[1], number(2));
    }
    std::cerr << "list | play SECONDS PPM JITTER | judge FILE [SECONDS]\n";
    return 2;
}
