#include "support/ConsoleFixture.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace larkspool {
namespace {

// What the status line says of a session that does not go well. The log says it too, once.
class Status : public ConsoleFixture {
  protected:
    Status() { Start(); }

    std::string Text() { return Console().LabelStatus.Text(); }
    int Rows(const std::string& row) {
        const auto rows = Log();
        return static_cast<int>(std::count(rows.begin(), rows.end(), row));
    }
    // The receiver speaks once a second.
    void Hear(int seconds) {
        for (int i = 0; i < seconds; ++i) {
            Audio().Sound(sequence++, {2, 3});
            desktop.Advance(1);
        }
    }
    static constexpr const char* Nothing = "0 samples/sec    0 bytes/sec    ";
    std::uint32_t sequence = 0;
};

TEST_F(Status, WhyAConnectionFailsStandsBehindItsTarget) {
    struct Case {
        int code;
        SocketFailure reason;
        const char* words;
    };
    for (const auto& [code, reason, words] :
         {Case{103, SocketFailure::NoSuchName, "no such host"},
          Case{22, SocketFailure::NoSuchPort, "no such port"},
          Case{102, SocketFailure::NoResolver, "the name can't be looked up"},
          Case{102, SocketFailure::Refused, "refused"},
          Case{102, SocketFailure::NoAnswer, "no answer"},
          Case{102, SocketFailure::Unreachable, "unreachable"},
          Case{102, SocketFailure::Lost, "link lost"},
          Case{13, SocketFailure::System, "error 13"}}) {
        PressConnect();
        EXPECT_EQ(Text(), "Connecting to sdr.example.net:8073");
        Waterfall().socket.Accept();
        Audio().socket.Fail(code, reason);
        desktop.Advance(0);
        const std::string expected = "Connecting to sdr.example.net:8073: " + std::string(words);
        EXPECT_EQ(Text(), expected);
        Waterfall().Upgrade();
        desktop.Advance(100);
        EXPECT_EQ(Text(), expected) << "it stays, whatever the other link does";
        EXPECT_EQ(Rows(expected), 1);
    }
}

TEST_F(Status, WhatAnswersAndIsNoReceiverIsNamed) {
    const std::string longLine = "HTTP/1.1 200 " + std::string(100, 'x');
    const std::pair<std::string, std::string> replies[] = {
        {"HTTP/1.1 404 Not Found\r\nServer: x\r\n\r\n<html>", "HTTP/1.1 404 Not Found"},
        {longLine + "\r\n\r\n", longLine.substr(0, 60)},
        {"HTTP/1.1 302 Found\nLocation: http://portal\n\n", "HTTP/1.1 302 Found"},
        {"\x1b[31mSSH-2.0\n", " [31mSSH-2.0"}, // closed before it was a reply
    };
    for (const auto& [reply, line] : replies) {
        SCOPED_TRACE(line);
        PressConnect();
        AcceptLinks();
        for (const char letter : reply) { // each by itself
            Audio().socket.Deliver(std::string(1, letter));
            desktop.Advance(0);
        }
        if (line.find("SSH") != std::string::npos) {
            Audio().socket.Fail();
            desktop.Advance(0);
        }
        const std::string remark = "not a receiver (" + line + ")";
        EXPECT_EQ(Text(), "Connecting to sdr.example.net:8073: " + remark);
        desktop.Advance(2);
        EXPECT_EQ(Text(), Nothing + remark);
        Audio().socket.Fail(); // which says less
        desktop.Advance(2);
        EXPECT_EQ(Text(), Nothing + remark);
    }
}

TEST_F(Status, AReceiverThatSaysNothingIsWaitedFor) {
    PressConnect();
    AcceptLinks();
    desktop.Advance(2);
    EXPECT_EQ(Text(), "0 samples/sec    0 bytes/sec");
    desktop.Advance(1);
    EXPECT_EQ(Text(), Nothing + std::string("waiting for the receiver"));
    Upgrade();
    Stream();
    Hear(1);
    Audio().Message(" keep=1"); // 2 + 3 + 7 bytes
    Hear(1);                    // 2 + 3 + 7 + 4
    EXPECT_EQ(Text(), "5.5 samples/sec    28 bytes/sec");
    desktop.Advance(2);
    EXPECT_EQ(Text(), "0 samples/sec    0 bytes/sec");
    desktop.Advance(10);
    EXPECT_EQ(Text(), Nothing + std::string("nothing received for 12 s"));
    desktop.Advance(100);
    EXPECT_EQ(Text(), Nothing + std::string("nothing received for 112 s")) << "Reconnect unticked";
    Hear(2);
    EXPECT_EQ(Text(), "5.5 samples/sec    16 bytes/sec");
    EXPECT_EQ(Rows("waiting for the receiver"), 1);
    EXPECT_EQ(Rows("nothing received for 3 s"), 1);
}

TEST_F(Status, ALostWaterfallIsARemarkAndNoMore) {
    Console().CheckBoxReconnect.SetValue(true);
    ConnectAndStream();
    Waterfall().socket.Fail();
    Hear(100);
    EXPECT_EQ(Text(), "5.5 samples/sec    16 bytes/sec    waterfall lost");
    EXPECT_TRUE(LogHas("Waterfall Socket Error 102"));
    EXPECT_EQ(Rows("waterfall lost"), 1);
    EXPECT_EQ(Audio().socket.connects + Waterfall().socket.connects, 2) << "nothing is tried again";
}

TEST_F(Status, ASilentLinkIsLostAndTriedAgainWithReconnectTicked) {
    Console().CheckBoxReconnect.SetValue(true);
    const std::function<void()> sessions[] = {
        [this] { AcceptLinks(); },
        [this] { Answer(); },
        [this] {
            AcceptLinks();
            Audio().socket.Deliver("HTTP/1.1 101 Switching"); // and no more
        },
    };
    for (const auto& session : sessions) {
        SCOPED_TRACE(&session - sessions);
        PressConnect();
        const int before = Audio().socket.connects;
        session();
        desktop.Advance(29);
        desktop.queue.SetNow(desktop.UtcNow() + 3600); // a clock put forward is no silence
        EXPECT_TRUE(Audio().socket.IsConnected());
        desktop.Advance(2);
        EXPECT_FALSE(Audio().socket.IsConnected());
        EXPECT_TRUE(Text().ends_with(", again in 60 s") || Text().ends_with(", again in 59 s"));
        desktop.Advance(60);
        EXPECT_EQ(Audio().socket.connects, before + 1);
        Console().PushButtonDisconnect.Push();
    }
    ConnectAndStream();
    for (int i = 0; i < 4; ++i) {
        desktop.Advance(20);
        Audio().Message(" keep=1"); // any message will do
    }
    EXPECT_TRUE(Audio().socket.IsConnected());
}

TEST_F(Status, ALostLinkSaysWhenItIsTriedAgainOnceASecond) {
    ConnectAndStream();
    Audio().socket.Fail();
    desktop.Advance(0);
    EXPECT_TRUE(Text().ends_with(" bytes/sec    link lost")) << "it was connected: " << Text();
    desktop.Advance(3);
    EXPECT_EQ(Text(), Nothing + std::string("link lost"));
    Console().CheckBoxReconnect.SetValue(true);
    PressConnect();
    desktop.Advance(0.05); // so that no two timers are due at one moment
    Answer();
    Hear(3);
    Audio().socket.Fail();
    desktop.Advance(0);
    EXPECT_TRUE(Text().ends_with("    link lost, again in 60 s"));
    std::string last;
    int changes = 0;
    for (int tenths = 0; tenths < 170; ++tenths) {
        desktop.Advance(0.1);
        changes += Text() == last ? 0 : 1;
        last = Text();
    }
    EXPECT_EQ(Text(), Nothing + std::string("link lost, again in 43 s"));
    EXPECT_LE(changes, 19) << "a screen reader is told each of them";
    desktop.Advance(43.1);
    EXPECT_EQ(Text(), "Connecting to sdr.example.net:8073");
    Audio().socket.Fail(ErrorLostConnection, SocketFailure::Refused);
    desktop.Advance(17);
    EXPECT_EQ(Text(), "Connecting to sdr.example.net:8073: refused, again in 43 s");
    desktop.Advance(43.1);
    Answer();
    Audio().Message(" too_busy=4");
    desktop.Advance(0);
    EXPECT_EQ(Text(), "Too many users on Kiwi, disconnecting, again in 60 s");
    desktop.Advance(5);
    EXPECT_EQ(Text(), "Too many users on Kiwi, disconnecting, again in 55 s");
    EXPECT_EQ(Rows("Too many users on Kiwi, disconnecting, again in 60 s"), 1);
    EXPECT_EQ(Rows("link lost, again in 60 s"), 1);
    EXPECT_EQ(Rows("Will auto reconnect"), 3);
}

} // namespace
} // namespace larkspool
