#include "sound/FakeDevices.h"
#include "tonebridge/SoundOutput.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <numbers>
#include <thread>

namespace tonebridge::test {

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

DeviceSide Side(const std::string& id, const std::string& name, bool isDefault = false,
                std::uint32_t channels = 2) {
    return {id, name, channels, 48000, isDefault};
}

TEST(DeviceList, JoinsTheTwoSidesOfADeviceAndCountsOutputsInItsOrder) {
    const DeviceList list({Side("hdmi", "Screen"), Side("card", "Speakers", true),
                           Side("broken", "No channels", false, 0)},
                          {Side("hdmi.monitor", "Monitor of Screen"),
                           Side("card", "Speakers", false, 1), Side("mic", "Microphone")});
    const auto devices = list.Devices();
    ASSERT_EQ(devices.size(), 4U);
    EXPECT_EQ(devices[0].name, "Speakers") << "the default output stands first";
    EXPECT_EQ(devices[0].inputChannels, 1U);
    EXPECT_EQ(devices[0].outputChannels, 2U);
    EXPECT_EQ(devices[2].name, "Monitor of Screen");
    EXPECT_EQ(devices[2].outputChannels, 0U) << "a monitor is an input only";
    ASSERT_TRUE(list.Output(1));
    EXPECT_EQ(list.Output(1)->name, "Screen");
    for (const std::int64_t number : {-1, 2, 3}) {
        EXPECT_FALSE(list.Output(number)) << number;
    }
}

TEST(DeviceList, FillsTheRecordsAsTheProgramReadsThem) {
    const DeviceList list({Side("a", "Speakers")}, {Side("b", "Mic", false, 1)});
    std::vector<std::byte> info(1024, std::byte{0xEE});
    std::vector<std::byte> name(1024, std::byte{0xEE});
    list.Describe(1, info, name);
    std::array<std::uint32_t, 7> fields{};
    std::memcpy(fields.data(), info.data(), sizeof fields);
    EXPECT_EQ(fields, (std::array<std::uint32_t, 7>{1, 1, 0, 0, Device::None, 0, 0xEEEEEEEE}));
    EXPECT_STREQ(reinterpret_cast<const char*>(name.data()), "Mic");
    for (const std::int64_t index : {-1, 2}) {
        list.Describe(index, info, name);
        EXPECT_STREQ(reinterpret_cast<const char*>(name.data()), "Mic") << index;
    }
}

TEST(DeviceList, CutsANameWithoutBreakingACharacter) {
    const std::string euro = "\xE2\x82\xAC";
    for (std::size_t lead = 0; lead < 3; ++lead) {
        std::string text(lead, 'x');
        while (text.size() < 1030) {
            text += euro;
        }
        const std::string cut = CutUtf8(text, 1023);
        EXPECT_EQ(cut.size(), lead + (1023 - lead) / 3 * 3);
        EXPECT_EQ(cut, text.substr(0, cut.size()));
    }
    EXPECT_EQ(CutUtf8("short", 1023), "short");
}

TEST(DeviceList, FindsAChosenOutputAgainByItsName) {
    const std::vector<DeviceSide> outputs{Side("new1", "Headset"), Side("main", "Speakers", true),
                                          Side("new2", "Headset")};
    const auto found = [&](const std::string& id, const std::string& name) {
        const DeviceSide* const side = FindOutput(outputs, Device{.id = id, .name = name});
        return side != nullptr ? side->id : "none";
    };
    EXPECT_EQ(found("old", "Headset"), "new1");
    EXPECT_EQ(found("new2", "Headset"), "new2") << "of two with one name, the same one";
    EXPECT_EQ(found("gone", "Gone"), "main");
    EXPECT_EQ(FindOutput({}, Device{}), nullptr);
}

class OutputTest : public ::testing::Test {
  protected:
    OutputTest() {
        server.SetOutputs({Side("main", "Speakers", true), Side("usb", "Headset")});
        server.SetInputs({Side("main.monitor", "Monitor of Speakers")});
    }

    static void ExpectAtOnce(const std::function<void()>& call) {
        const auto before = Clock::now();
        call();
        EXPECT_LT(Clock::now() - before, milliseconds(500));
    }

    void Push(double seconds) {
        for (std::size_t i = 0; i < static_cast<std::size_t>(seconds * 100.0); ++i) {
            engine->Push(120, block.data(), 12000);
        }
    }

