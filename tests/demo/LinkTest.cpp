#include "demo/SharedBand.h"

#include "demo/Link.h"
#include "demo/WebSocketFrame.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace larkspool::demo {
namespace {

using Bytes = std::vector<std::uint8_t>;

// A frame as a client sends it, masked; the first byte says what kind it is.
Bytes ClientFrame(std::string_view text, std::uint8_t first = 0x82) {
    constexpr std::uint8_t key[] = {0x37, 0xFA, 0x21, 0x3D};
    const Bytes payload(text.begin(), text.end());
    auto frame = EncodeFrame(Opcode::Binary, payload);
    frame.resize(frame.size() - payload.size());
    frame[0] = first;
    frame[1] |= 0x80;
    frame.insert(frame.end(), key, key + 4);
    for (std::size_t i = 0; i < payload.size(); ++i) {
        frame.push_back(payload[i] ^ key[i % 4]);
    }
    return frame;
}

TEST(FrameReader, FramesInPiecesOfAnySizeAreDeliveredOnce) {
    const std::string longText(300, 'x');
    Bytes stream{0x82, 0x7F, 0, 0, 0, 0, 0, 0, 0, 3, 'f', 'a', 'r'};
    for (const Bytes& frame :
         {ClientFrame("SET keepalive"), ClientFrame(longText), ClientFrame("SET mod", 0x01),
          ClientFrame("still there?", 0x89), ClientFrame("=am", 0x80), ClientFrame("")}) {
        stream.insert(stream.end(), frame.begin(), frame.end());
    }
    const std::vector<std::string> wanted{"far",          "SET keepalive", longText,
                                          "still there?", "SET mod=am",    ""};
    for (const std::size_t pieceSize : {1U, 2U, 3U, 7U, 50U, 1000U}) {
        FrameReader reader;
        std::vector<std::string> payloads;
        for (std::size_t at = 0; at < stream.size(); at += pieceSize) {
            reader.Add(std::span(stream).subspan(at, std::min(pieceSize, stream.size() - at)));
            while (const auto message = reader.Next()) {
                payloads.push_back(message->payload);
            }
        }
        EXPECT_EQ(payloads, wanted) << pieceSize;
    }
}

TEST(FrameReader, WhatNoClientSendsEndsTheLinkInsteadOfFillingMemory) {
    const Bytes tooLong{0x82, 0xFF, 0x7F, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 1, 2, 3, 4};
    const std::string half(10'000, 'x');
    const std::vector<Bytes> cases[] = {
        {tooLong},
        {ClientFrame("an end without a beginning", 0x80)},
        {ClientFrame(half, 0x02), ClientFrame(half, 0x00)},
    };
    for (const auto& frames : cases) {
        FrameReader reader;
        for (const Bytes& frame : frames) {
            reader.Add(frame);
            EXPECT_FALSE(reader.Next());
        }
        EXPECT_TRUE(reader.HasFailed()) << frames.size();
    }
}

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

TEST_F(LinkTest, SlowReaderSeesTheGapAndComputerThatSleptGoesOnWithThePresent) {
    StartListening();
    Pass(10.0);
    const auto late = Take();
    EXPECT_LE(late.size(), 48U);
    EXPECT_GE(late.size(), 44U);
    EXPECT_EQ(SequenceOf(late.back()), static_cast<int>(late.size()) - 1);
    Pass(0.1);
    const int before = SequenceOf(Take().at(0));
    EXPECT_GE(before, 230);
    Pass(50.0, 50.0);
    EXPECT_LE(Take().size(), 2U);
    Pass(1.0);
    const auto after = Take();
    EXPECT_NEAR(static_cast<double>(after.size()), 23.0, 1.0);
    EXPECT_LE(SequenceOf(after.at(0)), before + 4);
}

TEST_F(LinkTest, JitterDelaysButKeepsOrderAndRate) {
    EXPECT_EQ(Count(StartListening({.rate = 24000.5, .jitterSeconds = 0.3}), "audio_rate=24000.5"),
              1);
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
    EXPECT_GT(wanted, 126); // of 140
    EXPECT_LT(wanted, 141);
    EXPECT_GE(largestBunch, 3U);
}

TEST_F(LinkTest, LinksEndInTimeAndWithAnAnswer) {
    for (const auto& [what, dropAfter, seconds] :
         {std::tuple{"a silent client", 0.0, 60.0}, std::tuple{"an option", 5.0, 5.0}}) {
        Open(LinkKind::Sound, {.dropAfterSeconds = dropAfter});
        Pass(seconds - 0.5, 0.1);
        EXPECT_FALSE(link->IsCut(now)) << what;
        Pass(1.0, 0.1);
        EXPECT_TRUE(link->IsCut(now)) << what;
    }
    EXPECT_EQ(StartListening({.busy = true}), Messages{"MSG too_busy=4"});
    EXPECT_TRUE(link->IsEnding());
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
