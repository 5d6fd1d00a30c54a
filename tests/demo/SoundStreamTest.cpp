#include "demo/SharedBand.h"

#include "demo/SoundStream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <span>
#include <string>
#include <vector>

namespace larkspool::demo {
namespace {

constexpr double Rate = 12000.0;

Tuning TunedTo(double khz, Mode mode, double low, double high) {
    Tuning tuning;
    tuning.khz = khz;
    tuning.mode = mode;
    tuning.lowCut = low;
    tuning.highCut = high;
    return tuning;
}

SoundStream Stream(const Tuning& tuning, const Antenna& antenna = Antennas()[0]) {
    SoundStream stream(SharedBand(), antenna, Rate);
    stream.Tune(tuning);
    return stream;
}

// The samples of so many seconds of frames from a moment on, as a client reads them.
std::vector<double> Listen(SoundStream& stream, const Moment& from, double seconds) {
    std::vector<double> samples;
    constexpr double frameSeconds = SoundStream::SamplesPerFrame / Rate;
    const auto frames = std::lround(std::ceil(seconds / frameSeconds));
    for (long number = 0; number < frames; ++number) {
        const auto frame = stream.Frame(from.After(static_cast<double>(number) * frameSeconds));
        for (std::size_t i = 10; i < frame.size(); i += 2) {
            samples.push_back(static_cast<std::int16_t>(frame[i] << 8 | frame[i + 1]));
        }
    }
    return samples;
}

// The amplitude of one frequency in the samples, through a soft window.
double AmplitudeAt(std::span<const double> samples, double hertz) {
    std::complex<double> sum{};
    const auto count = static_cast<double>(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto at = static_cast<double>(i);
        const double window = 1.0 - std::cos(Turn * at / count);
        sum += samples[i] * window * std::polar(1.0, -Turn * hertz * at / Rate);
    }
    return 2.0 * std::abs(sum) / count;
}

// The frequency from 50 Hz to 5 kHz that is strongest, to 5 Hz.
double StrongestHertz(std::span<const double> samples) {
    double best = 0.0;
    double strongest = 0.0;
    for (int step = 10; step <= 1000; ++step) {
        const double hertz = 5.0 * step;
        if (const double amplitude = AmplitudeAt(samples, hertz); amplitude > strongest) {
            strongest = amplitude;
            best = hertz;
        }
    }
    return best;
}

TEST(Antennas, HearTheSameStationDifferently) {
    constexpr double decibels[] = {0.0, 1.5, -0.4, -5.3, -15.3, -5.7, -14.1};
    for (std::size_t i = 0; i < Antennas().size(); ++i) {
        auto stream = Stream(TunedTo(10020.0, Mode::Am, -2500.0, 2500.0), Antennas()[i]);
        stream.Frame(someTime);
        EXPECT_NEAR(stream.SMeter(), -70.0 + decibels[i], 0.2) << Antennas()[i].name;
    }
}

TEST(SoundStream, TimeStationIsASteadyToneOf1000HzAnywhereInTheMinute) {
    auto stream = Stream(TunedTo(10000.0, Mode::Am, -5000.0, 5000.0));
    // Across the full minute with its long pip.
    for (const std::int64_t second : {1'700'000'010, 1'700'000'038, 1'700'000'041}) {
        const auto samples = Listen(stream, {second, 0.0}, 3.0);
        const std::span early(samples.data() + 12000, 4800);
        EXPECT_DOUBLE_EQ(StrongestHertz(early), 1000.0) << second;
        // Half of the carrier's level, the peak of both being at half of full scale; less of it
        // where the long pip is.
        const double level = AmplitudeAt(samples, 1000.0) / (16384.0 / 1.5 * 0.5);
        EXPECT_GT(level, 0.7) << second;
        EXPECT_LT(level, 1.16) << second;
        EXPECT_GT(AmplitudeAt(samples, 1000.0), 3.0 * AmplitudeAt(samples, 2000.0)) << second;
    }
}

TEST(SoundStream, EachModeSoundsAsItShould) {
    struct Case {
        Mode mode;
        double khz, low, high, heard, within, least, most;
    };
    // A carrier that is off tune gives its beat note; the synchronous modes hold one that is off
    // by 30 Hz; a held note is as loud as its deviation.
    for (const Case& one :
         {Case{Mode::Usb, 10019.0, 100.0, 2700.0, 1000.0, 0.0, 13000.0, 17000.0},
          Case{Mode::Lsb, 10021.5, -2700.0, -100.0, 1500.0, 0.0, 13000.0, 17000.0},
          Case{Mode::Cw, 10019.5, 300.0, 700.0, 500.0, 0.0, 13000.0, 17000.0},
          Case{Mode::Cwn, 10019.485, 470.0, 530.0, 515.0, 0.0, 13000.0, 17000.0},
          Case{Mode::Usn, 10018.25, 100.0, 2400.0, 1750.0, 0.0, 13000.0, 17000.0},
          Case{Mode::Sam, 10000.03, -4900.0, 4900.0, 1000.0, 0.0, 5000.0, 6200.0},
          Case{Mode::Sal, 10000.03, -4900.0, 0.0, 1000.0, 0.0, 3100.0, 4000.0},
          Case{Mode::Sau, 9999.97, 0.0, 4900.0, 1000.0, 0.0, 3100.0, 4000.0},
          Case{Mode::Nbfm, 29600.0, -6000.0, 6000.0, 785.0, 6.0, 5500.0, 8500.0}}) {
        SCOPED_TRACE(one.khz);
        auto stream = Stream(TunedTo(one.khz, one.mode, one.low, one.high));
        const auto samples = Listen(stream, {1'700'000'010, 0.1}, 0.8);
        const std::span settled(samples.data() + 4800, 4800);
        EXPECT_NEAR(StrongestHertz(settled), one.heard, one.within);
        const double amplitude = AmplitudeAt(settled, one.heard);
        EXPECT_GT(amplitude, one.least);
        EXPECT_LT(amplitude, one.most);
    }
}

TEST(SoundStream, FrameHasItsNumberAndThePowerInThePassband) {
    struct Case {
        const char* what;
        double khz, low, high, dbm;
    };
    for (const Case& one : {Case{"a carrier", 10020.0, -2500.0, 2500.0, -70.0},
                            Case{"a modulated one", 10000.0, -2500.0, 2500.0, -59.5},
                            Case{"noise alone", 10105.0, -5000.0, 5000.0, -114.6},
                            Case{"a carrier outside", 10021.0, 100.0, 5000.0, -117.7}}) {
        auto stream = Stream(TunedTo(one.khz, Mode::Am, one.low, one.high));
        for (int i = 0; i < 0x102; ++i) {
            stream.SkipFrame();
        }
        const auto frame = stream.Frame(someTime);
        ASSERT_EQ(frame.size(), 10U + 1024U);
        EXPECT_EQ(std::string(frame.begin(), frame.begin() + 8), std::string("SND\0\2\1\0\0", 8));
        EXPECT_NEAR((frame[8] << 8 | frame[9]) * 0.1 - 127.0, one.dbm, 0.3) << one.what;
    }
}

TEST(SoundStream, SquelchedSoundIsTheFillerAndMutedSoundIsSilence) {
    const auto allAre = [](const std::vector<double>& samples, double value) {
        return std::ranges::count(samples, value) == std::ssize(samples);
    };
    Tuning tuning = TunedTo(10105.0, Mode::Am, -5000.0, 5000.0);
    tuning.squelch = 10.0;
    tuning.squelchTail = 0.5;
    auto stream = Stream(tuning);
    EXPECT_TRUE(allAre(Listen(stream, someTime, 0.5), 1.0));
    tuning.khz = 10020.0;
    stream.Tune(tuning);
    const auto loud = Listen(stream, someTime.After(0.5), 0.5);
    EXPECT_LT(std::ranges::count(loud, 1.0), std::ssize(loud) / 10);
    tuning.muted = true;
    stream.Tune(tuning);
    EXPECT_TRUE(allAre(Listen(stream, someTime.After(1.0), 0.2), 0.0));
    tuning.muted = false;
    tuning.khz = 10105.0;
    stream.Tune(tuning);
    const auto after = Listen(stream, someTime.After(1.2), 1.0);
    const auto filler = std::search_n(after.begin(), after.end(), 512, 1.0);
    EXPECT_NEAR(static_cast<double>(filler - after.begin()) / Rate, 0.5, 0.1) << "the tail";
}

TEST(SoundStream, LoudnessFollowsTheUsersSettings) {
    const std::tuple<const char*, double> cases[] = {
        {"SET agc=0 manGain=50", -20.0},
        {"SET agc=0 manGain=58", -12.0},
        {"SET agc=1", -6.6},
        {"SET agc=1 slope=10", -7.0},
        {"SET thresh=-50", -25.4},
        {"SET de_emp=1", -9.2}, // one pole at 2122 Hz
    };
    for (const auto& [command, wanted] : cases) {
        Tuning tuning = TunedTo(10018.0, Mode::Usb, 100.0, 2700.0);
        Obey(command, tuning);
        auto stream = Stream(tuning);
        const double heard = AmplitudeAt(Listen(stream, someTime, 0.3), 2000.0);
        EXPECT_NEAR(20.0 * std::log10(heard / 32767.0), wanted, 0.2) << command;
    }
}

TEST(SoundStream, RetuningDoesNotClick) {
    Tuning tuning = TunedTo(10105.0, Mode::Am, -5000.0, 5000.0);
    tuning.agc = false;
    tuning.manualGain = 40.0;
    auto stream = Stream(tuning);
    Listen(stream, someTime, 0.2);
    tuning.khz = 10020.0;
    stream.Tune(tuning);
    const auto [lowest, highest] = std::ranges::minmax(Listen(stream, someTime.After(0.2), 0.2));
    constexpr double carrier = 32767.0 * 0.0316;
    EXPECT_LT(std::max(-lowest, highest), carrier / 20.0);
}

TEST(SoundStream, BeaconSendsMorseThatCanBeRead) {
    constexpr std::size_t dot = 720;    // samples, 60 ms
    constexpr std::size_t middle = 496; // of a dot, late by the filter's delay
    auto stream = Stream(TunedTo(14099.5, Mode::Cw, 300.0, 700.0));
    const auto samples = Listen(stream, {someTime.second, 0.0}, 20.0);
    std::string keying;
    for (std::size_t at = middle; at + dot < samples.size(); at += dot) {
        keying += AmplitudeAt(std::span(samples).subspan(at, 240), 500.0) > 7500.0 ? '=' : ' ';
    }
    EXPECT_NE(keying.find("= = = ===   = = = ===   = = = ===       === = =   =       "
                          "= === = =   = ===   = === =   === = ===       "),
              std::string::npos)
        << keying;
}

} // namespace
} // namespace larkspool::demo
