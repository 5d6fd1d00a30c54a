#include "support/ConsoleFixture.h"

#include <numeric>

namespace larkspool {
namespace {

// Frames, sound devices, volume.
class Hearing : public ConsoleFixture {
  protected:
    using Calls = std::vector<std::string>;

    static std::vector<std::int16_t> Ramp(std::size_t count) {
        std::vector<std::int16_t> samples(count);
        std::iota(samples.begin(), samples.end(), std::int16_t{-50});
        return samples;
    }
};

TEST_F(Hearing, TheFirstDeviceIsOpenedWithTheStoredVolume) {
    Start();
    EXPECT_EQ(desktop.sound.TakeCalls(),
              (Calls{"BuildSoundDeviceList", "GetSoundDeviceInfo 0", "GetSoundDeviceInfo 1",
                     "GetSoundDeviceInfo 2", "StopSoundOutput", "StartSoundOutput 0 1"}));
    EXPECT_EQ(Console().SoundOutputPopupMenu.ListCount(), 2) << "inputs are not offered";
    Console().OutputVolumeSlider.SetValue(250);
    EXPECT_EQ(desktop.sound.TakeCalls(), (Calls{"setSoundOutputVolume 1"}));
    Restart();
    const Calls calls = desktop.sound.TakeCalls();
    EXPECT_EQ(calls.front(), "setSoundOutputVolume 1");
    EXPECT_EQ(calls.back(), "StartSoundOutput 0 0.25");
}

TEST_F(Hearing, TheChosenDeviceIsFoundAgainByItsName) {
    desktop.sound.devices = {{"Speakers"}, {"Microphone", 1, 0}, {"Headphones"}, {"Headphones"}};
    Start();
    Console().SoundOutputPopupMenu.Pick(1);
    desktop.sound.devices.insert(desktop.sound.devices.begin(), {"Television"});
    Restart();
    EXPECT_EQ(desktop.sound.TakeCalls().back(), "StartSoundOutput 3 1") << "of two the last wins";
    desktop.sound.devices = {{"Television"}};
    Restart();
    EXPECT_EQ(desktop.sound.TakeCalls().back(), "StartSoundOutput 0 1");
}

TEST_F(Hearing, WithoutAnOutputDeviceNothingIsPlayedAndNothingBreaks) {
    desktop.sound.devices = {{"Microphone", 1, 0}};
    Start();
    EXPECT_EQ(Console().SoundOutputPopupMenu.ListIndex(), -1);
    ConnectAndStream();
    Audio().Sound(0, Ramp(10));
    desktop.Advance(0);
    EXPECT_EQ(desktop.sound.TakeCalls().back(), "OutputSoundBlock 10 12000");
}

TEST_F(Hearing, AStreamIsPrimedWithASecondOfSilence) {
    Start();
    PressConnect();
    AcceptLinks();
    Upgrade();
    Stream("12000.9");
    Audio().Sound(0, Ramp(512));
    desktop.sound.TakeCalls();
    Audio().Message(" audio_rate=20250"); // a rate told again primes again
    desktop.Advance(0);
    EXPECT_EQ(desktop.sound.TakeCalls(),
              (Calls{"OutputSoundBlock 512 12000", "OutputSoundBlock -999 20250",
                     "OutputSoundBlock 20250 20250"}));
    std::vector<std::int16_t> heard(12000, 0);
    const auto frame = Ramp(512);
    heard.insert(heard.end(), frame.begin(), frame.end());
    heard.resize(heard.size() + 20250, 0);
    EXPECT_EQ(desktop.sound.played, heard);
}

TEST_F(Hearing, OnlyRatesThatCanBeArePrimed) {
    Start();
    ConnectAndStream();
    desktop.sound.TakeCalls();
    for (const char* rate : {"0", "nonsense", "-1", "0.5", "250001", "1e300"}) {
        Audio().Message(std::string(" audio_rate=") + rate);
        desktop.Advance(0);
        EXPECT_TRUE(desktop.sound.TakeCalls().empty()) << rate;
    }
    Audio().Message(" audio_rate=250000");
    desktop.Advance(0);
    EXPECT_EQ(desktop.sound.TakeCalls().back(), "OutputSoundBlock 250000 250000");
}

TEST_F(Hearing, LostRepeatedAndWrappedFramesAreNotedAndPlayed) {
    Start();
    ConnectAndStream();
    desktop.sound.TakeCalls();
    for (const std::uint32_t sequence : {3U, 5U, 6U, 7U, 7U, 4294967295U, 0U}) {
        Audio().Sound(sequence, Ramp(4));
    }
    desktop.Advance(0);
    EXPECT_EQ(desktop.sound.TakeCalls().size(), 7U);
    std::vector<std::string> lost;
    for (const std::string& row : Log()) {
        if (row.rfind("Audio packet lost ", 0) == 0) {
            lost.push_back(row.substr(18));
        }
    }
    EXPECT_EQ(lost, (std::vector<std::string>{"3 5", "7 7", "7 4294967295", "4294967295 0"}));
    ConnectAndStream();
    Audio().Sound(77, Ramp(4)); // a new connection starts its own count
    desktop.Advance(0);
    EXPECT_FALSE(LogHas("Audio packet lost 0 77"));
}

TEST_F(Hearing, ShortOddAndEmptyFrames) {
    Start();
    ConnectAndStream();
    Audio().Sound(9, Ramp(2), 1000, 7);
    desktop.Advance(0);
    desktop.sound.TakeCalls();
    const std::string header = SoundBody(99, {}, 999, 99);
    for (std::size_t size = 0; size < header.size(); ++size) { // no room for it all: dropped
        Audio().Say("SND", header.substr(0, size));
    }
    Audio().Say("SND", SoundBody(10, {}, 1270, 3)); // a header alone still counts
    Audio().Say("SND", SoundBody(11, Ramp(3), 270, 4) + "x");
    Waterfall().Sound(12, Ramp(5)); // the waterfall link brings no sound
    desktop.Advance(0.1);
    EXPECT_EQ(desktop.sound.TakeCalls(),
              (Calls{"OutputSoundBlock 0 12000", "OutputSoundBlock 3 12000"}));
    EXPECT_EQ(Console().LabelSmeter.Text(), "-100 dBm 4 11");
    EXPECT_EQ(Console().ProgressBarSmeter.Value(), 150);
    EXPECT_FALSE(LogHas("Audio packet lost 10 11"));
}

TEST_F(Hearing, TheMeterKeepsItsLastReading) {
    Start();
    desktop.Advance(0.1);
    EXPECT_EQ(Console().LabelSmeter.Text(), "-127 dBm 0 0");
    EXPECT_EQ(Console().ProgressBarSmeter.Value(), 15);
    ConnectAndStream();
    Audio().Sound(1, {}, 540, 0);
    desktop.Advance(0.1);
    EXPECT_EQ(Console().LabelSmeter.Text(), "-73 dBm 0 1");
    EXPECT_EQ(Console().ProgressBarSmeter.Value(), 285);
    Console().PushButtonDisconnect.Push();
    desktop.Advance(5);
    EXPECT_EQ(Console().LabelSmeter.Text(), "-73 dBm 0 1");
    ConnectAndStream();
    Audio().Sound(1, {}, 65535, 0); // beyond the bar
    desktop.Advance(0.1);
    EXPECT_GT(Console().ProgressBarSmeter.Value(), Console().ProgressBarSmeter.maximum);
}

TEST_F(Hearing, AMissingFunctionIsNamedOnceAndTheSessionGoesOn) {
    desktop.sound.missing = {"OutputSoundBlock", "BuildSoundDeviceList", "setSoundOutputVolume"};
    Start();
    Console().OutputVolumeSlider.SetValue(250);
    Restart();
    EXPECT_TRUE(Console().Visible());
    ASSERT_EQ(desktop.boxes.size(), 2U);
    EXPECT_NE(desktop.boxes[0].find("BuildSoundDeviceList"), std::string::npos);
    EXPECT_NE(desktop.boxes[0].find("libtonebridge.so"), std::string::npos);
    EXPECT_EQ(Console().PopupMenuMode.Text(), "am");
    ConnectAndStream();
    for (std::uint32_t i = 0; i < 5; ++i) {
        Audio().Sound(i, Ramp(4), 540);
    }
    desktop.Advance(0.1);
    EXPECT_EQ(desktop.boxes.size(), 3U);
    EXPECT_EQ(Console().LabelSmeter.Text(), "-73 dBm 0 4");
    EXPECT_TRUE(Console().PushButtonRecord.Enabled());
}

TEST_F(Hearing, TheVolumeFollowsTheWheelAndShowsItsTip) {
    Start();
    Console().OutputVolumeSlider.mouseEnter();
    EXPECT_EQ(desktop.toolTip, "Output sound volume");
    Console().OutputVolumeSlider.mouseExit();
    EXPECT_EQ(desktop.toolTip, "");
    Console().OutputVolumeSlider.Wheel(0, -360);
    EXPECT_EQ(Console().OutputVolumeSlider.Value(), 997);
    app->prefsInvertScrollWheelPolarity = true;
    Console().OutputVolumeSlider.Wheel(0, -240);
    EXPECT_EQ(Console().OutputVolumeSlider.Value(), 999);
    Console().OutputVolumeSlider.Wheel(0, -2400);
    EXPECT_EQ(Console().OutputVolumeSlider.Value(), 1000);
}

TEST_F(Hearing, MuteIsTheReceivers) {
    Start();
    ConnectAndStream();
    Console().SetMute(true);
    Console().SetMute(false);
    EXPECT_EQ(Audio().TakeCommands(), (Calls{"SET mute=1", "SET mute=0"}));
}

} // namespace
} // namespace larkspool
