#include "link/Handshake.h"
#include "link/LinkFixture.h"

namespace larkspool {
namespace {

using FrameWriter = LinkFixture;

TEST_F(FrameWriter, TheKeepAliveGoesOutEverySecondWhileConnected) {
    desktop.Advance(1.0);
    const std::string frame = socket.TakeSent();
    ASSERT_EQ(frame.size(), 19U);
    EXPECT_EQ(frame.substr(0, 6), "\x82\x8D\x32\x32\x32\x32");
    EXPECT_EQ(CommandsIn(frame), (std::vector<std::string>{"SET keepalive"}));

    desktop.Advance(2.0);
    EXPECT_EQ(CommandsIn(socket.TakeSent()).size(), 2U);

    socket.Disconnect();
    socket.Connect(); // connecting is not connected
    desktop.Advance(2.0);
    socket.Accept();
    EXPECT_EQ(socket.TakeSent(), "");
    desktop.Advance(1.0);
    EXPECT_EQ(CommandsIn(socket.TakeSent()).size(), 1U);
}

TEST_F(FrameWriter, ClosingSilencesTheLinkAndClosesItsSocket) {
    link.Closing();
    EXPECT_FALSE(socket.IsConnected());
    socket.Connect();
    socket.Accept();
    desktop.Advance(3.0);
    EXPECT_EQ(socket.TakeSent(), "");
}

TEST_F(FrameWriter, ALongCommandIsCutAt125Bytes) {
    link.WebsocketWrite(std::string(200, 'c'));
    const std::string frame = socket.TakeSent();
    EXPECT_EQ(frame.size(), 131U);
    EXPECT_EQ(CommandsIn(frame), (std::vector<std::string>{std::string(125, 'c')}));
}

TEST_F(FrameWriter, BytesAboveAsciiSurviveTheMask) {
    link.WebsocketWrite("M\xc3\xbcnchen");
    EXPECT_EQ(CommandsIn(socket.TakeSent()), (std::vector<std::string>{"M\xc3\xbcnchen"}));
}

TEST(Handshake, TheRequestIsExactToTheByte) {
    const std::string key = "0123456789abcdef";
    const std::string rest =
        "Host: sdr.example.net:8073\r\n"
        "Connection: Upgrade\r\n"
        "Pragma: no-cache\r\n"
        "Cache-Control: no-cache\r\n"
        "User-Agent: Mozilla/5.0\r\n"
        "Upgrade: webSocket\r\n"
        "Origin: http://sdr.example.net:8073\r\n"
        "Sec-WebSocket-Version: 13\r\n"
        "Accept-Encoding: gzip, deflate\r\n"
        "Accept-Language: en-US,en;q=0.9\r\n"
        "Sec-WebSocket-Key: MDEyMzQ1Njc4OWFiY2RlZg==\r\n"
        "Sec-WebSocket-Extensions: permessage-deflate; client_max_window_bits\r\n"
        "\r\n";
    EXPECT_EQ(UpgradeRequest(LinkKind::Audio, 1800000000, "sdr.example.net:8073", key),
              "GET /kiwi/1800000000/SND HTTP/1.1\r\n" + rest);
    EXPECT_EQ(UpgradeRequest(LinkKind::Waterfall, 1800000000, "sdr.example.net:8073", key),
              "GET /kiwi/1800000000/W/F HTTP/1.1\r\n" + rest);
}

TEST(Handshake, Base64EndsAsItShould) {
    const std::pair<const char*, const char*> cases[] = {{"", ""},
                                                         {"f", "Zg=="},
                                                         {"fo", "Zm8="},
                                                         {"foo", "Zm9v"},
                                                         {"foob", "Zm9vYg=="},
                                                         {"fooba", "Zm9vYmE="},
                                                         {"foobar", "Zm9vYmFy"},
                                                         {"\xff\xfe", "//4="}};
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(EncodeBase64(bytes), text);
    }
}

} // namespace
} // namespace larkspool
