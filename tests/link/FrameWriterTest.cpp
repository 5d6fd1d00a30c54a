#include "link/CommandText.h"
#include "link/Handshake.h"
#include "link/LinkFixture.h"

namespace larkspool {
namespace {

using FrameWriter = LinkFixture;

TEST_F(FrameWriter, TheKeepAliveGoesOutEverySecondWhileConnected) {
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

TEST_F(FrameWriter, ACommandKeepsItsBytesUpTo125) {
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

TEST(Handshake, TheRequestIsExactToTheByte) {
    const std::string key = "\xff\xfe\xe9"
                            "23456789abcd\x80";
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
        "Sec-WebSocket-Key: //7pMjM0NTY3ODlhYmNkgA==\r\n"
        "Sec-WebSocket-Extensions: permessage-deflate; client_max_window_bits\r\n"
        "\r\n";
    for (const auto& [kind, stream] :
         {std::pair{LinkKind::Audio, "/SND"}, std::pair{LinkKind::Waterfall, "/W/F"}}) {
        EXPECT_EQ(UpgradeRequest(kind, 1800000000, "sdr.example.net:8073", key),
                  "GET /kiwi/1800000000" + std::string(stream) + " HTTP/1.1\r\n" + rest);
    }
}

} // namespace
} // namespace larkspool
