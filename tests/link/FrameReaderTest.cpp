#include "link/LinkFixture.h"

#include <algorithm>
#include <iterator>
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
            std::ranges::move(Feed(bytes.substr(cut)), std::back_inserter(frames));
            const std::vector<Frame> expected = {{"SND", payload.substr(3)}, {"MSG", "next"}};
            ASSERT_EQ(frames, expected) << size << " bytes cut at " << cut;
        }
    }
}

TEST_F(FrameReader, FramesOfEveryLengthAreDelivered) {
    for (const std::size_t size :
         {std::size_t{0x0102}, std::size_t{70'000}, WebsocketsClass::FifoSize - 1 - 10 - 3}) {
        const std::string body(size, 'y');
        EXPECT_EQ(Feed(ServerFrame("W/F" + body)), (std::vector<Frame>{{"W/F", body}})) << size;
    }
}

TEST_F(FrameReader, FramesComeOutIntactAcrossTheEndOfTheRing) {
    std::mt19937 pieces(7);
    std::string stream;
    std::vector<Frame> sent;
    for (std::size_t i = 0; i < 300; ++i) { // several times around the ring
        sent.emplace_back("SND", std::string(9'000 + i, static_cast<char>('a' + i % 26)));
        stream += ServerFrame("SND" + sent.back().second);
    }
    std::vector<Frame> received;
    for (std::size_t piece = 0; !stream.empty(); stream.erase(0, piece)) {
        piece = 1 + pieces() % 30'000;
        std::ranges::move(Feed(stream.substr(0, piece)), std::back_inserter(received));
    }
    EXPECT_EQ(received, sent);
}

TEST_F(FrameReader, MoreThanTheRingHoldsWaitsInTheSocket) {
    const std::string frame = ServerFrame("SND" + std::string(100'000, 'z'));
    std::string flood;
    while (flood.size() < 30 * frame.size()) {
        flood += frame;
    }
    socket.Deliver(flood);
    EXPECT_EQ(link.ReadNewData(), WebsocketsClass::FifoSize - 1);
    EXPECT_EQ(link.ReadNewData(), 0U);
    EXPECT_EQ(socket.BytesAvailable(), flood.size() - (WebsocketsClass::FifoSize - 1));
    EXPECT_EQ(Feed("").size(), 30U);
}

TEST_F(FrameReader, ShortAndForeignFramesNeverLoseTheNext) {
    const std::pair<const char*, std::string> cases[] = {
        {"two zero bytes", std::string(2, '\0')},
        {"a ping with a payload", ServerFrame("are you there", 9)},
        {"a long ping", ServerFrame(std::string(300, 'p'), 9)},
        {"a masked frame", std::string("\x82\x83", 2) + "keyM" + "abc"},
        {"a close frame", ServerFrame("\x03\xe8", 8)},
        {"a payload of one byte", ServerFrame("S")},
        {"an unknown opcode", ServerFrame("???", 14)},
        {"reserved bits", std::string("\xf2\x03", 2) + "xyz"},
    };
    for (const auto& [what, bytes] : cases) {
        const auto frames = Feed(bytes + ServerFrame("MSGhello"));
        ASSERT_FALSE(frames.empty()) << what;
        EXPECT_EQ(frames.back(), Frame("MSG", "hello")) << what;
        EXPECT_LE(frames.size(), 2U) << what;
    }
}

TEST_F(FrameReader, APingIsAnsweredWithItsOwnPayload) {
    const std::string longPing(300, 'p');
    Feed(ServerFrame("", 9) + ServerFrame("hi", 9) + ServerFrame(longPing, 9));
    const std::string sent = socket.TakeSent();
    EXPECT_EQ(sent.substr(0, 2), "\x8A\x80");
    EXPECT_EQ(CommandsIn(sent),
              (std::vector<std::string>{"PONG ", "PONG hi", "PONG " + longPing.substr(0, 125)}));
}

TEST_F(FrameReader, AnAbsurdLengthEndsTheLinkAsLost) {
    int errors = 0;
    socket.error = [this, &errors] {
        ++errors;
        EXPECT_EQ(socket.LastErrorCode(), ErrorLostConnection);
    };
    const std::pair<const char*, std::string> cases[] = {
        {"top bit set", std::string("\x82\x7f\xff\xff\xff\xff\xff\xff\xff\xff", 10)},
        {"one byte too many", std::string("\x82\x7f\x00\x00\x00\x00\x00\x0f\xff\xf6", 10)},
        {"with its key", std::string("\x82\xff\x00\x00\x00\x00\x00\x0f\xff\xf2", 10)},
    };
    for (const auto& [what, header] : cases) {
        errors = 0;
        EXPECT_TRUE(Feed(header + ServerFrame("SNDgarbage")).empty()) << what;
        EXPECT_EQ(errors, 1) << what;
        EXPECT_EQ(link.BytesInInputBuffer(), 0U) << what;
        socket.Connect();
        socket.Accept();
    }
}

} // namespace
} // namespace larkspool