    const std::vector<std::int16_t> block = std::vector<std::int16_t>(120, 16384);
    std::shared_ptr<Engine> engine = std::make_shared<Engine>(
        [] { return std::chrono::nanoseconds(Clock::now().time_since_epoch()).count(); });
    FakeServer server;
    std::unique_ptr<SoundOutput> output = std::make_unique<SoundOutput>(engine, server.Factory());
};

TEST_F(OutputTest, TheChosenDevicePlaysTheSameOnBothSides) {
    const DeviceList list = output->Scan(milliseconds(5000));
    ASSERT_EQ(list.Devices().size(), 3U);
    output->Start(list.Output(1));
    ASSERT_TRUE(server.WaitForPlaying("usb"));
    Push(1.6);
    const std::vector<float> sound = server.Render(24000);
    EXPECT_NEAR(sound[sound.size() / 2], 0.5, 0.01);
    for (std::size_t i = 0; i < sound.size(); i += 2) {
        ASSERT_EQ(sound[i], sound[i + 1]);
    }
    output->Stop();
    EXPECT_TRUE(server.WaitForPlaying(""));
}

TEST_F(OutputTest, ALostDeviceIsReplacedByTheDefaultOne) {
    const DeviceList list = output->Scan(milliseconds(5000));
    output->Start(list.Output(1));
    ASSERT_TRUE(server.WaitForPlaying("usb"));
    server.SetOutputs({Side("main", "Speakers", true)});
    server.Fail("usb");
    EXPECT_TRUE(server.WaitForPlaying("main"));
}

TEST_F(OutputTest, AnOutputThatComesBackIsFoundWithinTwoSeconds) {
    const DeviceList list = output->Scan(milliseconds(5000));
    output->Start(list.Output(0));
    ASSERT_TRUE(server.WaitForPlaying("main"));
    server.SetOutputs({});
    server.Fail("main");
    ASSERT_TRUE(server.WaitForPlaying(""));
    std::this_thread::sleep_for(milliseconds(300));
    server.SetOutputs({Side("main2", "Speakers", true)});
    const auto before = Clock::now();
    EXPECT_TRUE(server.WaitForPlaying("main2"));
    EXPECT_LT(Clock::now() - before, milliseconds(2000));
}

TEST_F(OutputTest, ADeviceThatWontOpenIsTriedOnceASecond) {
    server.SetOpening(false);
    output->Start(std::nullopt);
    std::this_thread::sleep_for(milliseconds(2500));
    EXPECT_GE(server.Attempts(), 2);
    EXPECT_LE(server.Attempts(), 4);
    server.SetOpening(true);
    EXPECT_TRUE(server.WaitForPlaying("main"));
}

TEST_F(OutputTest, WithoutADeviceTheSoundStaysLive) {
    server.SetRunning(false);
    output->Start(std::nullopt);
    Push(1.5);
    const auto until = Clock::now() + milliseconds(1200);
    while (Clock::now() < until) {
        engine->Push(120, block.data(), 12000);
        std::this_thread::sleep_for(milliseconds(10));
    }
    EXPECT_GT(engine->Fill(), 0.2);
    EXPECT_LT(engine->Fill(), 1.6);
    EXPECT_EQ(engine->DroppedSamples(), 0U);
}

TEST_F(OutputTest, ASoundServerThatHangsHoldsNobodyUp) {
    server.SetHanging(true);
    const auto before = Clock::now();
    EXPECT_TRUE(output->Scan(milliseconds(300)).Devices().empty());
    EXPECT_LT(Clock::now() - before, milliseconds(1500));
    ExpectAtOnce([&] { output->Start(std::nullopt); });
    ExpectAtOnce([&] { output->Stop(); });
    ExpectAtOnce([&] { Push(1.0); });
    server.SetHanging(false);
    EXPECT_EQ(output->Scan(milliseconds(5000)).Devices().size(), 3U);
}

TEST_F(OutputTest, WithoutASoundServerEveryCallReturnsAtOnce) {
    server.SetRunning(false);
    ExpectAtOnce([&] { EXPECT_TRUE(output->Scan(milliseconds(5000)).Devices().empty()); });
    ExpectAtOnce([&] { output->Stop(); });
    ExpectAtOnce([&] { output->Start(std::nullopt); });
    ExpectAtOnce([&] { output.reset(); });
}

std::size_t CountOf(const char* folder) {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder)) {
        ++count;
    }
    return count;
}

TEST_F(OutputTest, AThousandChangesOfDeviceLeaveNothingBehind) {
    const DeviceList list = output->Scan(milliseconds(5000));
    const std::size_t files = CountOf("/proc/self/fd");
    const std::size_t threads = CountOf("/proc/self/task");
    for (int cycle = 0; cycle < 1000; ++cycle) {
        output->Stop();
        output->Start(list.Output(cycle % 3));
        if (cycle % 2 == 0) {
            ASSERT_TRUE(server.WaitForPlaying(cycle % 3 == 1 ? "usb" : "main")) << cycle;
            server.Render(64);
        }
        if (cycle % 5 == 0) {
            server.Fail("main");
        }
    }
    output->Stop();
    ASSERT_TRUE(server.WaitForPlaying(""));
    EXPECT_EQ(CountOf("/proc/self/fd"), files);
    EXPECT_EQ(CountOf("/proc/self/task"), threads);
    output.reset();
    EXPECT_EQ(server.Connections(), 0);
}

TEST_F(OutputTest, TheProcessMayEndWhileSoundPlays) {
    output->Start(std::nullopt);
    ASSERT_TRUE(server.WaitForPlaying("main"));
    output.reset();
    EXPECT_TRUE(server.Playing().empty());
    EXPECT_EQ(server.Connections(), 0);
}

} // namespace

} // namespace tonebridge::test
