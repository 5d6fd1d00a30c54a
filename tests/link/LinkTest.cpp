#include "link/CommandText.h"
#include "link/WebsocketsClass.h"
#include "support/VirtualDesktop.h"
#include "support/VirtualReceiver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace larkspool {
namespace {

// One link on a connected socket, with the test at the other end.
class Link : public ::testing::Test {
  protected:
    Link() {
        socket.Connect();
        socket.Accept();
        link.Init(socket);
    }

    using Frame = std::pair<std::string, std::string>; // tag, body

    // Feeds bytes and takes every frame that is whole.
    std::vector<Frame> Feed(std::string_view bytes) {
        socket.Deliver(bytes);
        std::vector<Frame> frames;
        std::string tag;
        std::string body;
        do {
            while (link.WebsocketRead(tag, body)) {
                if (!tag.empty()) {
                    frames.emplace_back(tag, body);
                }
            }
        } while (link.ReadNewData() > 0);
        return frames;
    }

    VirtualDesktop desktop;
    Random random{1};
    VirtualTCPSocket socket{desktop.queue};
    WebsocketsClass link{desktop, random};
};

TEST_F(Link, AFrameInManyPiecesIsDeliveredOnce) {
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

TEST_F(Link, MoreThanTheRingHoldsWaitsInTheSocket) {
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

TEST_F(Link, TheKeepAliveGoesOutEverySecondWhileConnected) {
    desktop.Advance(1.0);
    const std::string frame = socket.TakeSent();
    EXPECT_EQ(frame.substr(0, 6), "\x82\x8D\x32\x32\x32\x32");
    EXPECT_EQ(CommandsIn(frame), std::vector<std::string>{"SET keepalive"});

    desktop.Advance(2.0);
    EXPECT_EQ(CommandsIn(socket.TakeSent()).size(), 2U);

    socket.Disconnect();
    socket.Connect(); // connecting is not connected
    desktop.Advance(2.0);
    socket.Accept();
    EXPECT_EQ(socket.TakeSent(), "");

    link.Closing();
    EXPECT_FALSE(socket.IsConnected());
    socket.Connect();
    socket.Accept();
    desktop.Advance(3.0);
    EXPECT_EQ(socket.TakeSent(), "") << "of a link that is closed";
}

TEST_F(Link, ACommandKeepsItsBytesUpTo125) {
    link.WebsocketWrite("M\xc3\xbcnchen" + std::string(200, 'c'));
    EXPECT_EQ(CommandsIn(socket.TakeSent()),
              std::vector<std::string>{"M\xc3\xbcnchen" + std::string(117, 'c')});
    link.WebsocketWrite(std::string(124, 'c') + "\xc3\xbc");
    EXPECT_EQ(CommandsIn(socket.TakeSent()), std::vector<std::string>{std::string(124, 'c')})
        << "half a letter";
}

TEST(CommandText, TheWaterfallStartsAtWholeStepsInPlainDigits) {
    for (const auto& [start, zoom] : {std::pair{10000 - 7.328, "SET zoom=11 start=5588305"},
                                      {1 - 7.328, "SET zoom=11 start=-3539"},
                                      {30000 - 7.328, "SET zoom=11 start=16773112"},
                                      {1e12, "SET zoom=11 start=559240327938528"}}) {
        const std::array<std::string, 4> wanted = {"SET maxdb=0 mindb=-200", zoom, "SET wf_speed=3",
                                                   "SET wf_comp=0"};
        EXPECT_EQ(command::Waterfall(3, 0, 11, start), wanted) << start;
    }
}

} // namespace
} // namespace larkspool
