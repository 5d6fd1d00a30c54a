#include "link/WebsocketsClass.h"
#include "support/ConsoleFixture.h"

#include <numeric>

namespace larkspool {
namespace {

// Frames, sound devices, volume.
class Hearing : public ConsoleFixture {
  protected:
    static std::vector<std::int16_t> Ramp(std::size_t count) {
        std::vector<std::int16_t> samples(count);
        std::iota(samples.begin(), samples.end(), std::int16_t{-50});
        return samples;
    }
    Strings TakeCalls() {
        desktop.Advance(0);
        return desktop.sound.TakeCalls();
    }
};

TEST_F(Hearing, TheFirstDeviceIsOpenedWithTheStoredVolume) {
    Start();
    EXPECT_EQ(TakeCalls(),
              (Strings{"BuildSoundDeviceList", "GetSoundDeviceInfo 0", "GetSoundDeviceInfo 1",
                       "GetSoundDeviceInfo 2", "StopSoundOutput", "StartSoundOutput 0 1"}));
    EXPECT_EQ(Console().SoundOutputPopupMenu.ListCount(), 2) << "inputs are not offered";
    Slider& volume = Console().OutputVolumeSlider;
    volume.Wheel(0, -360);
    EXPECT_EQ(volume.Value(), 997);
    app->prefsInvertScrollWheelPolarity = true;
    volume.Wheel(0, -240);
    EXPECT_EQ(volume.Value(), 999);
    TakeCalls();
    volume.SetValue(250);
    EXPECT_EQ(TakeCalls(), Strings{"setSoundOutputVolume 1"});
    Console().SoundOutputPopupMenu.mouseEnter();
    EXPECT_NE(desktop.toolTip, "");
    Console().SoundOutputPopupMenu.mouseExit();
    EXPECT_EQ(desktop.toolTip, "");
    Restart();
    const Strings calls = TakeCalls();
    EXPECT_EQ(calls.front(), "setSoundOutputVolume 1");
    EXPECT_EQ(calls.back(), "StartSoundOutput 0 0.25");
}

TEST_F(Hearing, TheChosenDeviceIsFoundAgainByItsName) {
    desktop.sound.devices = {{"Speakers"}, {"Microphone", 1, 0}, {"Headphones"}, {"Headphones"}};
    Start();
    Console().SoundOutputPopupMenu.Pick(1);
    desktop.sound.devices.insert(desktop.sound.devices.begin(), {"Television"});
    Restart();
    EXPECT_EQ(TakeCalls().back(), "StartSoundOutput 3 1") << "of two the last wins";
    desktop.sound.devices = {{"Television"}};
    Restart();
    EXPECT_EQ(TakeCalls().back(), "StartSoundOutput 0 1");
    desktop.sound.devices = {{"Microphone", 1, 0}};
    Restart();
    EXPECT_EQ(TakeCalls().back(), "GetSoundDeviceInfo 0") << "nothing to play on";
    EXPECT_EQ(Console().SoundOutputPopupMenu.ListIndex(), -1);
}

TEST_F(Hearing, AStreamIsPrimedWithASecondOfSilence) {
    Start();
    PressConnect();
    AcceptLinks();
    Upgrade();
    desktop.Advance(0.2);
    EXPECT_FALSE(Console().PushButtonRecord.Enabled()) << "before the rate is known";
    Stream("12000.9");
    Audio().Sound(0, Ramp(512));
    desktop.sound.TakeCalls();
    Audio().Message(" audio_rate=20250"); // a rate told again primes again
    EXPECT_EQ(TakeCalls(), (Strings{"OutputSoundBlock 512 12000", "OutputSoundBlock -999 20250",
                                    "OutputSoundBlock 20250 20250"}));
    std::vector<std::int16_t> heard(12000, 0);
    const auto frame = Ramp(512);
    heard.insert(heard.end(), frame.begin(), frame.end());
    heard.resize(heard.size() + 20250, 0);
    EXPECT_EQ(desktop.sound.played, heard);
    for (const char* rate : {"0", "nonsense", "-1", "0.5", "250001", "1e300"}) {
        Audio().Message(std::string(" audio_rate=") + rate);
        EXPECT_TRUE(TakeCalls().empty()) << rate;
    }
}

TEST_F(Hearing, AFloodOfFramesCutAnywhereIsHeardWholeAndPingsAreAnswered) {
    Start();
    ConnectAndStream();
    desktop.sound.played.clear();
    const auto frame = Ramp(20'000);
    std::string flood;
    for (std::uint32_t i = 0; i < 50; ++i) { // more than the ring holds
        flood += ServerFrame("SND" + SoundBody(i, frame));
        flood += ServerFrame(std::string(i % 2 == 0 ? 125 : 200, 'p'), 9);
    }
    const std::size_t pieces[] = {1, 2, 129, 5'000, 1'500'000};
    for (std::size_t at = 0, i = 0; at < flood.size(); at += pieces[i++ % std::size(pieces)]) {
        Audio().socket.Deliver(flood.substr(at, pieces[i % std::size(pieces)]));
        desktop.Advance(0);
    }
    ASSERT_EQ(desktop.sound.played.size(), 50 * frame.size());
    EXPECT_TRUE(std::equal(frame.begin(), frame.end(), desktop.sound.played.end() - 20'000));
    EXPECT_EQ(Audio().TakeCommands(), Strings(50, "PONG " + std::string(125, 'p')));
}

TEST_F(Hearing, ALinkIsKeptAliveEverySecondForAsLongAsItIsUp) {
    Start();
    WebsocketsClass closed(desktop, app->myRandom);
    closed.Init(Audio().socket);
    closed.Closing(); // it says no more, even if its socket is connected again
    for (int session = 0; session < 2; ++session) {
        ConnectAndStream();
        desktop.Advance(1);
        EXPECT_EQ(Audio().TakeRequest().substr(0, 6), "\x82\x8D\x32\x32\x32\x32");
        desktop.Advance(2);
        EXPECT_EQ(Audio().TakeCommands(), Strings(2, "SET keepalive"));
        Console().PushButtonDisconnect.Push();
        desktop.Advance(3);
    }
}

TEST_F(Hearing, LostRepeatedAndWrappedFramesAreNotedAndPlayed) {
    Start();
    ConnectAndStream();
    desktop.sound.TakeCalls();
    const Strings before = Log();
    for (const std::uint32_t sequence : {3U, 5U, 6U, 7U, 7U, 4294967295U, 0U}) {
        Audio().Sound(sequence, Ramp(4));
    }
    EXPECT_EQ(TakeCalls().size(), 7U);
    Strings log = Log();
    log.erase(log.begin(), log.begin() + static_cast<std::ptrdiff_t>(before.size()));
    EXPECT_EQ(log, (Strings{"Audio packet lost 3 5", "Audio packet lost 7 7",
                            "Audio packet lost 7 4294967295", "Audio packet lost 4294967295 0"}));
    ConnectAndStream();
    Audio().Sound(77, Ramp(4)); // a new connection starts its own count
    desktop.Advance(0);
    EXPECT_FALSE(LogHas("Audio packet lost 0 77"));
}

TEST_F(Hearing, ShortOddAndEmptyFramesAndTheMeter) {
    Start();
    desktop.Advance(0.1);
    EXPECT_EQ(Console().LabelSmeter.Text(), "-127 dBm 0 0");
    ConnectAndStream();
    Audio().Sound(9, Ramp(2), 1000, 7);
    TakeCalls();
    const std::string header = SoundBody(99, {}, 999, 99);
    for (std::size_t size = 0; size < header.size(); ++size) { // no room for it all: dropped
        Audio().Say("SND", header.substr(0, size));
    }
    Audio().Say("SND", SoundBody(10, {}, 1270, 3)); // a header alone still counts
    Audio().Say("SND", SoundBody(11, Ramp(3), 270, 4) + "x");
    Waterfall().Sound(12, Ramp(5)); // the waterfall link brings no sound
    desktop.Advance(0.1);
    EXPECT_EQ(TakeCalls(), (Strings{"OutputSoundBlock 0 12000", "OutputSoundBlock 3 12000"}));
    EXPECT_FALSE(LogHas("Audio packet lost 10 11"));
    EXPECT_EQ(Console().LabelSmeter.Text(), "-100 dBm 4 11");
    EXPECT_EQ(Console().ProgressBarSmeter.Value(), 150);
}

TEST_F(Hearing, AMissingFunctionIsNamedOnceAndTheSessionGoesOn) {
    desktop.sound.missing = {"OutputSoundBlock", "BuildSoundDeviceList", "setSoundOutputVolume"};
    Start();
    Console().OutputVolumeSlider.SetValue(250);
    EXPECT_TRUE(Console().Visible());
    ASSERT_EQ(desktop.boxes.size(), 2U);
    EXPECT_NE(desktop.boxes[0].find("BuildSoundDeviceList"), std::string::npos);
    EXPECT_NE(desktop.boxes[0].find("libtonebridge.so"), std::string::npos);
    EXPECT_EQ(Console().PopupMenuMode.Text(), "am");
    ConnectAndStream();
    EXPECT_EQ(desktop.boxes.size(), 3U);
    desktop.boxes.clear(); // read and closed
    for (std::uint32_t i = 0; i < 5; ++i) {
        Audio().Sound(i, Ramp(4), 540);
    }
    desktop.Advance(0.1);
    EXPECT_EQ(desktop.boxes, Strings{});
    EXPECT_EQ(Console().LabelSmeter.Text(), "-73 dBm 0 4");
    EXPECT_TRUE(Console().PushButtonRecord.Enabled());
}

} // namespace
} // namespace larkspool
