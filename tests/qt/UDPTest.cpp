#include "qt/OnScreen.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QUdpSocket>

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <vector>

namespace larkspool {
namespace {

class UDP : public testing::Test {
  protected:
    void SetUp() override {
        QUdpSocket probe;
        ASSERT_TRUE(probe.bind(QHostAddress::AnyIPv4, 0));
        port = probe.localPort();
        probe.close();
        socket = TheDesktop().MakeUDPSocket();
        socket->port = port;
        socket->Connect();
        ASSERT_EQ(socket->LastErrorCode(), 0);
    }

    void Send(const QByteArray& bytes) { peer.writeDatagram(bytes, QHostAddress::LocalHost, port); }

    quint16 port = 0;
    QUdpSocket peer;
    std::unique_ptr<UDPSocket> socket;
};

TEST_F(UDP, EachDatagramHasItsEvent) {
    std::vector<std::string> commands;
    socket->dataAvailable = [&] {
        const Datagram datagram = socket->Read();
        EXPECT_EQ(datagram.address, "127.0.0.1");
        EXPECT_EQ(datagram.port, peer.localPort());
        commands.push_back(datagram.data);
    };
    for (const char* command : {"freq:1280000", "", "mode:0"}) {
        Send(command);
    }
    EXPECT_TRUE(Eventually([&] { return commands.size() == 3; }));
    EXPECT_EQ(commands, (std::vector<std::string>{"freq:1280000", "", "mode:0"}));
    Send("again");
    EXPECT_TRUE(Eventually([&] { return commands.size() == 4; }));
    EXPECT_EQ(socket->Read().data, "");
}

TEST_F(UDP, ATakenPortIsToldAtOnce) {
    const auto second = TheDesktop().MakeUDPSocket();
    second->port = port;
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

TEST_F(UDP, AHandlerThatReadsNothingDoesNotSpin) {
    int events = 0;
    socket->dataAvailable = [&events] { ++events; };
    Send("x");
    EXPECT_TRUE(Eventually([&events] { return events > 0; }));
    LetEventsRun();
    EXPECT_EQ(events, 1);
}

} // namespace
} // namespace larkspool
