#include "qt/OnScreen.h"

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <string>
#include <vector>

#include <sys/socket.h>

namespace larkspool {
namespace {

// A socket of the program's that tells its events, and a peer on this computer.
class TCP : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
        socket = TheDesktop().MakeTCPSocket();
        socket->address = "127.0.0.1";
        socket->port = server.serverPort();
        socket->connected = [this] { events.emplace_back("connected"); };
        socket->dataAvailable = [this] { received += socket->ReadAll(); };
        socket->error = [this] {
            events.push_back("error " + std::to_string(socket->LastErrorCode()));
        };
    }

    void Join() {
        socket->Connect();
        ASSERT_TRUE(Eventually([this] { return server.hasPendingConnections(); }));
        peer = server.nextPendingConnection();
        ASSERT_TRUE(Eventually([this] { return socket->IsConnected(); }));
        events.clear();
    }

    using Events = std::vector<std::string>;
    Events events;
    std::string received;
    QTcpServer server;
    QTcpSocket* peer = nullptr; // the server owns it
    std::unique_ptr<TCPSocket> socket;
};

TEST_F(TCP, ConnectReportsLaterAndBytesGoBothWays) {
    socket->Connect();
    EXPECT_EQ(events, Events());
    EXPECT_FALSE(socket->IsConnected());
    EXPECT_TRUE(Eventually([this] { return events == Events{"connected"}; }));
    ASSERT_TRUE(Eventually([this] { return server.hasPendingConnections(); }));
    peer = server.nextPendingConnection();
    socket->Write("hello");
    ASSERT_TRUE(Eventually([this] { return peer->bytesAvailable() == 5; }));
    EXPECT_EQ(peer->readAll(), "hello");
    peer->write("answer");
    EXPECT_TRUE(Eventually([this] { return received == "answer"; }));
}

TEST_F(TCP, DisconnectReportsTheLossBeforeItReturns) {
    Join();
    socket->Disconnect();
    EXPECT_EQ(events, (Events{"error 102"}));
    EXPECT_FALSE(socket->IsConnected());
    socket->Disconnect();
    LetEventsRun();
    EXPECT_EQ(events, (Events{"error 102"}));
    socket->Connect();
    socket->Disconnect();
    EXPECT_EQ(events, (Events{"error 102", "error 102"}));
    LetEventsRun();
    EXPECT_EQ(events.size(), 2U);
}

TEST_F(TCP, DisconnectTellsALossThatItFindsOnlyOnce) {
    Join();
    const linger reset = {.l_onoff = 1, .l_linger = 0};
    setsockopt(static_cast<int>(peer->socketDescriptor()), SOL_SOCKET, SO_LINGER, &reset,
               sizeof reset);
    peer->abort();
    QTest::qSleep(20); // the peer is gone, and the event loop hasn't heard of it
    socket->Write("x");
    socket->Disconnect();
    LetEventsRun();
    EXPECT_EQ(events, (Events{"error 102"}));
}

struct BadTarget {
    const char* address;
    int port;
    int code;
};

TEST_F(TCP, ATargetThatIsNoneIsReportedLater) {
    for (const auto& [address, port, code] :
         {BadTarget{"", 8073, 103}, BadTarget{"a b", 8073, 103}, BadTarget{"a\nb", 8073, 103},
          BadTarget{"nowhere.invalid", 8073, 103}, BadTarget{"127.0.0.1", 0, EINVAL},
          BadTarget{"127.0.0.1", 65536, EINVAL}, BadTarget{"127.0.0.1", -1, EINVAL},
          BadTarget{"127.0.0.1", 1, 102}}) {
        events.clear();
        socket->address = address;
        socket->port = port;
        socket->Connect();
        EXPECT_EQ(events, Events()) << address;
        const std::string expected = "error " + std::to_string(code);
        // A resolver without a network can't say that a name doesn't exist.
        EXPECT_TRUE(Eventually([&] { return !events.empty(); })) << address;
        EXPECT_TRUE(events == Events{expected} ||
                    (std::string(address) == "nowhere.invalid" && events == Events{"error 102"}))
            << address << ": " << (events.empty() ? "nothing" : events.front());
    }
}

