#include "qt/OnScreen.h"

#include <QHostAddress>
#include <QUdpSocket>

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <string>
#include <vector>

namespace larkspool {
namespace {

class UDP : public testing::Test {
  protected:
    UDP() {
        socket->port = 20'000;
        do {
            ++socket->port;
            socket->Connect();
        } while (socket->LastErrorCode() == EADDRINUSE);
    }

    void Send(const QByteArray& bytes) {
        peer.writeDatagram(bytes, QHostAddress::LocalHost, static_cast<quint16>(socket->port));
    }

    QUdpSocket peer;
    std::unique_ptr<UDPSocket> socket = TheDesktop().MakeUDPSocket();
};

TEST_F(UDP, EachDatagramHasItsEventEvenIfNothingReadsIt) {
    int events = 0;
    std::vector<std::string> commands;
    socket->dataAvailable = [&events] { ++events; };
    Send("");
    EXPECT_TRUE(Eventually([&events] { return events > 0; }));
    LetEventsRun();
    EXPECT_EQ(events, 1) << "an endless turn of the loop";
    socket->dataAvailable = [&] { commands.push_back(socket->Read().data); };
    EXPECT_EQ(socket->Read().port, peer.localPort());
    for (const char* command : {"freq:1280000", "", "mode:0"}) {
        Send(command);
    }
    EXPECT_TRUE(Eventually([&] { return commands.size() == 3; }));
    EXPECT_EQ(commands, (std::vector<std::string>{"freq:1280000", "", "mode:0"}));
    EXPECT_EQ(socket->Read().data, "");
    Send("again");
    EXPECT_TRUE(Eventually([&] { return commands.size() == 4; }));
}

TEST_F(UDP, ATakenPortIsToldAtOnce) {
    const auto second = TheDesktop().MakeUDPSocket();
    second->port = socket->port;
    second->Connect();
    EXPECT_EQ(second->LastErrorCode(), EADDRINUSE);
    second->port = 70000;
    second->Connect();
    EXPECT_EQ(second->LastErrorCode(), EINVAL);
    socket->Connect();
    EXPECT_EQ(socket->LastErrorCode(), 0);
}

TEST_F(UDP, AFloodLeavesTheUserHisTurn) {
    int handled = 0;
    socket->dataAvailable = [&] {
        socket->Read();
        ++handled;
        QTest::qSleep(1);
    };
    for (int index = 0; index < 100; ++index) {
        Send("x");
    }
    int handledByThen = -1;
    QTest::qWait(1);
    TheDesktop().CallLater(0, [&] { handledByThen = handled; });
    ASSERT_TRUE(Eventually([&] { return handledByThen >= 0; }));
    EXPECT_LT(handledByThen, 50);
    EXPECT_TRUE(Eventually([&] { return handled == 100; }));
}

} // namespace
} // namespace larkspool
