#include "demo/Listening.h"

#include "demo/Link.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace larkspool::demo {
namespace {

using Messages = std::vector<std::string>;

// A client on a clock that moves when the test moves it.
class LinkTest : public ::testing::Test {
  protected:
    void Open(LinkKind kind, const LinkSettings& settings = {}) {
        link = std::make_unique<Link>(kind, SharedBand(), Antennas()[0], settings, now);
    }

    void Send(const std::string& text, std::uint8_t first = 0x82) {
        link->Receive(ClientFrame(text, first), now, utc);
    }

    void Pass(double seconds, double step = 0.01) {
        for (auto steps = std::lround(seconds / step); steps > 0; --steps) {
            now += Seconds(step);
            utc = utc.After(step);
            link->Tick(now, utc);
        }
    }

    // Takes all messages that may go out now, without their frame headers.
    Messages Take() {
        Messages messages;
        for (auto bytes = link->Output().Ready(now); !bytes.empty();
             bytes = link->Output().Ready(now)) {
            const std::ptrdiff_t header = bytes[1] == 126 ? 4 : 2;
            messages.emplace_back(bytes.begin() + header, bytes.end());
            link->Output().Consume(bytes.size());
        }
        return messages;
    }

    static auto Count(const Messages& messages, const std::string& text) {
        return std::ranges::count_if(
            messages, [&](const std::string& one) { return one.find(text) != std::string::npos; });
    }

    static int SequenceOf(const std::string& frame) { return static_cast<unsigned char>(frame[4]); }

    Messages StartListening(const LinkSettings& settings = {}) {
        Open(LinkKind::Sound, settings);
        Send("SET auth t=kiwi p=#");
        Send("SET AR OK in=12000 out=44100");
        Send("SET mod=usb low_cut=100 high_cut=2700 freq=10019.00");
        return Take();
    }

