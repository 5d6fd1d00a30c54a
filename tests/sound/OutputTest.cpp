#include "tonebridge/OutputKeeper.h"
#include "tonebridge/SoundOutput.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <cstring>

namespace tonebridge::test {

namespace {

using std::chrono::milliseconds;
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
    constexpr std::uint32_t Untouched = 0xEEEEEEEE;
    using Fields = std::array<std::uint32_t, 7>;
    const std::pair<std::string, Fields> records[] = {
        {"Speakers", {0, 1, 2, 1, 0, 1, Untouched}}, // the default output is first
        {"Screen", {1, 0, 2, None, 1, 1, Untouched}},
        {"Monitor of Screen", {2, 2, 0, 0, None, 0, Untouched}},
        {"Microphone", {3, 2, 0, 2, None, 0, Untouched}}};
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
    EXPECT_FALSE(list.Output(2) || list.Output(-1) || list.Output(None));
    EXPECT_EQ(CutUtf8("\u20ac\u20ac", 5), "\u20ac") << "a name is cut between characters";
}

// A sound server whose devices come, go, fail and hang as the test says. It outlives every
// connection.
class FakeServer {
  public:
    struct World {
        Sides outputs{Side("main", "Speakers", true), Side("usb", "Headset")};
        bool isRunning = true;
        bool isHanging = false; // no call returns
        std::string broken{};   // can't be opened
    };

    void Become(World other) {
        const std::lock_guard lock(mutex);
        world = std::move(other);
        changed.notify_all();
    }
    std::string Playing() {
        const std::lock_guard lock(mutex);
        return playing;
    }
    // Waits until this device plays, or none for "".
    void WaitForPlaying(const std::string& id) {
        std::unique_lock lock(mutex);
        changed.wait(lock, [&] { return playing == id; });
    }
    // As the server does by itself, or its user.
    void MoveStream(const std::string& id) {
        const std::lock_guard lock(mutex);
        playing = id;
        changed.notify_all();
    }
    // The stream is lost, if it plays on this device.
    void Fail(const std::string& id) {
        if (Playing() == id) {
            client.load()->StreamFailed();
        }
    }
    std::vector<float> Render(std::size_t frames) {
        const std::lock_guard lock(mutex);
        std::vector<float> samples(2 * frames);
        client.load()->RenderStereo(samples);
        return samples;
    }
    std::unique_ptr<DeviceLayer> Connect() {
        ++attempts;
        return Ask().isRunning ? std::make_unique<Layer>(*this) : nullptr;
    }
    bool IsConnected() const { return connection.use_count() > 1; }

    std::atomic<int> attempts{0};
    std::atomic<std::uint32_t> openedRate{0};

  private:
    struct Stream : OutputStream {
        Stream(FakeServer& owner, bool isAsked) : server(owner), isHeard(isAsked) {}
        ~Stream() override {
            if (isHeard) {
                server.MoveStream("");
            }
        }
        std::string DeviceId() const override { return server.Playing(); }
        FakeServer& server;
        const bool isHeard;
    };
    struct Layer : DeviceLayer {
        explicit Layer(FakeServer& owner) : server(owner), connection(owner.connection) {}
        Sides ListOutputs() override { return server.Ask().outputs; }
        Sides ListInputs() override { return {Side("main.monitor", "Monitor of Speakers")}; }
        std::unique_ptr<OutputStream> Open(const std::string& id, std::uint32_t rate,
                                           StreamClient& played) override {
            if (server.Ask().broken == id) {
                return nullptr;
            }
            const bool isHeard = server.Playing().empty(); // any other is only tried
            EXPECT_TRUE(isHeard || server.client != &played) << "a second stream";
            if (isHeard) {
                server.client = &played;
                server.openedRate = rate;
                server.MoveStream(id);
            }
            return std::make_unique<Stream>(server, isHeard);
        }
        FakeServer& server;
        const std::shared_ptr<int> connection;
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
    std::atomic<StreamClient*> client{nullptr};
    const std::shared_ptr<int> connection = std::make_shared<int>(); // each layer has a copy
};

// The keeper on a virtual clock.
class KeeperTest : public ::testing::Test, public StreamClient {
  protected:
    void RenderStereo(std::span<float> samples) override { engine.Render(samples); }
    void StreamFailed() override { keeper.StreamFailed(); }

