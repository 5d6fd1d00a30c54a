#include "demo/Listening.h"

#include "demo/Link.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace larkspool::demo {
namespace {

constexpr const char* mod = "SET mod=usb low_cut=100 high_cut=2700 freq=10019.00";

// A client on a clock that moves when the test moves it.
class LinkTest : public ::testing::Test {
  protected:
    void Open(LinkKind kind, const LinkSettings& settings = {}) {
        link = std::make_unique<Link>(kind, SharedBand(), Antennas()[0], settings, now);
    }

    void Send(const std::string& text, std::uint8_t first = 0x82) {
        std::vector<std::uint8_t> frame{
            first, static_cast<std::uint8_t>(0x80 + text.size()), '2', '2', '2', '2'};
        for (const char character : text) {
            frame.push_back(static_cast<std::uint8_t>(character ^ '2'));
        }
        link->Receive(frame, now, utc);
    }

    void Pass(double seconds, double step = 0.01) {
        for (auto steps = std::lround(seconds / step); steps > 0; --steps) {
            now += Seconds(step);
            utc = utc.After(step);
            link->Tick(now, utc);
        }
    }

    // Takes all messages that may go out now, without their frame headers.
    std::vector<std::string> Take() {
        std::vector<std::string> messages;
        for (auto bytes = link->Output().Ready(now); !bytes.empty();
             bytes = link->Output().Ready(now)) {
            const std::size_t header = bytes[1] == 126 ? 4 : 2;
            messages.emplace_back(bytes.begin() + static_cast<std::ptrdiff_t>(header), bytes.end());
            link->Output().Consume(bytes.size());
        }
        return messages;
    }

    static std::size_t Count(const std::vector<std::string>& messages, const std::string& text) {
        return static_cast<std::size_t>(std::ranges::count_if(
            messages, [&](const std::string& one) { return one.find(text) != std::string::npos; }));
    }

    void StartListening() {
        Send("SET auth t=kiwi p=#");
        Send("SET AR OK in=12000 out=44100");
        Send(mod);
        Take();
    }

