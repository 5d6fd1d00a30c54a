#include "support/ConsoleFixture.h"

namespace larkspool {
namespace {

// How sessions end: by the user, by the receiver, by the network.
class Losing : public ConsoleFixture {
  protected:
    Losing() {
        Start();
        Console().CheckBoxReconnect.SetValue(true);
    }

    int Connects() { return Audio().socket.connects; }
};

TEST_F(Losing, ALostLinkComesBackAfterAMinuteForAsLongAsItTakes) {
    ConnectAndStream();
    Audio().socket.Fail();
    desktop.Advance(59.9);
    EXPECT_TRUE(LogHas("Will auto reconnect"));
    EXPECT_TRUE(Waterfall().socket.IsConnected()) << "the waterfall lives on meanwhile";
    EXPECT_EQ(Connects(), 1);
    desktop.Advance(0.2);
    EXPECT_EQ(Connects(), 2);
    EXPECT_TRUE(Waterfall().socket.IsConnecting());
    for (int retry = 3; retry < 10; ++retry) {
        Audio().socket.Fail();
        desktop.Advance(60.1);
        EXPECT_EQ(Connects(), retry);
    }
}

TEST_F(Losing, ALostLinkStaysDownWithTheBoxUntickedAndOneNeverMadeEvenTicked) {
    PressConnect();
    Audio().socket.Fail(ErrorNoSuchName);
    desktop.Advance(200);
    EXPECT_TRUE(LogHas("Audio Socket Error 103"));
    EXPECT_EQ(Connects(), 1);
    Console().CheckBoxReconnect.SetValue(false);
    ConnectAndStream();
    Audio().socket.Fail();
    desktop.Advance(200);
    EXPECT_EQ(Connects(), 2);
}

TEST_F(Losing, AFullReceiverAndGarbageAreLeftAndTriedAgainWhileTheBoxIsTicked) {
    const std::function<void()> reasons[] = {
        [this] { Waterfall().Message(" too_busy=1"); }, // on either link
        [this] { Waterfall().Message(" too_busy=0"); },
        [this] { Waterfall().Message(" xmonitored"); },
        [this] { Audio().Message(" too_busy=2 audio_init=0 audio_rate=12000"); },
        [this] { Audio().socket.Deliver("<html>" + std::string(100'000, '\xff')); },
        [this] { Audio().socket.Deliver("\x82\x7f" + std::string(8, '\xff')); },
    };
    for (const auto& reason : reasons) {
        SCOPED_TRACE(&reason - reasons);
        ConnectAndStream();
        const int before = Connects();
        reason();
        desktop.Advance(0);
        EXPECT_FALSE(Audio().socket.IsConnected());
        EXPECT_EQ(Waterfall().socket.IsConnected(), &reason - reasons > 3);
        desktop.Advance(1);
        EXPECT_FALSE(Console().PushButtonRecord.Enabled());
        desktop.Advance(59);
        EXPECT_EQ(Connects(), before + 1);
    }
}

TEST_F(Losing, AConnectReplacesTheReconnectThatWaits) {
    ConnectAndStream();
    Audio().socket.Fail();
    desktop.Advance(30);
    PressConnect();
    EXPECT_EQ(Connects(), 2);
    AcceptLinks();
    desktop.Advance(29.5);
    EXPECT_EQ(Connects(), 2) << "the stale reconnect has ended the newer session";
    EXPECT_TRUE(Audio().socket.IsConnected());
    Audio().socket.Fail();
    desktop.Advance(60);
    EXPECT_EQ(Connects(), 3) << "the newer session has lost its own reconnect";
}

TEST_F(Losing, NothingConnectsAfterADisconnectOrAnEntrysEnd) {
    const std::function<void()> ends[] = {
        [this] { Console().PushButtonDisconnect.Push(); },
        [this] { Console().EndEntry(); },
    };
    for (const auto& end : ends) {
        SCOPED_TRACE(&end - ends);
        ConnectAndStream();
        Audio().socket.Fail();
        desktop.Advance(10);
        const int before = Connects();
        end(); // while a reconnect waits
        desktop.Advance(300);
        EXPECT_EQ(Connects(), before);
        Console().PushButtonConnect.Push();
        end(); // while a connect waits
        desktop.Advance(300);
        EXPECT_EQ(Connects(), before);
        ConnectAndStream();
        end(); // while the links are up
        desktop.Advance(300);
        EXPECT_EQ(Console().LabelStatus.Text(), "Disconnected") << "no statistics any more";
        EXPECT_EQ(Connects(), before + 1);
    }
    EXPECT_TRUE(LogHas("Audio Socket Error 102"));
    EXPECT_TRUE(LogHas("didManuallyDisconnect set"));
    ConnectAndStream();
    Audio().socket.Fail(); // not by the user this time
    const int before = Connects();
    desktop.Advance(60);
    EXPECT_EQ(Connects(), before + 1);
}

TEST_F(Losing, AClosedConsoleNeverConnectsByItself) {
    Perform("FileNewScheduleWindow", &Console()); // the program goes on
    ConnectAndStream();
    Audio().socket.Fail();
    desktop.Advance(30);
    Console().Close();
    desktop.Advance(300);
    EXPECT_EQ(Connects(), 1) << "the reconnect that waited";

    Console().Show();
    ConnectAndStream();
    Console().Close();
    desktop.Advance(300);
    EXPECT_EQ(Connects(), 2) << "one that the closing itself has set off";
    EXPECT_FALSE(desktop.hasEnded);
}

} // namespace
} // namespace larkspool
