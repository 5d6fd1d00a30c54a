#include "tonebridge/SoundOutput.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <cstring>
#include <filesystem>
#include <thread>

namespace tonebridge::test {

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;
using Sides = std::vector<DeviceSide>;

DeviceSide Side(const std::string& id, const std::string& name, bool isDefault = false,
                std::uint32_t channels = 2) {
    return {id, name, channels, 48000, isDefault};
}

TEST(DeviceList, JoinsTheTwoSidesOfADeviceAndCountsOutputsInItsOrder) {
    const DeviceList list({Side("hdmi", "Screen"), Side("card", "Speakers", true),
                           Side("broken", "No channels", false, 0)},
                          {Side("hdmi.monitor", "Monitor of Screen"),
                           Side("card", "Speakers", false, 1), Side("mic", "Microphone")});
    constexpr std::uint32_t None = Device::None;
    using Fields = std::array<std::uint32_t, 7>;
    const std::pair<std::string, Fields> records[] = {
        {"Speakers", {0, 1, 2, 1, 0, 1, 0xEEEEEEEE}}, // the default output stands first
        {"Screen", {1, 0, 2, None, 1, 1, 0xEEEEEEEE}},
        {"Monitor of Screen", {2, 2, 0, 0, None, 0, 0xEEEEEEEE}},
        {"Microphone", {3, 2, 0, 2, None, 0, 0xEEEEEEEE}}};
    std::vector<std::byte> info(1024, std::byte{0xEE});
    std::vector<std::byte> name(1024);
    for (std::int64_t index = 0; const auto& [text, expected] : records) {
        list.Describe(index++, info, name);
        list.Describe(-1, info, name);
        list.Describe(4, info, name);
        Fields fields{};
        std::memcpy(fields.data(), info.data(), sizeof fields);
        EXPECT_EQ(fields, expected) << text;
        EXPECT_EQ(reinterpret_cast<const char*>(name.data()), text);
    }
    EXPECT_EQ(list.Output(1).value_or(Device{}).name, "Screen");
    for (const std::int64_t number : {-1, 2, 3}) {
        EXPECT_FALSE(list.Output(number)) << number;
    }
}

TEST(DeviceList, CutsANameWithoutBreakingACharacter) {
    const std::string euros = "\xE2\x82\xAC\xE2\x82\xAC";
    EXPECT_EQ(CutUtf8(euros, 6), euros);
    for (const std::size_t size : {3U, 4U, 5U}) {
        EXPECT_EQ(CutUtf8(euros, size), "\xE2\x82\xAC") << size;
    }
}

TEST(DeviceList, FindsAChosenOutputAgainByItsName) {
    const Sides outputs{Side("new1", "Headset"), Side("main", "Speakers", true),
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

// A sound server that tests furnish: its devices come, go, fail and stall when the test says so.
// It outlives every connection.
class FakeServer {
  public:
    // What whoever asks it finds; while it hangs, nobody gets an answer.
    struct World {
        Sides outputs{Side("main", "Speakers", true), Side("usb", "Headset")};
        Sides inputs{Side("main.monitor", "Monitor of Speakers")};
        bool isRunning = true;
        bool canOpen = true;
        bool isHanging = false;
    };

    void Become(World other) {
        const std::lock_guard lock(mutex);
        world = std::move(other);
        changed.notify_all();
    }
    // Waits for this device to play, or none for "".
    bool WaitForPlaying(const std::string& id) {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, std::chrono::seconds(10), [&] { return playing == id; });
    }
    // The stream is lost, if it plays on this device.
    void Fail(const std::string& id) {
        const std::lock_guard lock(mutex);
        if (playing == id) {
            client->StreamFailed();
        }
    }
    std::vector<float> Render(std::size_t frames) {
        const std::lock_guard lock(mutex);
        std::vector<float> samples(2 * frames);
        client->RenderStereo(samples);
        return samples;
    }
    std::unique_ptr<DeviceLayer> Connect() {
        ++attempts;
        return Ask().isRunning ? std::make_unique<Layer>(*this) : nullptr;
    }

    std::atomic<int> connections{0};
    std::atomic<int> attempts{0};

  private:
    struct Stream : OutputStream {
        explicit Stream(FakeServer& owner) : server(owner) {}
        Stream(const Stream&) = delete;
        Stream& operator=(const Stream&) = delete;
        ~Stream() override {
            const std::lock_guard lock(server.mutex);
            server.playing.clear();
            server.changed.notify_all();
        }
        FakeServer& server;
    };
    struct Layer : DeviceLayer {
        explicit Layer(FakeServer& owner) : server(owner) { ++server.connections; }
        Layer(const Layer&) = delete;
        Layer& operator=(const Layer&) = delete;
        ~Layer() override { --server.connections; }
        Sides ListOutputs() override { return server.Ask().outputs; }
        Sides ListInputs() override { return server.Ask().inputs; }
        std::unique_ptr<OutputStream> Open(const std::string& id, std::uint32_t /*rate*/,
                                           StreamClient& played) override {
            if (!server.Ask().canOpen) {
                return nullptr;
            }
            const std::lock_guard lock(server.mutex);
            EXPECT_EQ(server.playing, "") << "a second stream";
            server.playing = id;
            server.client = &played;
            server.changed.notify_all();
            return std::make_unique<Stream>(server);
        }
        FakeServer& server;
    };

    World Ask() {
        std::unique_lock lock(mutex);
        changed.wait(lock, [&] { return !world.isHanging; });
        return world;
    }

    std::mutex mutex;
    std::condition_variable changed;
    World world;
    std::string playing;
    StreamClient* client = nullptr;
};

class OutputTest : public ::testing::Test {
  protected:
    static void ExpectWithin(int bound, const std::function<void()>& call) {
        const auto before = Clock::now();
        call();
        EXPECT_LT(Clock::now() - before, milliseconds(bound));
    }
    DeviceList Scan() { return output->Scan(milliseconds(5000)); }
    void Push() { engine->Push(120, block.data(), 12000); } // 10 ms

    const std::vector<std::int16_t> block = std::vector<std::int16_t>(120, 16384);
    std::shared_ptr<Engine> engine = std::make_shared<Engine>(
        [] { return std::chrono::nanoseconds(Clock::now().time_since_epoch()).count(); });
    FakeServer server;
    std::unique_ptr<SoundOutput> output =
        std::make_unique<SoundOutput>(engine, [this] { return server.Connect(); });
};

TEST_F(OutputTest, TheChosenDevicePlaysTheSameOnBothSides) {
    output->Start(Scan().Output(1));
    ASSERT_TRUE(server.WaitForPlaying("usb"));
    for (int i = 0; i < 160; ++i) {
        Push();
    }
    const std::vector<float> sound = server.Render(24000);
    EXPECT_NEAR(sound[sound.size() / 2], 0.5, 0.01);
    for (std::size_t i = 0; i < sound.size(); i += 2) {
        ASSERT_EQ(sound[i], sound[i + 1]);
    }
}

TEST_F(OutputTest, ALostDeviceIsReplacedByTheDefaultOneAndThatOneFoundAgain) {
    output->Start(Scan().Output(1));
    ASSERT_TRUE(server.WaitForPlaying("usb"));
    server.Become({.outputs = {Side("other", "Screen"), Side("main", "Speakers", true)}});
    server.Fail("usb");
    EXPECT_TRUE(server.WaitForPlaying("main"));
    server.Become({.outputs = {}});
    server.Fail("main");
    ASSERT_TRUE(server.WaitForPlaying(""));
    std::this_thread::sleep_for(milliseconds(300));
    server.Become({.outputs = {Side("main2", "Speakers", true)}});
    ExpectWithin(2000, [&] { EXPECT_TRUE(server.WaitForPlaying("main2")); });
}

TEST_F(OutputTest, WithoutADeviceItIsTriedOnceASecondAndTheSoundStaysLive) {
    server.Become({.canOpen = false});
    output->Start(std::nullopt);
    for (const auto until = Clock::now() + milliseconds(2500); Clock::now() < until;) {
        Push();
        std::this_thread::sleep_for(milliseconds(10));
    }
    EXPECT_GE(server.attempts, 2);
    EXPECT_LE(server.attempts, 4);
    EXPECT_EQ(server.connections, 0) << "a layer is kept that plays nothing";
    EXPECT_GT(engine->Fill(), 0.2);
    EXPECT_LT(engine->Fill(), 1.6);
    EXPECT_EQ(engine->DroppedSamples(), 0U);
    server.Become({});
    EXPECT_TRUE(server.WaitForPlaying("main"));
}

TEST_F(OutputTest, ASoundServerThatHangsOrIsNotThereHoldsNobodyUp) {
    for (const bool hangs : {true, false}) {
        SCOPED_TRACE(hangs ? "hangs" : "not there");
        server.Become({.isRunning = hangs, .isHanging = hangs});
        ExpectWithin(1500, [&] { EXPECT_TRUE(output->Scan(milliseconds(300)).Devices().empty()); });
        ExpectWithin(500, [&] { output->Start(std::nullopt); });
        ExpectWithin(500, [&] { output->Stop(); });
        server.Become({});
        EXPECT_EQ(Scan().Devices().size(), 3U);
    }
    ExpectWithin(500, [&] { output.reset(); });
}

std::size_t CountOf(const char* folder) {
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

TEST_F(OutputTest, AThousandChangesOfDeviceLeaveNothingBehind) {
    const DeviceList list = Scan();
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
    output->Start(std::nullopt);
    ASSERT_TRUE(server.WaitForPlaying("main"));
    output.reset(); // the process may end while sound plays
    EXPECT_EQ(server.connections, 0);
}

} // namespace

} // namespace tonebridge::test