    std::unique_ptr<Link> link;
    TimePoint now = TimePoint{} + Seconds(1000.0);
    Moment utc = someTime;
};

TEST_F(LinkTest, SessionOpensStepByStep) {
    Open(LinkKind::Sound);
    Send("SET keepalive");
    Pass(0.2);
    EXPECT_TRUE(Take().empty());
    Send("SET auth t=kiwi p=#");
    auto said = Take();
    EXPECT_EQ(Count(said, "audio_init="), 1U);
    EXPECT_EQ(Count(said, "audio_rate="), 0U);
    EXPECT_EQ(Count(said, "monitor") + Count(said, "too_busy"), 0U);
    Send("SET AR OK in=12000 out=44100");
    Pass(0.2);
    EXPECT_TRUE(Take().empty());
    Send(mod);
    said = Take();
    ASSERT_EQ(said.size(), 1U);
    EXPECT_EQ(said[0], "MSG audio_rate=12000");
    Pass(0.1);
    EXPECT_EQ(Count(Take(), "SND"), 2U);
}

TEST_F(LinkTest, FramesKeepTheToldRate) {
    LinkSettings settings;
    settings.rate = 12000.9;
    Open(LinkKind::Sound, settings);
    Send("SET auth t=kiwi p=#");
    Send("SET AR OK in=12000 out=44100");
    Send(mod);
    EXPECT_EQ(Count(Take(), "audio_rate=12000.9"), 1U);
    std::size_t frames = 0;
    for (int i = 0; i < 20; ++i) {
        Pass(1.0);
        frames += Take().size();
        Send("SET keepalive");
    }
    EXPECT_EQ(frames, static_cast<std::size_t>(20.0 * 12000.9 / 512.0));
}

TEST_F(LinkTest, CommandsChangeWhatTheyNameAndNothingElse) {
    Open(LinkKind::Sound);
    StartListening();
    Send("SET agc=0 hang=1 thresh=-100 slope=4 decay=500 manGain=62");
    Send("SET squelch=12 param=0.2");
    Send("SET de_emp=2");
    Send("SET ident_user=A. Listener & co");
    Send("SET mod=nonsense low_cut=x high_cut= freq=nan");
    Send("keepalive");
    const Tuning& tuning = link->CurrentTuning();
    EXPECT_EQ(tuning.mode, Mode::Usb);
    EXPECT_DOUBLE_EQ(tuning.khz, 10019.0);
    EXPECT_DOUBLE_EQ(tuning.lowCut, 100.0);
    EXPECT_DOUBLE_EQ(tuning.highCut, 2700.0);
    EXPECT_FALSE(tuning.agc);
    EXPECT_TRUE(tuning.hang);
    EXPECT_DOUBLE_EQ(tuning.threshold, -100.0);
    EXPECT_DOUBLE_EQ(tuning.manualGain, 62.0);
    EXPECT_DOUBLE_EQ(tuning.squelch, 12.0);
    EXPECT_DOUBLE_EQ(tuning.squelchTail, 0.2);
    EXPECT_EQ(tuning.deEmphasis, 2);
    EXPECT_EQ(tuning.identity, "A. Listener & co");
}

TEST_F(LinkTest, RowsComeAtTheAskedPaceOnceTheViewIsKnown) {
    Open(LinkKind::Waterfall);
    Send("SET auth t=kiwi p=#");
    Send("SET wf_speed=3");
    Pass(0.5);
    EXPECT_EQ(Count(Take(), "W/F"), 0U);
    Send("SET maxdb=0 mindb=-200");
    Send("SET zoom=11 start=5588305");
    for (const auto& [speed, rows] : {std::pair{3, 25}, std::pair{2, 5}, std::pair{1, 1}}) {
        Send("SET wf_speed=" + std::to_string(speed));
        Take();
        Pass(2.0);
        EXPECT_NEAR(static_cast<double>(Count(Take(), "W/F")), 2.0 * rows, 1.0) << speed;
    }
}

TEST_F(LinkTest, SlowReaderLosesFramesAndSeesTheGap) {
    Open(LinkKind::Sound);
    StartListening();
    Pass(10.0);
    const auto late = Take();
    EXPECT_LE(late.size(), 48U);
    EXPECT_GE(late.size(), 44U);
    Pass(0.1);
    const auto next = Take();
    ASSERT_FALSE(next.empty());
    const int sequence = static_cast<unsigned char>(next[0][4]);
    EXPECT_GE(sequence, 230);
    EXPECT_EQ(static_cast<unsigned char>(late.back()[4]), late.size() - 1);
}

TEST_F(LinkTest, ComputerThatSleptGoesOnWithThePresent) {
    Open(LinkKind::Sound);
    StartListening();
    Pass(1.0);
    const std::size_t before = Take().size();
    Pass(50.0, 50.0);
    EXPECT_LE(Take().size(), 2U);
    Pass(1.0);
    const auto after = Take();
    EXPECT_NEAR(static_cast<double>(after.size()), 23.0, 1.0);
    EXPECT_LE(static_cast<unsigned char>(after[0][4]), before + 2U);
}

TEST_F(LinkTest, JitterDelaysButKeepsTheOrder) {
    LinkSettings settings;
    settings.jitterSeconds = 0.3;
    Open(LinkKind::Sound, settings);
    StartListening();
    int wanted = 0;
    std::size_t largestBunch = 0;
    for (int i = 0; i < 300; ++i) {
        Pass(0.01);
        const auto messages = Take();
        largestBunch = std::max(largestBunch, messages.size());
        for (const std::string& message : messages) {
            EXPECT_EQ(static_cast<unsigned char>(message[4]), wanted++);
        }
    }
    EXPECT_GT(wanted, 60);
    EXPECT_GE(largestBunch, 3U);
}

TEST_F(LinkTest, LinksEndWhenTheyShould) {
    Open(LinkKind::Sound);
    Pass(59.0, 1.0);
    EXPECT_FALSE(link->IsCut(now));
    Pass(2.0, 1.0);
    EXPECT_TRUE(link->IsCut(now));

    LinkSettings settings;
    settings.dropAfterSeconds = 5.0;
    Open(LinkKind::Sound, settings);
    Pass(4.9);
    EXPECT_FALSE(link->IsCut(now));
    Pass(0.2);
    EXPECT_TRUE(link->IsCut(now));

    Open(LinkKind::Sound);
    Send("bye", 0x88);
    EXPECT_TRUE(link->IsEnding());
    EXPECT_EQ(Take(), std::vector<std::string>{"bye"});
}

TEST_F(LinkTest, BusyReceiverSaysSoInsteadOfStarting) {
    LinkSettings settings;
    settings.busy = true;
    Open(LinkKind::Sound, settings);
    Send("SET auth t=kiwi p=#");
    const auto said = Take();
    ASSERT_EQ(said.size(), 1U);
    EXPECT_TRUE(said[0].starts_with("MSG too_busy="));
    EXPECT_TRUE(link->IsEnding());
}

TEST_F(LinkTest, PingIsAnsweredWithItsPayload) {
    Open(LinkKind::Waterfall);
    Send("are you there", 0x89);
    const auto bytes = link->Output().Ready(now);
    ASSERT_FALSE(bytes.empty());
    EXPECT_EQ(bytes[0], 0x8A);
    EXPECT_EQ(Take(), std::vector<std::string>{"are you there"});
}

} // namespace
} // namespace larkspool::demo
