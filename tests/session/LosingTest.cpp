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

TEST_F(Losing, TheUsersDisconnectNeverReconnects) {
    ConnectAndStream();
    Console().PushButtonDisconnect.Push();
    EXPECT_TRUE(LogHas("Audio Socket Error 102"));
    EXPECT_TRUE(LogHas("didManuallyDisconnect set"));
    EXPECT_FALSE(Console().PushButtonRecord.Enabled());
    const std::string status = Console().LabelStatus.Text();
    desktop.Advance(200);
    EXPECT_EQ(Connects(), 1);
    EXPECT_EQ(Console().LabelStatus.Text(), status) << "no statistics of a dead session";
}

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

TEST_F(Losing, ALostLinkStaysDownWithTheBoxUnticked) {
    Console().CheckBoxReconnect.SetValue(false);
    ConnectAndStream();
    Audio().socket.Fail();
    desktop.Advance(200);
    EXPECT_EQ(Connects(), 1);
}

TEST_F(Losing, AnyOtherErrorLeavesARowInTheLogAndNothingElse) {
    PressConnect();
    Audio().socket.Fail(ErrorNoSuchName);
    desktop.Advance(200);
    EXPECT_TRUE(LogHas("Audio Socket Error 103"));
    EXPECT_EQ(Connects(), 1);
}

TEST_F(Losing, AFullReceiverIsLeftAndTriedAgainWhileTheBoxIsTicked) {
    for (const char* refusal : {" too_busy=1", " too_busy=0", " xmonitored"}) {
        SCOPED_TRACE(refusal);
        ConnectAndStream();
        const int before = Connects();
        Waterfall().Message(refusal); // on either link
        desktop.Advance(0);
        EXPECT_FALSE(Audio().socket.IsConnected());
        EXPECT_FALSE(Waterfall().socket.IsConnected());
        desktop.Advance(60);
        EXPECT_EQ(Connects(), before + 1);
    }
}

TEST_F(Losing, ARefusalThatAlsoTellsARateLeavesNoRecordButtonOn) {
    ConnectAndStream();
    Audio().Message(" too_busy=2 audio_init=0 audio_rate=12000");
    desktop.Advance(1);
    EXPECT_FALSE(Console().PushButtonRecord.Enabled());
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
        EXPECT_EQ(Console().LabelStatus.Text(), "Disconnected");
        desktop.Advance(300);
        EXPECT_EQ(Connects(), before);
        Console().PushButtonConnect.Push();
        end(); // while a connect waits
        desktop.Advance(300);
        EXPECT_EQ(Connects(), before);
        ConnectAndStream();
        end(); // while the links stand
        desktop.Advance(300);
        EXPECT_EQ(Connects(), before + 1);
    }
    ConnectAndStream();
    Audio().socket.Fail(); // not by the user this time
    const int before = Connects();
    desktop.Advance(60);
    EXPECT_EQ(Connects(), before + 1);
}

TEST_F(Losing, GarbageCountsAsALostLink) {
    const std::string all[] = {"<html>" + std::string(100'000, '\xff'),
                               std::string("\x82\x7f\xff\xff\xff\xff\xff\xff\xff\xff", 10)};
    for (const std::string& garbage : all) {
        SCOPED_TRACE(garbage.size());
        ConnectAndStream();
        const int before = Connects();
        Audio().socket.Deliver(garbage);
        desktop.Advance(0);
        EXPECT_FALSE(Audio().socket.IsConnected());
        desktop.Advance(60);
        EXPECT_EQ(Connects(), before + 1);
    }
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