    void Choose(std::int64_t number) { keeper.Want(keeper.Scan().Output(number), now); }
    // What plays after so long, with the keeper called when it wants to be.
    std::string After(milliseconds time) {
        keeper.Tick(now);
        for (const auto end = now + time; now < end;) {
            const auto pause = keeper.NextTick(now).value_or(time);
            now = std::min<OutputKeeper::Time>(end, now + std::max(pause, Shortest));
            keeper.Tick(now);
        }
        return server.Playing();
    }

    static constexpr OutputKeeper::Time Shortest = milliseconds(1);
    const FakeServer::World noHeadset{
        .outputs = {Side("hdmi", "Screen"), Side("main", "Speakers", true)}};
    OutputKeeper::Time now{};
    Engine engine{[this] { return now.count(); }};
    FakeServer server;
    OutputKeeper keeper{engine, *this, [this] { return server.Connect(); }};
};

TEST_F(KeeperTest, ALostDeviceIsReplacedByTheDefaultOneUntilItIsThereAgain) {
    Choose(1);
    EXPECT_EQ(After(milliseconds(0)), "usb");
    After(milliseconds(5000));
    server.Become(noHeadset);
    server.Fail("usb");
    EXPECT_EQ(After(milliseconds(0)), "main");
    EXPECT_EQ(After(milliseconds(60000)), "main");
    server.Become({.outputs = {Side("new", "Headset"), Side("main", "Speakers", true),
                               Side("usb", "Headset")}});
    EXPECT_EQ(After(milliseconds(2400)), "usb") << "of two with one name, the same one";
    server.Become({.isRunning = false});
    server.Fail("usb");
    EXPECT_EQ(After(milliseconds(60000)), "");
    EXPECT_FALSE(server.IsConnected()) << "a layer is kept that plays nothing";
    server.Become({.outputs = {Side("main", "Speakers", true), Side("usb2", "Headset")}});
    EXPECT_EQ(After(milliseconds(1000)), "usb2") << "the same one under another id";
}

TEST_F(KeeperTest, AStreamThatTheServerHasMovedReturnsAndOneThatTheUserHasMovedStays) {
    Choose(1);
    After(milliseconds(5000));
    server.Become(noHeadset);
    server.MoveStream("main");
    EXPECT_EQ(After(milliseconds(5000)), "main");
    server.Become({});
    EXPECT_EQ(After(milliseconds(2400)), "usb");
    After(milliseconds(5000));
    server.MoveStream("main");
    EXPECT_EQ(After(milliseconds(60000)), "main");
}

TEST_F(KeeperTest, ADeviceThatCantBeOpenedGivesWayAfterThreeAttempts) {
    server.Become({.broken = "usb"});
    Choose(1);
    EXPECT_EQ(After(milliseconds(1900)), "");
    EXPECT_EQ(After(milliseconds(200)), "main");
    EXPECT_EQ(After(milliseconds(60000)), "main");
    server.Become({});
    EXPECT_EQ(After(milliseconds(2400)), "usb");
}

TEST_F(KeeperTest, WithoutADeviceItLooksOnceASecondAndTheSoundStaysLive) {
    server.Become({.outputs = {}});
    keeper.Want(Device{}, now);
    const std::vector<std::int16_t> block(12000);
    engine.Push(12000, block.data(), 12000);
    for (int tenth = 0; tenth < 1000; ++tenth) {
        engine.Push(1200, block.data(), 12000);
        EXPECT_EQ(After(milliseconds(100)), "");
    }
    EXPECT_NEAR(server.attempts, 100, 1);
    EXPECT_NEAR(engine.Fill(), 1.0, 0.1);
    EXPECT_EQ(engine.Underruns() + engine.DroppedSamples(), 0U);
    server.Become({});
    EXPECT_EQ(After(milliseconds(1000)), "main");
    EXPECT_FALSE(keeper.NextTick(now)) << "it wakes up, and has nothing to return to";
}

TEST_F(KeeperTest, AStreamIsClosedOnlyWhenItHasFadedOut) {
    Choose(1);
    After(milliseconds(0));
    Choose(0);
    EXPECT_EQ(After(milliseconds(300)), "usb");
    EXPECT_EQ(After(milliseconds(100)), "main");
    keeper.Want(std::nullopt, now);
    EXPECT_EQ(After(milliseconds(300)), "main");
    EXPECT_EQ(After(milliseconds(100)), "");
}

TEST_F(KeeperTest, ADeviceIsOpenedAtItsRateUpTo48000) {
    const std::pair<std::uint32_t, std::uint32_t> rates[] = {
        {192000, 48000}, {48000, 48000}, {44100, 44100}, {8000, 44100}, {0, 48000}};
    for (const auto& [preferred, opened] : rates) {
        server.Become({.outputs = {{"main", "Speakers", 2, preferred, true}}});
        Choose(0);
        After(milliseconds(400));
        EXPECT_EQ(server.openedRate, opened) << preferred;
    }
}

// On threads, as the program uses it. A call that waits for ever ends as a test that does.
class OutputTest : public ::testing::Test {
  protected:
    DeviceList Scan() { return output->Scan(std::chrono::hours(1)); }

