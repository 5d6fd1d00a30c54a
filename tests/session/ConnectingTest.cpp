#include "support/ConsoleFixture.h"

namespace larkspool {
namespace {

// From the Connect button to streaming, row by row of a session's life.
class Connecting : public ConsoleFixture {
  protected:
    Connecting() { Start(); }
};

const std::vector<std::string> WaterfallAt10000 = {
    "SET maxdb=0 mindb=-200", "SET zoom=11 start=5588305", "SET wf_speed=3", "SET wf_comp=0"};

std::vector<std::string> Join(std::vector<std::string> first,
                              const std::vector<std::string>& then) {
    first.insert(first.end(), then.begin(), then.end());
    return first;
}

TEST_F(Connecting, AddressAndPortAreCheckedBeforeAnythingHappens) {
    Console().TextFieldAddress.SetText("four");
    Console().PushButtonConnect.Push();
    Console().TextFieldAddress.SetText("sdr.example.net");
    for (const char* port : {"0", "abc", "-1", "0.9", ""}) {
        Console().TextFieldPort.SetText(port);
        Console().PushButtonConnect.Push();
    }
    desktop.Advance(120);
    ASSERT_EQ(desktop.boxes.size(), 2U) << "one box a reason, however often";
    EXPECT_EQ(desktop.boxes.front(),
              "Please enter a valid URL for the KiwiSDR you wish to connect to");
    EXPECT_EQ(desktop.boxes.back(),
              "Please enter a valid port number for the KiwiSDR you wish to connect to");
    EXPECT_EQ(Audio().socket.connects, 0);
}

TEST_F(Connecting, BothLinksAreOpenedASecondAfterThePress) {
    Console().TextFieldAddress.SetText("sdr.example.net");
    Console().TextFieldPort.SetText("8074abc");
    Console().PushButtonConnect.Push();
    desktop.Advance(0.99);
    EXPECT_EQ(Audio().socket.connects, 0);
    desktop.Advance(0.01);
    EXPECT_TRUE(Audio().socket.IsConnecting());
    EXPECT_TRUE(Waterfall().socket.IsConnecting());
    EXPECT_EQ(Audio().socket.address, "sdr.example.net");
    EXPECT_EQ(Waterfall().socket.port, 8074);
    EXPECT_EQ(Console().LabelStatus.Text(), "Connecting to sdr.example.net:8074");
    desktop.Advance(5);
    EXPECT_EQ(Console().LabelStatus.Text(), "Connecting to sdr.example.net:8074");
}

TEST_F(Connecting, EachLinkAsksForItsOwnStreamAndIsAuthorisedByItself) {
    PressConnect();
    AcceptLinks();
    EXPECT_EQ(Console().LabelStatus.Text(), "Connected");
    const std::string key = "a2tra2tra2tra2tra2traw==";
    const std::string audio = Audio().TakeRequest();
    EXPECT_EQ(audio.rfind("GET /kiwi/1800000001/SND HTTP/1.1\r\nHost: sdr.example.net:8073\r\n", 0),
              0U);
    EXPECT_NE(audio.find("Sec-WebSocket-Key: " + key + "\r\n"), std::string::npos);
    EXPECT_EQ(audio.substr(audio.size() - 4), "\r\n\r\n");
    EXPECT_EQ(Waterfall().TakeRequest().rfind("GET /kiwi/1800000001/W/F HTTP/1.1\r\n", 0), 0U);
    EXPECT_TRUE(LogHas("1800000001"));
    EXPECT_TRUE(LogHas("SendRequest "));
    EXPECT_TRUE(LogHas("Waterfall Connected"));

    // The reply is the first read, and surplus bytes go with it.
    Audio().socket.Deliver("HTTP/1.1 101 Switching Protocols\r\n\r\n" +
                           ServerFrame("MSG audio_init=0"));
    desktop.Advance(0);
    EXPECT_EQ(Audio().TakeCommands(), (std::vector<std::string>{"SET auth t=kiwi p=#"}));
    EXPECT_EQ(Console().LabelStatus.Text(), "Switched to WebSocket protocol");
    EXPECT_NE(Console().TextArea1.Text().find("101 Switching Protocols"), std::string::npos);
    Waterfall().Upgrade();
    desktop.Advance(0);
    EXPECT_EQ(Waterfall().TakeCommands(), Join({"SET auth t=kiwi p=#"}, WaterfallAt10000));
    EXPECT_EQ(Console().LabelStatus.Text(), "Waterfall Switched to WebSocket protocol");
}

TEST_F(Connecting, AReplyThatIsNoUpgradeStallsAndSaysSoInTheLog) {
    PressConnect();
    AcceptLinks();
    Audio().TakeRequest();
    Audio().socket.Deliver("HTTP/1.1 404 Not Found\r\n\r\n");
    desktop.Advance(0);
    EXPECT_TRUE(Audio().TakeCommands().empty());
    EXPECT_TRUE(LogHas("Connect reply: HTTP/1.1 404 Not Found\r\n\r\n"));
    Audio().Message(" too_busy=1"); // the frame loop runs all the same
    desktop.Advance(0);
    EXPECT_FALSE(Audio().socket.IsConnected());
}

TEST_F(Connecting, TheSessionsCommandsGoOutInTheirOrder) {
    Console().TextFieldIdentity.SetText("Sam");
    Console().TextFieldFreq.SetText("10000.00");
    Console().SliderSquelch.SetValue(9); // the receiver's reset of the squelch stands
    PressConnect();
    AcceptLinks();
    Upgrade();
    Audio().TakeRequest();
    Waterfall().TakeRequest();
    Audio().Message(" audio_init=0");
    desktop.Advance(0);
    const std::vector<std::string> expected = {
        "SET AR OK in=12000 out=44100",
        "SET genattn=0",
        "SET gen=0 mix=-1",
        "SET squelch=0 param=0",
        "SET compression=0",
        "SET mod=am low_cut=-5000 high_cut=5000 freq=10000.00",
        "SET agc=1 hang=0 thresh=-130 slope=6 decay=1000 manGain=50",
        "SET ident_user=Sam",
        "SET geoloc="};
    EXPECT_EQ(Audio().TakeCommands(), expected);
    EXPECT_EQ(Waterfall().TakeCommands(), WaterfallAt10000);
    EXPECT_EQ(Console().LabelStatus.Text(), "Connected to sdr.example.net:8073");
    EXPECT_TRUE(LogHas("got audio_init="));
    EXPECT_TRUE(LogHas("SendSetIdentity Sam"));
    EXPECT_FALSE(Console().PushButtonRecord.Enabled());
}

TEST_F(Connecting, OneMessageMayHoldInitAndRate) {
    PressConnect();
    AcceptLinks();
    Upgrade();
    Audio().TakeRequest();
    desktop.sound.TakeCalls();
    Audio().Message(" audio_rate=12001.2 chan=1 audio_init=0");
    desktop.Advance(0);
    EXPECT_EQ(Audio().TakeCommands().size(), 9U);
    EXPECT_TRUE(LogHas("audioRate = 12001.2"));
    EXPECT_EQ(
        desktop.sound.TakeCalls(),
        (std::vector<std::string>{"OutputSoundBlock -999 12001", "OutputSoundBlock 12001 12001"}));
    desktop.Advance(0.2);
    EXPECT_TRUE(Console().PushButtonRecord.Enabled());
}

TEST_F(Connecting, ConnectInASessionEndsItAtOnceAndStartsTheNextASecondLater) {
    ConnectAndStream();
    Console().PushButtonConnect.Push();
    EXPECT_FALSE(Audio().socket.IsConnected());
    EXPECT_FALSE(Waterfall().socket.IsConnected());
    EXPECT_TRUE(LogHas("didManuallyDisconnect set"));
    EXPECT_EQ(Audio().socket.connects, 1);
    desktop.Advance(1.0);
    EXPECT_EQ(Audio().socket.connects, 2);
}

TEST_F(Connecting, TheLaterOfTwoPressesWins) {
    Console().TextFieldAddress.SetText("first.example.net");
    Console().PushButtonConnect.Push();
    desktop.Advance(0.6);
    Console().TextFieldAddress.SetText("second.example.net");
    Console().PushButtonConnect.Push();
    desktop.Advance(0.6);
    EXPECT_EQ(Audio().socket.connects, 0);
    desktop.Advance(0.4);
    EXPECT_EQ(Audio().socket.connects, 1);
    desktop.Advance(60);
    EXPECT_EQ(Audio().socket.connects, 1);
    EXPECT_EQ(Audio().socket.address, "second.example.net");
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

TEST_F(Connecting, AnIdleSessionSendsNothingButKeepAlives) {
    ConnectAndStream();
    desktop.Advance(3.0);
    const std::vector<std::string> three(3, "SET keepalive");
    EXPECT_EQ(Audio().TakeCommands(), three);
    EXPECT_EQ(Waterfall().TakeCommands(), three);
}

} // namespace
} // namespace larkspool
