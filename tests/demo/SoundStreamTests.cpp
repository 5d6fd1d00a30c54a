#include "demo/Listening.h"

#include "demo/Morse.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace larkspool::demo {
namespace {

class SoundStreamTest : public ::testing::Test {
  protected:
    SoundStream Stream(const Tuning& tuning, std::size_t antenna = 0, double rate = 12000.0) {
        SoundStream stream(SharedBand(), Antennas()[antenna], rate);
        stream.Tune(tuning);
        return stream;
    }
};

TEST_F(SoundStreamTest, TimeStationIsASteadyToneOf1000HzAnywhereInTheMinute) {
    auto stream = Stream(TunedTo(10000.0, Mode::Am, -5000.0, 5000.0));
    std::vector<double> levels;
    // Across the full minute with its long pip.
    for (const std::int64_t second : {1'700'000'010, 1'700'000'038, 1'700'000'041}) {
        const auto samples = Listen(stream, {second, 0.0}, 3.0);
        const std::span early(samples.data() + 12000, 4800);
        EXPECT_DOUBLE_EQ(StrongestHertz(early), 1000.0) << second;
        EXPECT_GT(AmplitudeAt(samples, 1000.0), 3.0 * AmplitudeAt(samples, 2000.0)) << second;
        levels.push_back(AmplitudeAt(samples, 1000.0));
    }
    const auto [lowest, highest] = std::ranges::minmax(levels);
    EXPECT_LT(highest, 1.35 * lowest);
    // Half of the carrier's level, the peak of both being at half of full scale.
    EXPECT_NEAR(levels[0], 16384.0 / 1.5 * 0.5, 900.0);
}

TEST_F(SoundStreamTest, CarrierOffTuneGivesItsBeatNoteInEveryMode) {
    struct Case {
        Mode mode;
        double khz, low, high, heard;
    };
    for (const Case& one : {Case{Mode::Usb, 10019.0, 100.0, 2700.0, 1000.0},
                            Case{Mode::Lsb, 10021.5, -2700.0, -100.0, 1500.0},
                            Case{Mode::Cw, 10019.5, 300.0, 700.0, 500.0},
                            Case{Mode::Cwn, 10019.485, 470.0, 530.0, 515.0},
                            Case{Mode::Usn, 10018.25, 100.0, 2400.0, 1750.0}}) {
        auto stream = Stream(TunedTo(one.khz, one.mode, one.low, one.high));
        const auto samples = Listen(stream, someTime, 0.4);
        EXPECT_DOUBLE_EQ(StrongestHertz(samples), one.heard) << one.khz;
        EXPECT_NEAR(AmplitudeAt(samples, one.heard), 15000.0, 2000.0) << one.khz;
    }
}

TEST_F(SoundStreamTest, CarrierOutsideThePassbandIsNotHeard) {
    auto inside = Stream(TunedTo(10019.0, Mode::Usb, 100.0, 2700.0));
    auto outside = Stream(TunedTo(10021.0, Mode::Usb, 100.0, 2700.0));
    Listen(inside, someTime, 0.1);
    Listen(outside, someTime, 0.1);
    EXPECT_LT(outside.SMeter(), inside.SMeter() - 40.0);
}

TEST_F(SoundStreamTest, MeterReadsTheCarriersLevelOnTheWireToo) {
    for (const auto& [khz, dbm] : {std::pair{10020.0, -70.0}, std::pair{10000.0, -59.5}}) {
        auto stream = Stream(TunedTo(khz, Mode::Am, -2500.0, 2500.0));
        const auto frame = stream.Frame(someTime);
        const double told = (frame[8] << 8 | frame[9]) * 0.1 - 127.0;
        EXPECT_NEAR(told, dbm, 0.3) << khz;
        EXPECT_NEAR(told, stream.SMeter(), 0.06) << khz;
    }
}

TEST_F(SoundStreamTest, FrameHasItsFieldsInTheirByteOrders) {
    auto stream = Stream(TunedTo(10020.0, Mode::Am, -5000.0, 5000.0));
    for (int i = 0; i < 0x102; ++i) {
        stream.SkipFrame();
    }
    const auto frame = stream.Frame(someTime);
    ASSERT_EQ(frame.size(), 10U + 1024U);
    EXPECT_EQ(std::string(frame.begin(), frame.begin() + 3), "SND");
    EXPECT_EQ(std::vector<int>(frame.begin() + 4, frame.begin() + 8), (std::vector{2, 1, 0, 0}));
}

TEST_F(SoundStreamTest, SquelchedSoundIsTheFillerUntilASignalComes) {
    Tuning tuning = TunedTo(10105.0, Mode::Am, -5000.0, 5000.0);
    tuning.squelch = 10.0;
    auto stream = Stream(tuning);
    const auto quiet = Listen(stream, someTime, 0.5);
    EXPECT_TRUE(std::ranges::all_of(quiet, [](double sample) { return sample == 1.0; }));
    tuning.khz = 10020.0;
    stream.Tune(tuning);
    const auto loud = Listen(stream, someTime.After(0.5), 0.5);
    const auto fillers = std::ranges::count(loud, 1.0);
    EXPECT_LT(fillers, std::ssize(loud) / 10);
    EXPECT_FALSE(stream.IsSquelched());
}

TEST_F(SoundStreamTest, SquelchStaysOpenForItsTail) {
    Tuning tuning = TunedTo(10020.0, Mode::Am, -5000.0, 5000.0);
    tuning.squelch = 10.0;
    tuning.squelchTail = 0.5;
    auto stream = Stream(tuning);
    Listen(stream, someTime, 0.2);
    tuning.khz = 10105.0;
    stream.Tune(tuning);
    const auto after = Listen(stream, someTime.After(0.2), 1.0);
    const auto closed = std::ranges::find_if(after, [](double sample) { return sample == 1.0; });
    const auto firstFiller = std::search_n(after.begin(), after.end(), 512, 1.0);
    ASSERT_NE(closed, after.end());
    EXPECT_NEAR(static_cast<double>(firstFiller - after.begin()) / 12000.0, 0.5, 0.1);
}

TEST_F(SoundStreamTest, GainIsTheUsersWithoutAgc) {
    Tuning tuning = TunedTo(10019.0, Mode::Usb, 100.0, 2700.0);
    tuning.agc = false;
    std::vector<double> amplitudes;
    for (const double gain : {50.0, 56.0206}) {
        tuning.manualGain = gain;
        auto stream = Stream(tuning);
        amplitudes.push_back(AmplitudeAt(Listen(stream, someTime, 0.3), 1000.0));
    }
    EXPECT_NEAR(amplitudes[0], 32767.0 * 0.1, 50.0);
    EXPECT_NEAR(amplitudes[1] / amplitudes[0], 2.0, 0.02);
}

TEST_F(SoundStreamTest, WeakerThanTheThresholdIsQuieter) {
    Tuning tuning = TunedTo(10019.0, Mode::Usb, 100.0, 2700.0);
    auto even = Stream(tuning);
    tuning.threshold = -50.0;
    auto held = Stream(tuning);
    const double loud = AmplitudeAt(Listen(even, someTime, 0.3), 1000.0);
    EXPECT_NEAR(20.0 * std::log10(AmplitudeAt(Listen(held, someTime, 0.3), 1000.0) / loud), -18.8,
                0.5);
}

TEST_F(SoundStreamTest, MutedIsSilenceAndNotTheFiller) {
    Tuning tuning = TunedTo(10000.0, Mode::Am, -5000.0, 5000.0);
    tuning.muted = true;
    auto stream = Stream(tuning);
    const auto samples = Listen(stream, someTime, 0.2);
    EXPECT_TRUE(std::ranges::all_of(samples, [](double sample) { return sample == 0.0; }));
}

TEST_F(SoundStreamTest, SynchronousModesHoldACarrierThatIsOffTune) {
    for (const auto& [mode, low, high] :
         {std::tuple{Mode::Sam, -4900.0, 4900.0}, std::tuple{Mode::Sal, -4900.0, 0.0},
          std::tuple{Mode::Sau, 0.0, 4900.0}}) {
        const double off = mode == Mode::Sau ? -0.03 : 0.03;
        auto stream = Stream(TunedTo(10000.0 + off, mode, low, high));
        const auto samples = Listen(stream, {1'700'000'010, 0.1}, 0.8);
        const std::span settled(samples.data() + 4800, 4800);
        EXPECT_DOUBLE_EQ(StrongestHertz(settled), 1000.0);
    }
}

TEST_F(SoundStreamTest, DeEmphasisTakesTheHeightsDown) {
    Tuning tuning = TunedTo(10017.5, Mode::Usb, 100.0, 2700.0);
    auto flat = Stream(tuning);
    tuning.deEmphasis = 1;
    auto dulled = Stream(tuning);
    const double change = AmplitudeAt(Listen(dulled, someTime, 0.3), 2500.0) /
                          AmplitudeAt(Listen(flat, someTime, 0.3), 2500.0);
    EXPECT_NEAR(20.0 * std::log10(change), -3.3, 0.8); // one pole at 2122 Hz
}

TEST_F(SoundStreamTest, FrequencyModulationIsAsLoudAsItsDeviation) {
    auto stream = Stream(TunedTo(29600.0, Mode::Nbfm, -6000.0, 6000.0));
    const auto samples = Listen(stream, {1'700'000'016, 0.05}, 0.4); // within a held note
    const double hertz = StrongestHertz(samples);
    EXPECT_NEAR(hertz, 523.0, 6.0);
    const auto [lowest, highest] = std::ranges::minmax(samples);
    EXPECT_GT(highest, 5000.0);
    EXPECT_LT(highest, 17500.0); // 2500 of 5000 Hz, and some noise
}

TEST_F(SoundStreamTest, TwoClientsOnOneFrequencyHearTheSame) {
    const Tuning tuning = TunedTo(9580.0, Mode::Am, -5000.0, 5000.0);
    auto first = Stream(tuning);
    auto second = Stream(tuning);
    EXPECT_EQ(Listen(first, someTime, 0.2), Listen(second, someTime, 0.2));
}

TEST_F(SoundStreamTest, RetuningDoesNotClick) {
    Tuning tuning = TunedTo(10105.0, Mode::Am, -5000.0, 5000.0);
    tuning.agc = false;
    tuning.manualGain = 40.0;
    auto stream = Stream(tuning);
    Listen(stream, someTime, 0.2);
    tuning.khz = 10020.0;
    stream.Tune(tuning);
    const auto samples = Listen(stream, someTime.After(0.2), 0.2);
    for (const double sample : samples) {
        ASSERT_LT(std::abs(sample), 32767.0 * 0.0316 * 0.05); // a twentieth of the carrier
    }
}

// Reads keying back from sound: a dot is 60 ms at 20 words a minute.
std::string ReadMorse(std::span<const double> samples, double hertz, double unitSeconds) {
    const auto window = static_cast<std::size_t>(unitSeconds / 6.0 * 12000.0);
    std::vector<double> levels;
    for (std::size_t at = 0; at + window <= samples.size(); at += window) {
        levels.push_back(AmplitudeAt(samples.subspan(at, window), hertz));
    }
    const double threshold = *std::ranges::max_element(levels) / 2.0;
    std::string text;
    std::string code;
    for (std::size_t at = 0; at < levels.size();) {
        const bool down = levels[at] > threshold;
        std::size_t end = at;
        while (end < levels.size() && (levels[end] > threshold) == down) {
            ++end;
        }
        const double units = static_cast<double>(end - at) / 6.0;
        if (down) {
            code += units > 2.0 ? '-' : '.';
        } else if (units > 2.0) {
            for (char letter = 'A'; letter <= 'Z'; ++letter) {
                if (!code.empty() && MorseCode(letter) == code) {
                    text += letter;
                }
            }
            if (units > 5.0) {
                text += ' ';
            }
            code.clear();
        }
        at = end;
    }
    return text;
}

TEST_F(SoundStreamTest, BeaconSendsMorseThatCanBeRead) {
    auto stream = Stream(TunedTo(14099.5, Mode::Cw, 300.0, 700.0));
    const auto samples = Listen(stream, someTime, 20.0);
    EXPECT_NE(ReadMorse(samples, 500.0, 0.06).find("VVV DE LARK "), std::string::npos)
        << ReadMorse(samples, 500.0, 0.06);
}

} // namespace
} // namespace larkspool::demo