TEST_F(TCP, WhatThePeerSentBeforeItClosedArrivesFirst) {
    Join();
    socket->error = [this] { events.push_back("error after " + std::to_string(received.size())); };
    peer->write(QByteArray(1'000'000, 'x'));
    peer->disconnectFromHost();
    EXPECT_TRUE(Eventually([this] { return !events.empty(); }));
    EXPECT_EQ(events, (Events{"error after 1000000"}));
    EXPECT_EQ(socket->LastErrorCode(), ErrorLostConnection);
}

// A reader that has room for little at a time still gets all of it before the error.
TEST_F(TCP, WhatWasNotTakenAtOnceIsHandedOverBeforeTheError) {
    socket->dataAvailable = [this] {
        std::uint8_t piece[10];
        received.append(std::size_t{socket->Read(piece)}, 'x');
    };
    socket->error = [this] { events.push_back("error after " + std::to_string(received.size())); };
    Join();
    peer->write(QByteArray(95, 'x'));
    peer->disconnectFromHost();
    EXPECT_TRUE(Eventually([this] { return !events.empty(); }));
    EXPECT_EQ(events, (Events{"error after 95"}));
}

TEST_F(TCP, AFloodThatIsNotReadStaysWithThePeer) {
    Join();
    socket->dataAvailable = nullptr;
    constexpr qint64 flood = 20'000'000;
    peer->write(QByteArray(flood, 'x'));
    LetEventsRun();
    QTest::qWait(200);
    EXPECT_LE(socket->BytesAvailable(), 512U * 1024U);
    std::size_t total = 0;
    std::vector<std::uint8_t> portion(10'000);
    EXPECT_TRUE(Eventually([&] {
        while (const std::size_t count = socket->Read(portion)) {
            total += count;
        }
        return total == static_cast<std::size_t>(flood);
    }));
}

TEST_F(TCP, ALinkWhosePeerTakesNothingIsGivenUp) {
    Join();
    peer->setReadBufferSize(1);
    const std::string block(64 * 1024, 'x');
    for (int sent = 0; sent < 400 && socket->IsConnected(); ++sent) {
        socket->Write(block);
        QTest::qWait(1);
    }
    EXPECT_FALSE(socket->IsConnected());
    EXPECT_TRUE(Eventually([this] { return events == Events{"error 102"}; }));
}

TEST_F(TCP, NothingOfAnOlderLinkSpeaksIntoALaterOne) {
    Join();
    peer->write("old");
    peer->flush();
    QTest::qSleep(20);
    socket->Disconnect();
    socket->Connect();
    ASSERT_TRUE(Eventually([this] { return server.hasPendingConnections(); }));
    server.nextPendingConnection()->write("new");
    EXPECT_TRUE(Eventually([this] { return !received.empty(); }));
    EXPECT_EQ(received, "new");
    EXPECT_EQ(events, (Events{"error 102", "connected"}));
}

TEST_F(TCP, AHandlerMayEndOrRenewOrDestroyTheLink) {
    Join();
    socket->dataAvailable = [this] { socket->Disconnect(); };
    peer->write("x");
    ASSERT_TRUE(Eventually([this] { return events == Events{"error 102"}; }));

    int tries = 0;
    socket->error = [this, &tries] {
        if (++tries < 3) {
            socket->Connect();
        }
    };
    socket->port = 1;
    socket->Connect();
    ASSERT_TRUE(Eventually([&tries] { return tries == 3; }));

    socket->port = server.serverPort();
    socket->connected = [this] { socket.reset(); };
    socket->Connect();
    EXPECT_TRUE(Eventually([this] { return socket == nullptr; }));
    LetEventsRun();
}

} // namespace
} // namespace larkspool
