#include "support/ConsoleFixture.h"

namespace larkspool {
namespace {

// From the Connect button to streaming, row by row of a session's life.
class Connecting : public ConsoleFixture {
  protected:
    Connecting() { Start(); }
};

TEST_F(Connecting, AddressAndPortAreCheckedBeforeAnythingHappens) {
    Console().TextFieldAddress.SetText("four");
    Console().PushButtonConnect.Push();
    Console().TextFieldAddress.SetText("sdr.example.net");
    for (const char* port : {"0", "abc", "-1", "0.9", "", "65536"}) {
        Console().TextFieldPort.SetText(port);
        Console().PushButtonConnect.Push();
    }
    desktop.Advance(120);
    Strings boxes(7, "Please enter a valid port number for the KiwiSDR you wish to connect to");
    boxes[0] = "Please enter a valid URL for the KiwiSDR you wish to connect to";
    EXPECT_EQ(desktop.boxes, boxes) << "one for each press";
    EXPECT_EQ(Audio().socket.connects, 0);
    Console().CheckBoxUpdateWaterfall.SetValue(true);
    Console().WaterfallCanvas.mouseDown(100, 20);
    EXPECT_EQ(Console().TextFieldFreq.Text(), "10000") << "a click before the first session";
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

TEST_F(Connecting, EachLinkIsAuthorisedByItselfAndItsCommandsGoOutInTheirOrder) {
    Console().TextFieldIdentity.SetText(std::string(109, 'c') + "\xc3\xbc");
    Console().TextFieldGeoLocation.SetText("Z\xc3\xbcrich");
    Console().TextFieldFreq.SetText("10000.00");
    Console().SliderSquelch.SetValue(9);
    Console().PopupMenuDeEmphasis.SetListIndex(2);
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
    EXPECT_EQ(Waterfall().TakeCommands(),
              (Strings{"SET auth t=kiwi p=#", "SET maxdb=0 mindb=-200", "SET zoom=11 start=5588305",
                       "SET wf_speed=3", "SET wf_comp=0"}));
    Audio().Message(" audio_init=0");
    desktop.Advance(0);
    EXPECT_EQ(Audio().TakeCommands(), // squelch and emphasis as the console shows them
              (Strings{"SET AR OK in=12000 out=44100", "SET genattn=0", "SET gen=0 mix=-1",
                       "SET squelch=0 param=0", "SET compression=0", "SET squelch=9 param=0",
                       "SET de_emp=2", "SET mod=am low_cut=-5000 high_cut=5000 freq=10000.00",
                       "SET agc=1 hang=0 thresh=-130 slope=6 decay=1000 manGain=50",
                       "SET ident_user=" + std::string(109, 'c'), // no half letter
                       "SET geoloc=Z\xc3\xbcrich"}));
    EXPECT_EQ(Console().LabelStatus.Text(), "Connected to sdr.example.net:8073");
    EXPECT_FALSE(Console().PushButtonRecord.Enabled());
    Console().TextFieldIdentity.SetText("Sam");
    EXPECT_TRUE(Audio().TakeCommands().empty()) << "it is heard at the next session";
}

TEST_F(Connecting, AReplyMayComeInPieces) {
    const std::string reply = "HTTP/1.1 101 Switching Protocols\r\nServer: x\r\n\r\n";
    for (std::size_t piece = 1; piece <= reply.size(); ++piece) {
        PressConnect();
        AcceptLinks();
        Audio().TakeRequest();
        for (std::size_t at = 0; at < reply.size(); at += piece) {
            EXPECT_EQ(Audio().TakeCommands(), Strings());
            Audio().socket.Deliver(reply.substr(at, piece));
            desktop.Advance(0);
        }
        EXPECT_EQ(Audio().TakeCommands(), Strings{"SET auth t=kiwi p=#"}) << piece;
    }
    EXPECT_TRUE(LogHas("Connect reply: " + reply));
    PressConnect();
    AcceptLinks();
    for (int i = 0; i < 100; ++i) { // without an end
        Audio().socket.Deliver(std::string(1000, 'x'));
        desktop.Advance(0);
    }
    EXPECT_TRUE(Console().LabelStatus.Text().find("not a receiver (xxx") != std::string::npos);
}

TEST_F(Connecting, WhatAPersonTypesIsTidiedFirst) {
    const auto typed = [this](const std::string& address, bool connects = true) {
        Console().TextFieldPort.SetText("89");
        Console().TextFieldAddress.SetText(address);
        if (connects) {
            Console().PushButtonConnect.Push();
        }
        return Console().TextFieldAddress.Text() + " " + Console().TextFieldPort.Text();
    };
    std::string umlauts;
    while (umlauts.size() < 380) {
        umlauts += "\xc3\xbc";
    }
    EXPECT_EQ(typed("http://lark.example:8074/?f=9750am", false), "lark.example 8074");
    EXPECT_EQ(typed("http://" + umlauts + ":8073", false), umlauts + " 8073");
    const std::string tooLong = "http://" + umlauts + umlauts + ":8073";
    EXPECT_EQ(typed(tooLong, false), tooLong + " 89");
    for (const auto& [address, expected] : {
             std::pair{" lark.example\t", "lark.example 89"},
             {"lark.example:8073", "lark.example 8073"},
             {"https://lark.example:8073/some/path?f=1", "lark.example 8073"},
             {"lark.example/path:1", "lark.example 89"},
             {"lark.example:", "lark.example 89"},
             {"lark.example:abc", "lark.example 0"},
             {"[::1]", "::1 89"},
             {"[::1", "[::1 89"},
             {"http://[2001:db8::1]:8073/", "2001:db8::1 8073"},
             {"  [2001:db8::1]:8074 ", "2001:db8::1 8074"},
         }) {
        EXPECT_EQ(typed(address), expected) << address;
    }
    desktop.Advance(1);
    EXPECT_EQ(Audio().socket.address, "2001:db8::1");
    EXPECT_EQ(Waterfall().socket.port, 8074);
    AcceptLinks();
    EXPECT_NE(Audio().TakeRequest().find("\r\nHost: [2001:db8::1]:8074\r\n"), std::string::npos);
}

} // namespace
} // namespace larkspool
