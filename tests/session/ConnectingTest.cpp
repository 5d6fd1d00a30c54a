#include "support/ConsoleFixture.h"

namespace larkspool {
namespace {

// From the Connect button to streaming, row by row of a session's life.
class Connecting : public ConsoleFixture {
  protected:
    Connecting() { Start(); }

    const Strings WaterfallAt10000 = {"SET maxdb=0 mindb=-200", "SET zoom=11 start=5588305",
                                      "SET wf_speed=3", "SET wf_comp=0"};
};

TEST_F(Connecting, AddressAndPortAreCheckedBeforeAnythingHappens) {
    Console().TextFieldAddress.SetText("four");
    Console().PushButtonConnect.Push();
    Console().TextFieldAddress.SetText("sdr.example.net");
    for (const char* port : {"0", "abc", "-1", "0.9", ""}) {
        Console().TextFieldPort.SetText(port);
        Console().PushButtonConnect.Push();
    }
    desktop.Advance(120);
    EXPECT_EQ(desktop.boxes,
              (Strings{"Please enter a valid URL for the KiwiSDR you wish to connect to",
                       "Please enter a valid port number for the KiwiSDR you wish to connect to"}))
        << "one box a reason, however often";
    EXPECT_EQ(Audio().socket.connects, 0);
}

TEST_F(Connecting, BothLinksAreOpenedASecondAfterTheLastPress) {
    ConnectAndStream();
    Console().TextFieldAddress.SetText("first.example.net");
    Console().PushButtonConnect.Push();
    EXPECT_FALSE(Audio().socket.IsConnected()) << "the old session ends at once";
    EXPECT_FALSE(Waterfall().socket.IsConnected());
    desktop.Advance(0.6);
    Console().TextFieldAddress.SetText("second.example.net");
    Console().TextFieldPort.SetText("8074abc");
    Console().PushButtonConnect.Push();
    desktop.Advance(0.99);
    EXPECT_EQ(Audio().socket.connects, 1);
    desktop.Advance(0.01);
    EXPECT_TRUE(Audio().socket.IsConnecting());
    EXPECT_TRUE(Waterfall().socket.IsConnecting());
    EXPECT_EQ(Audio().socket.address, "second.example.net");
    EXPECT_EQ(Waterfall().socket.port, 8074);
    desktop.Advance(60);
    EXPECT_EQ(Audio().socket.connects, 2);
    EXPECT_EQ(Console().LabelStatus.Text(), "Connecting to second.example.net:8074");
}

TEST_F(Connecting, EachLinkAsksForItsOwnStreamAndIsAuthorisedByItself) {
    PressConnect();
    AcceptLinks();
    EXPECT_EQ(Console().LabelStatus.Text(), "Connected");
    const std::string audio = Audio().TakeRequest();
    EXPECT_TRUE(
        audio.starts_with("GET /kiwi/1800000001/SND HTTP/1.1\r\nHost: sdr.example.net:8073\r\n"));
    EXPECT_NE(audio.find("Sec-WebSocket-Key: a2tra2tra2tra2tra2traw==\r\n"), std::string::npos);
    EXPECT_TRUE(Waterfall().TakeRequest().starts_with("GET /kiwi/1800000001/W/F HTTP/1.1\r\n"));

    // The reply is the first read, and surplus bytes go with it.
    Audio().socket.Deliver("HTTP/1.1 101 Switching Protocols\r\n\r\n" +
                           ServerFrame("MSG audio_init=0"));
    desktop.Advance(0);
    EXPECT_EQ(Audio().TakeCommands(), Strings{"SET auth t=kiwi p=#"});
    EXPECT_EQ(Console().LabelStatus.Text(), "Switched to WebSocket protocol");
    Waterfall().Upgrade();
    desktop.Advance(0);
    Strings expected = WaterfallAt10000;
    expected.insert(expected.begin(), "SET auth t=kiwi p=#");
    EXPECT_EQ(Waterfall().TakeCommands(), expected);
}

TEST_F(Connecting, AReplyThatIsNoUpgradeStallsAndSaysSoInTheLog) {
    PressConnect();
    AcceptLinks();
    Audio().TakeRequest();
    Audio().socket.Deliver("HTTP/1.1 404 Not Found\r\n\r\n");
    desktop.Advance(0);
    EXPECT_TRUE(Audio().TakeCommands().empty());
    EXPECT_TRUE(LogHas("Connect reply: HTTP/1.1 404 Not Found\r\n\r\n"));
}

TEST_F(Connecting, TheSessionsCommandsGoOutInTheirOrder) {
    ConnectAndStream();
    Console().TextFieldIdentity.SetText("Sam");
    Console().TextFieldGeoLocation.SetText("Turin");
    EXPECT_TRUE(Audio().TakeCommands().empty()) << "they are heard at the next session";
    Console().TextFieldFreq.SetText("10000.00");
    Console().SliderSquelch.SetValue(9); // the receiver's reset of the squelch stands
    PressConnect();
    AcceptLinks();
    Upgrade();
    Audio().Message(" audio_init=0");
    desktop.Advance(0);
    EXPECT_EQ(Audio().TakeCommands(),
              (Strings{"SET AR OK in=12000 out=44100", "SET genattn=0", "SET gen=0 mix=-1",
                       "SET squelch=0 param=0", "SET compression=0",
                       "SET mod=am low_cut=-5000 high_cut=5000 freq=10000.00",
                       "SET agc=1 hang=0 thresh=-130 slope=6 decay=1000 manGain=50",
                       "SET ident_user=Sam", "SET geoloc=Turin"}));
    EXPECT_EQ(Waterfall().TakeCommands(), WaterfallAt10000);
    EXPECT_EQ(Console().LabelStatus.Text(), "Connected to sdr.example.net:8073");
    EXPECT_FALSE(Console().PushButtonRecord.Enabled());
}

TEST_F(Connecting, StatisticsShowWhatCameInEachSecond) {
    PressConnect();
    AcceptLinks();
    Upgrade();
    Audio().Message(" audio_rate=12000");            // 2 + 3 + 17 bytes
    Audio().Sound(1, std::vector<std::int16_t>(50)); // 2 + 3 + 7 + 100 bytes
    desktop.Advance(1.0);
    EXPECT_EQ(Console().LabelStatus.Text(), "53.5 samples/sec    134 bytes/sec");
    desktop.Advance(1.0);
    EXPECT_EQ(Console().LabelStatus.Text(), "0 samples/sec    0 bytes/sec");
}

} // namespace
} // namespace larkspool
