#include "link/LinkFixture.h"

#include <random>

namespace larkspool {
namespace {

using FrameReader = LinkFixture;

TEST_F(FrameReader, AFrameInManyPiecesIsDeliveredOnce) {
    // Every length form, and every place to cut the stream in two.
    for (const std::size_t size : {3U, 5U, 125U, 126U, 300U}) {
        const std::string payload = "SND" + std::string(size - 3, 'x');
        const std::string bytes = ServerFrame(payload) + ServerFrame("MSGnext");
        for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
            auto frames = Feed(bytes.substr(0, cut));
            for (auto& frame : Feed(bytes.substr(cut))) {
                frames.push_back(std::move(frame));
            }
            const std::vector<Frame> expected = {{"SND", payload.substr(3)}, {"MSG", "next"}};
            ASSERT_EQ(frames, expected) << size << " bytes cut at " << cut;
        }
    }
}

TEST_F(FrameReader, LongLengthsReadMostSignificantByteFirst) {
    const std::string body(70'000, 'y');
    EXPECT_EQ(Feed(ServerFrame("W/F" + body)), (std::vector<Frame>{{"W/F", body}}));
    EXPECT_EQ(Feed(ServerFrame("W/F" + body.substr(0, 0x0102))),
              (std::vector<Frame>{{"W/F", body.substr(0, 0x0102)}}));
}

TEST_F(FrameReader, FramesComeOutIntactAcrossTheEndOfTheRing) {
    std::mt19937 pieces(7);
    std::string stream;
    std::vector<Frame> sent;
    for (int i = 0; i < 300; ++i) { // several times around the ring
        sent.emplace_back("SND", std::string(9'000 + static_cast<std::size_t>(i),
                                             static_cast<char>('a' + i % 26)));
        stream += ServerFrame(sent.back().first + sent.back().second);
    }
    std::vector<Frame> received;
    for (std::size_t at = 0; at < stream.size();) {
        const std::size_t piece = std::uniform_int_distribution<std::size_t>(1, 30'000)(pieces);
        for (auto& frame : Feed(std::string_view(stream).substr(at, piece))) {
            received.push_back(std::move(frame));
        }
        at += piece;
    }
    EXPECT_EQ(received, sent);
}

TEST_F(FrameReader, MoreThanTheRingHoldsWaitsInTheSocket) {
    const std::string frame = ServerFrame("SND" + std::string(100'000, 'z'));
    std::string flood;
    for (int i = 0; i < 30; ++i) {
        flood += frame;
    }
    socket.Deliver(flood);
    EXPECT_EQ(link.ReadNewData(), WebsocketsClass::FifoSize - 1);
    EXPECT_EQ(link.ReadNewData(), 0U);
    EXPECT_EQ(socket.BytesAvailable(), flood.size() - (WebsocketsClass::FifoSize - 1));
    EXPECT_EQ(Feed("").size(), 30U);
}

TEST_F(FrameReader, ShortAndForeignFramesNeverLoseTheNext) {
    struct Case {
        const char* what;
        std::string bytes;
    };
    const Case cases[] = {
        {"two zero bytes", std::string(2, '\0')},
        {"an empty ping", ServerFrame("", 9)},
        {"a ping with a payload", ServerFrame("are you there", 9)},
        {"a long ping", ServerFrame(std::string(300, 'p'), 9)},
        {"a masked frame", std::string("\x82\x83", 2) + "keyM" + "abc"},
        {"a close frame", ServerFrame("\x03\xe8", 8)},
        {"a payload of one byte", ServerFrame("S")},
        {"an unknown opcode", ServerFrame("???", 14)},
        {"reserved bits", std::string("\xf2\x03", 2) + "xyz"},
    };
    for (const Case& oneCase : cases) {
        const auto frames = Feed(oneCase.bytes + ServerFrame("MSGhello"));
        ASSERT_FALSE(frames.empty()) << oneCase.what;
        EXPECT_EQ(frames.back(), Frame("MSG", "hello")) << oneCase.what;
        EXPECT_LE(frames.size(), 2U) << oneCase.what;
    }
}

TEST_F(FrameReader, APingIsAnsweredWithItsOwnPayload) {
    Feed(ServerFrame("", 9));
    const std::string empty = socket.TakeSent();
    ASSERT_EQ(empty.size(), 6U);
    EXPECT_EQ(empty.substr(0, 2), "\x8A\x80");

    Feed(ServerFrame("hi", 9) + ServerFrame(std::string(300, 'p'), 9));
    EXPECT_EQ(CommandsIn(socket.TakeSent()),
              (std::vector<std::string>{"PONG hi", "PONG " + std::string(125, 'p')}));
}

TEST_F(FrameReader, AnAbsurdLengthEndsTheLinkAsLost) {
    const std::string absurd[] = {
        std::string("\x82\x7f\xff\xff\xff\xff\xff\xff\xff\xff", 10), // top bit set
        std::string("\x82\x7f\x00\x00\x00\x00\x00\x0f\xff\xf6", 10), // one byte too many
        std::string("\x82\xff\x00\x00\x00\x00\x00\x0f\xff\xf2", 10), // likewise with its key
    };
    for (const std::string& header : absurd) {
        int errors = 0;
        socket.error = [this, &errors] {
            ++errors;
            EXPECT_EQ(socket.LastErrorCode(), ErrorLostConnection);
        };
        EXPECT_TRUE(Feed(header + ServerFrame("SNDgarbage")).empty());
        EXPECT_EQ(errors, 1);
        EXPECT_EQ(link.BytesInInputBuffer(), 0U);
        socket.error = nullptr;
        socket.Connect();
        socket.Accept();
    }
}

TEST_F(FrameReader, TheLargestFrameThatFitsIsDelivered) {
    const std::string body(WebsocketsClass::FifoSize - 1 - 10 - 3, 'w');
    EXPECT_EQ(Feed(ServerFrame("SND" + body)), (std::vector<Frame>{{"SND", body}}));
}

} // namespace
} // namespace larkspool