    std::atomic<std::int64_t> clock{0};
    std::shared_ptr<Engine> engine = std::make_shared<Engine>([this] { return clock.load(); });
    FakeServer server;
    std::unique_ptr<SoundOutput> output =
        std::make_unique<SoundOutput>(engine, [this] { return server.Connect(); });
};

TEST_F(OutputTest, AServerThatComesLateOrHangsHoldsNothingUp) {
    server.Become({.isRunning = false});
    EXPECT_TRUE(Scan().Devices().empty());
    server.Become({});
    server.WaitForPlaying("main"); // without being asked again
    server.Become({.isHanging = true});
    EXPECT_TRUE(output->Scan(milliseconds(1)).Devices().empty());
    output->Start(std::nullopt);
    output->Stop();
    server.Become({});
    const DeviceList list = Scan();
    EXPECT_EQ(list.Devices().size(), 3U);
    output->Start(list.Output(1));
    server.WaitForPlaying("usb");
    const std::vector<std::int16_t> block(19200, 16384);
    engine->Push(19200, block.data(), 12000);
    server.Render(64);
    clock += 1'000'000'000; // the device has filled its buffers
    const std::vector<float> sound = server.Render(24000);
    EXPECT_NEAR(sound[sound.size() / 2], 0.5, 0.01);
    for (std::size_t i = 0; i < sound.size(); i += 2) {
        ASSERT_EQ(sound[i], sound[i + 1]) << "the two sides differ";
    }
    server.Become({.outputs = {Side("main", "Speakers", true)}});
    server.Fail("usb");
    server.WaitForPlaying("main");
}

TEST_F(OutputTest, ChangesOfDeviceLeaveNothingBehind) {
    const DeviceList list = Scan();
    for (int cycle = 0; cycle < 300; ++cycle) {
        output->Stop();
        output->Start(list.Output(cycle % 3));
        if (cycle % 99 == 0) {
            server.WaitForPlaying("main");
            server.Render(64);
        }
        server.Fail(cycle % 5 == 0 ? "main" : "usb");
    }
    output->Start(std::nullopt);
    server.WaitForPlaying("main");
    output.reset(); // the process may end while sound plays
    EXPECT_FALSE(server.IsConnected());
}

} // namespace

} // namespace tonebridge::test