    std::unique_ptr<Link> link;
    TimePoint now = TimePoint{} + Seconds(1000.0);
    Moment utc = someTime;
};

TEST_F(LinkTest, SessionOpensStepByStep) {
    Open(LinkKind::Sound);
    for (const auto& [command, answer] :
         {std::pair{"SET keepalive", ""}, std::pair{"SET auth t=kiwi p=#", "MSG audio_init=0"},
          std::pair{"SET AR OK in=12000 out=44100", ""},
          std::pair{"SET mod=am low_cut=-5000 high_cut=5000 freq=10000", "MSG audio_rate=12000"}}) {
        Send(command);
        const Messages said = Take();
        EXPECT_EQ(said.empty() ? "" : said.back(), answer) << command;
        EXPECT_EQ(Count(said, "monitor") + Count(said, "too_busy"), 0) << command;
        Pass(0.1);
    }
    EXPECT_EQ(Count(Take(), "SND"), 2);
}

TEST_F(LinkTest, FramesKeepTheToldRate) {
    EXPECT_EQ(Count(StartListening({.rate = 12000.9}), "audio_rate=12000.9"), 1);
    std::size_t frames = 0;
    for (int i = 0; i < 20; ++i) {
        Pass(1.0);
        frames += Take().size();
    }
    EXPECT_EQ(frames, static_cast<std::size_t>(20.0 * 12000.9 / 512.0));
}

TEST(Command, ChangesWhatItNamesAndNothingElse) {
    Tuning tuning;
    for (const char* command :
         {"SET mod=usb low_cut=100 high_cut=2700 freq=10019.00",
          "SET agc=0 hang=1 thresh=-100 slope=4 decay=500 manGain=62", "SET squelch=12 param=0.2",
          "SET de_emp=2", "SET ident_user=A. Listener, mute=1 zoom=3",
          "SET mod=nonsense low_cut=x high_cut= freq=nan", "mute=1", "SET zoom= start=no"}) {
        Obey(command, tuning);
    }
    EXPECT_EQ(std::tuple(tuning.mode, tuning.khz, tuning.lowCut, tuning.highCut),
              std::tuple(Mode::Usb, 10019.0, 100.0, 2700.0));
    EXPECT_EQ(std::tuple(tuning.agc, tuning.manualGain, tuning.squelch, tuning.deEmphasis),
              std::tuple(false, 62.0, 12.0, 2));
    EXPECT_FALSE(tuning.muted || tuning.zoomed);
}

TEST_F(LinkTest, RowsComeAtTheAskedPaceOnceTheViewIsKnown) {
    Open(LinkKind::Waterfall);
    Send("SET auth t=kiwi p=#");
    Send("SET wf_speed=3");
    Pass(0.5);
    EXPECT_EQ(Count(Take(), "W/F"), 0);
    Send("SET zoom=11 start=5588305");
    for (const auto& [speed, rows] : {std::pair{3, 25}, std::pair{2, 5}, std::pair{1, 1}}) {
        Send("SET wf_speed=" + std::to_string(speed));
        Take();
        Pass(2.0);
        EXPECT_NEAR(static_cast<double>(Count(Take(), "W/F")), 2.0 * rows, 1.0) << speed;
    }
}

TEST_F(LinkTest, SlowReaderLosesFramesAndSeesTheGap) {
    StartListening();
    Pass(10.0);
    const auto late = Take();
    EXPECT_LE(late.size(), 48U);
    EXPECT_GE(late.size(), 44U);
    EXPECT_EQ(SequenceOf(late.back()), static_cast<int>(late.size()) - 1);
    Pass(0.1);
    EXPECT_GE(SequenceOf(Take().at(0)), 230);
}

TEST_F(LinkTest, ComputerThatSleptGoesOnWithThePresent) {
    StartListening();
    Pass(1.0);
    const auto before = static_cast<int>(Take().size());
    Pass(50.0, 50.0);
    EXPECT_LE(Take().size(), 2U);
    Pass(1.0);
    const auto after = Take();
    EXPECT_NEAR(static_cast<double>(after.size()), 23.0, 1.0);
    EXPECT_LE(SequenceOf(after.at(0)), before + 2);
}

TEST_F(LinkTest, JitterDelaysButKeepsTheOrder) {
    StartListening({.jitterSeconds = 0.3});
    int wanted = 0;
    std::size_t largestBunch = 0;
    for (int i = 0; i < 300; ++i) {
        Pass(0.01);
        const auto messages = Take();
        largestBunch = std::max(largestBunch, messages.size());
        for (const std::string& message : messages) {
            EXPECT_EQ(SequenceOf(message), wanted++);
        }
    }
    EXPECT_GT(wanted, 60);
    EXPECT_GE(largestBunch, 3U);
}

TEST_F(LinkTest, LinksAreCutInTime) {
    for (const auto& [what, dropAfter, seconds] :
         {std::tuple{"a silent client", 0.0, 60.0}, std::tuple{"an option", 5.0, 5.0}}) {
        Open(LinkKind::Sound, {.dropAfterSeconds = dropAfter});
        Pass(seconds - 0.5, 0.1);
        EXPECT_FALSE(link->IsCut(now)) << what;
        Pass(1.0, 0.1);
        EXPECT_TRUE(link->IsCut(now)) << what;
    }
}

TEST_F(LinkTest, BusyReceiverSaysSoInsteadOfStarting) {
    EXPECT_EQ(StartListening({.busy = true}), Messages{"MSG too_busy=4"});
    EXPECT_TRUE(link->IsEnding());
}

TEST_F(LinkTest, PingAndCloseAreAnsweredWithTheirPayload) {
    Open(LinkKind::Waterfall);
    for (const auto& [asked, answer] : {std::pair{0x89, 0x8A}, std::pair{0x88, 0x88}}) {
        EXPECT_FALSE(link->IsEnding());
        Send("are you there", static_cast<std::uint8_t>(asked));
        ASSERT_FALSE(link->Output().IsEmpty()) << asked;
        EXPECT_EQ(link->Output().Ready(now)[0], answer) << asked;
        EXPECT_EQ(Take(), Messages{"are you there"}) << asked;
    }
    EXPECT_TRUE(link->IsEnding());
}

} // namespace
} // namespace larkspool::demo
