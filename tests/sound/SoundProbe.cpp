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
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int Rate = 12000;
constexpr double Tone = 1000.0;
constexpr double Peak = 0.5;

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

// play SECONDS PPM JITTER DEVICE: the jitter in seconds. Ends with silence.
int Play(double seconds, double clockError, double jitter, std::int64_t device) {
    BuildSoundDeviceList();
    StopSoundOutput();
    StartSoundOutput(device, 1.0);
    setSoundOutputVolume(4.0);
    const std::vector<std::int16_t> silence(Rate);
    OutputSoundBlock(TONEBRIDGE_NEW_STREAM, silence.data(), Rate);
    OutputSoundBlock(Rate, silence.data(), Rate);
    std::mt19937 random(1);
    std::uniform_real_distribution<double> lateness(0.0, jitter);
    const auto start = Clock::now();
    tonebridge::test::ToneSource source(Tone, Rate);
    while (source.Seconds() < seconds) {
        const double due = source.Seconds() / (1.0 + clockError * 1e-6);
        const std::vector<std::int16_t> frame = source.Next(512);
        std::this_thread::sleep_until(start +
                                      std::chrono::duration<double>(due + lateness(random)));
        OutputSoundBlock(std::ssize(frame), frame.data(), Rate);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    return 0;
}

// calls: each in turn, three times. The script gives up on it where one doesn't return.
int Calls() {
    const std::vector<std::int16_t> silence(Rate);
    for (int round = 0; round < 3; ++round) {
        BuildSoundDeviceList();
        StopSoundOutput();
        StartSoundOutput(0, 0.5);
        setSoundOutputVolume(2.0);
        OutputSoundBlock(Rate, silence.data(), Rate);
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
    }
    return 0;
}

struct Recording {
    std::vector<float> left;
    bool areSidesEqual = true;
};

Recording Load(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    Recording recording;
    std::array<float, 2> frame{};
    while (in.read(reinterpret_cast<char*>(frame.data()), sizeof frame)) {
        recording.left.push_back(frame[0]);
        recording.areSidesEqual = recording.areSidesEqual && frame[0] == frame[1];
    }
    return recording;
}

// judge FILE SECONDS: fails unless a whole tone of that length was recorded.
int Judge(const std::string& file, double seconds) {
    const Recording recording = Load(file);
    tonebridge::test::ToneMeter meter(Tone, 48000.0, Peak);
    meter.Add(recording.left);
    const auto& gaps = meter.Gaps();
    const double length =
        static_cast<double>(std::ranges::count_if(
            recording.left, [](float sample) { return std::abs(sample) > 1e-4F; })) /
        48000.0;
    std::cout << "recorded " << length << " s of sound, " << gaps.size() << " gaps, step "
              << meter.LargestStep() << " of the tone's own, peak " << meter.Peak() << ", sides "
              << (recording.areSidesEqual ? "equal" : "different") << '\n';
    const bool isGood = recording.areSidesEqual && gaps.empty() && meter.LargestStep() <= 1.05 &&
                        std::abs(meter.Peak() - Peak) < 0.01 && std::abs(length - seconds) < 0.3;
    return isGood ? 0 : 1;
}

// onset FILE: prints the seconds before the first sound; fails where there is none.
int Onset(const std::string& file) {
    const Recording recording = Load(file);
    const auto first =
        std::ranges::find_if(recording.left, [](float sample) { return std::abs(sample) > 0.01F; });
    std::cout << static_cast<double>(first - recording.left.begin()) / 48000.0 << '\n';
    return first == recording.left.end() ? 1 : 0;
}

} // namespace

int main(int count, char** texts) {
    const std::vector<std::string> words(texts + 1, texts + count);
    const std::string command = words.empty() ? "" : words[0];
    const auto number = [&](std::size_t word) { return std::strtod(words[word].c_str(), nullptr); };
    if (command == "list") {
        return List();
    }
    if (command == "play" && words.size() == 5) {
        return Play(number(1), number(2), number(3), static_cast<std::int64_t>(number(4)));
    }
    if (command == "calls") {
        return Calls();
    }
    if (command == "judge" && words.size() == 3) {
        return Judge(words[1], number(2));
    }
    if (command == "onset" && words.size() == 2) {
        return Onset(words[1]);
    }
    std::cerr << "list | play SECONDS PPM JITTER DEVICE | calls | judge FILE SECONDS"
                 " | onset FILE\n";
    return 2;
}
