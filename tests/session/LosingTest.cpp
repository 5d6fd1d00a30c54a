#include "support/ConsoleFixture.h"

#include <algorithm>

namespace larkspool {
namespace {

// How sessions end: by the user, by the receiver, by the network.
class Losing : public ConsoleFixture {
  protected:
    Losing() { Start(); }

    int Connects() { return Audio().socket.connects; }
};

TEST_F(Losing, TheUsersDisconnectNeverReconnects) {
    Console().CheckBoxReconnect.SetValue(true);
    ConnectAndStream();
    Console().PushButtonDisconnect.Push();
    EXPECT_TRUE(LogHas("Audio Socket Error 102"));
    EXPECT_TRUE(LogHas("didManuallyDisconnect set"));
    EXPECT_FALSE(LogHas("Will auto reconnect"));
    EXPECT_FALSE(Console().PushButtonRecord.Enabled());
    const std::string status = Console().LabelStatus.Text();
    desktop.Advance(200);
    EXPECT_EQ(Connects(), 1);
    EXPECT_EQ(Console().LabelStatus.Text(), status) << "no statistics of a dead session";
}

TEST_F(Losing, ALostLinkComesBackAfterAMinuteForAsLongAsItTakes) {
    Console().CheckBoxReconnect.SetValue(true);
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
    Console().CheckBoxReconnect.SetValue(false);
    Audio().socket.Fail();
    desktop.Advance(600);
    EXPECT_EQ(Connects(), 9);
}

TEST_F(Losing, ALostLinkStaysDownWithTheBoxUnticked) {
    ConnectAndStream();
    Audio().socket.Fail();
    desktop.Advance(200);
    EXPECT_EQ(Connects(), 1);
    EXPECT_EQ(Console().LabelStatus.Text(), "0 samples/sec    0 bytes/sec") << "statistics go on";
    EXPECT_TRUE(Waterfall().socket.IsConnected());
}

TEST_F(Losing, AnyOtherErrorLeavesARowInTheLogAndNothingElse) {
    Console().CheckBoxReconnect.SetValue(true);
    PressConnect();
    Audio().socket.Fail(ErrorNoSuchName);
    desktop.Advance(200);
    EXPECT_TRUE(LogHas("Audio Socket Error 103"));
    EXPECT_EQ(Connects(), 1);
}

TEST_F(Losing, ALostWaterfallCostsTheWaterfallAlone) {
    Console().CheckBoxReconnect.SetValue(true);
    ConnectAndStream();
    Waterfall().socket.Fail();
    desktop.Advance(120);
    EXPECT_TRUE(LogHas("Waterfall Socket Error 102"));
    EXPECT_TRUE(Audio().socket.IsConnected());
    EXPECT_EQ(Waterfall().socket.connects, 1);
    Console().TextFieldFreq.SetText("7000"); // the dead link takes no commands
    EXPECT_EQ(Audio().TakeCommands().back(), "SET mod=am low_cut=-5000 high_cut=5000 freq=7000");
    EXPECT_EQ(Waterfall().TakeRequest(), "");
}

TEST_F(Losing, AFullReceiverIsLeftAndTriedAgainWhileTheBoxIsTicked) {
    for (const char* refusal : {" too_busy=1", " too_busy=0", " xmonitored"}) {
        Console().CheckBoxReconnect.SetValue(false);
        ConnectAndStream();
        const int before = Connects();
        Console().CheckBoxReconnect.SetValue(true);
        Waterfall().Message(refusal); // on either link
        desktop.Advance(0);
        EXPECT_FALSE(Audio().socket.IsConnected()) << refusal;
        EXPECT_FALSE(Waterfall().socket.IsConnected()) << refusal;
        EXPECT_EQ(Console().LabelStatus.Text(), "Too many users on Kiwi, disconnecting");
        desktop.Advance(60);
        EXPECT_EQ(Connects(), before + 1) << refusal;
    }
}

TEST_F(Losing, ARefusalThatAlsoTellsARateLeavesNoRecordButtonOn) {
    ConnectAndStream();
    Audio().Message(" too_busy=2 audio_init=0 audio_rate=12000");
    desktop.Advance(1);
    EXPECT_FALSE(Audio().socket.IsConnected());
    EXPECT_FALSE(Console().PushButtonRecord.Enabled());
}

TEST_F(Losing, AConnectReplacesTheReconnectThatWaits) {
    Console().CheckBoxReconnect.SetValue(true);
    ConnectAndStream();
    Audio().socket.Fail();
    desktop.Advance(30);
    PressConnect();
    EXPECT_EQ(Connects(), 2);
    AcceptLinks();
    desktop.Advance(120);
    EXPECT_EQ(Connects(), 2) << "the stale reconnect has ended the newer session";
    EXPECT_TRUE(Audio().socket.IsConnected());
    Audio().socket.Fail();
    desktop.Advance(60);
    EXPECT_EQ(Connects(), 3) << "the newer session has lost its own reconnect";
}

TEST_F(Losing, DisconnectWithdrawsNothingAndTheNextSessionIsItsOwn) {
    Console().CheckBoxReconnect.SetValue(true);
    ConnectAndStream();
    Audio().socket.Fail();
    desktop.Advance(10);
    Console().PushButtonDisconnect.Push(); // on an idle socket
    desktop.Advance(50);
    EXPECT_EQ(Connects(), 2);
    AcceptLinks();
    Audio().socket.Fail(); // not by the user this time
    desktop.Advance(60);
    EXPECT_EQ(Connects(), 3);
}

TEST_F(Losing, AnAbsurdFrameCountsAsALostLink) {
    Console().CheckBoxReconnect.SetValue(true);
    ConnectAndStream();
    Audio().socket.Deliver(std::string("\x82\x7f\xff\xff\xff\xff\xff\xff\xff\xff", 10));
    desktop.Advance(0);
    EXPECT_TRUE(LogHas("Audio Socket Error 102"));
    desktop.Advance(60);
    EXPECT_EQ(Connects(), 2);
}

TEST_F(Losing, AFloodOfTinyFramesIsWorkedOffAndLeavesTheLogBounded) {
    ConnectAndStream();
    std::string flood;
    for (std::uint32_t i = 0; i < 20'000; ++i) {
        flood += ServerFrame("SND" + SoundBody(i * 2, {})) + std::string(2, '\0') +
                 ServerFrame("MSG x") + ServerFrame("");
    }
    Audio().socket.Deliver(flood);
    desktop.Advance(0.2);
    EXPECT_EQ(Console().LabelSmeter.Text(), "-127 dBm 0 39998");
    EXPECT_EQ(Console().Listbox1.ListCount(), 2000);
    EXPECT_TRUE(Audio().socket.IsConnected());
}

TEST_F(Losing, GarbageBehindTheReplyEndsInALogRow) {
    PressConnect();
    AcceptLinks();
    Upgrade();
    Audio().socket.Deliver("<html>" + std::string(100'000, '\xff'));
    desktop.Advance(0);
    EXPECT_FALSE(Audio().socket.IsConnected());
    EXPECT_TRUE(LogHas("Audio Socket Error 102"));
}

TEST_F(Losing, AClosedConsoleNeverConnectsByItself) {
    Console().CheckBoxReconnect.SetValue(true);
    desktop.applicationHandlers.Perform("FileNewScheduleWindow"); // the program goes on
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

TEST_F(Losing, ClosingTheConsoleHangsUpAndEndsTheProgram) {
    ConnectAndStream();
    Console().Close();
    EXPECT_FALSE(Audio().socket.IsConnected());
    EXPECT_FALSE(Console().Visible());
    EXPECT_TRUE(desktop.hasEnded);
}

} // namespace
} // namespace larkspool
