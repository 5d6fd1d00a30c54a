#include "qt/OnScreen.h"
#include "qt/ScriptedNames.h"

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <string>
#include <vector>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

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
    int names = 0; // that were looked up
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
    SocketFailure failure;
};

TEST_F(TCP, ATargetThatIsNoneIsReportedLaterAndSaysWhy) {
    ScriptedNames()["mixed.test"] = {"::1", "127.0.0.1"};
    constexpr auto NoName = SocketFailure::NoSuchName;
    constexpr auto NoPort = SocketFailure::NoSuchPort;
    constexpr auto Refused = SocketFailure::Refused;
    for (const auto& [address, port, code, failure] :
         {BadTarget{"", 8073, 103, NoName}, BadTarget{"a b", 8073, 103, NoName},
          BadTarget{"a\nb", 8073, 103, NoName}, BadTarget{"http://a.test", 8073, 103, NoName},
          BadTarget{"a.test:8073", 8073, 103, NoName}, BadTarget{"none.test", 8073, 103, NoName},
          BadTarget{"127.0.0.1", 0, EINVAL, NoPort}, BadTarget{"127.0.0.1", 65536, EINVAL, NoPort},
          BadTarget{"127.0.0.1", -1, EINVAL, NoPort}, BadTarget{"127.0.0.1", 1, 102, Refused},
          BadTarget{"[::1]", 1, 102, Refused}, BadTarget{"mixed.test", 1, 102, Refused},
          BadTarget{"255.255.255.255", 1, 102, SocketFailure::Unreachable}}) {
        SCOPED_TRACE(address);
        events.clear();
        socket->address = address;
        socket->port = port;
        socket->Connect();
        EXPECT_EQ(events, Events());
        EXPECT_TRUE(Eventually([&] { return !events.empty(); }));
        EXPECT_EQ(events, Events{"error " + std::to_string(code)});
        EXPECT_EQ(socket->LastFailure(), failure);
    }
}

// A computer that takes no connection and doesn't refuse one either: its queue is full.
class SilentPeer {
  public:
    SilentPeer(const char* address, quint16 port) {
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_port = htons(port);
        inet_pton(AF_INET, address, &place.sin_addr);
        const auto* const where = reinterpret_cast<const sockaddr*>(&place);
        EXPECT_EQ(bind(listener, where, sizeof place), 0);
        EXPECT_EQ(listen(listener, 0), 0);
        for (const int filler : fillers) {
            static_cast<void>(connect(filler, where, sizeof place)); // under way
        }
    }
    ~SilentPeer() {
        for (const int filler : fillers) {
            close(filler);
        }
        close(listener);
    }
    SilentPeer(const SilentPeer&) = delete;
    SilentPeer& operator=(const SilentPeer&) = delete;

  private:
    static int Open(int flags = 0) { return ::socket(AF_INET, SOCK_STREAM | flags, 0); }

    int listener = Open();
    int fillers[3] = {Open(SOCK_NONBLOCK), Open(SOCK_NONBLOCK), Open(SOCK_NONBLOCK)};
};

struct ManyAddresses {
    std::vector<std::string> addresses;
    const char* taken;
};

TEST_F(TCP, OfANamesAddressesTheFirstThatAnswersIsTaken) {
    const quint16 port = server.serverPort(); // on 127.0.0.1
    const SilentPeer silent("127.0.0.2", port);
    QTcpServer third;
    QTcpServer sixth;
    ASSERT_TRUE(third.listen(QHostAddress("127.0.0.3"), port));
    ASSERT_TRUE(sixth.listen(QHostAddress::LocalHostIPv6, port));
    const auto taken = [&] {
        std::string by;
        for (QTcpServer* one : {&server, &third, &sixth}) {
            while (one->hasPendingConnections()) {
                by += one->serverAddress().toString().toStdString();
                delete one->nextPendingConnection();
            }
        }
        return by;
    };
    const ManyAddresses cases[] = {
        {{"127.0.0.1"}, "127.0.0.1"},
        {{"::1"}, "::1"},
        {{"127.0.0.1", "127.0.0.3", "::1"}, "127.0.0.1"},       // and no other is asked
        {{"127.0.0.2", "127.0.0.1"}, "127.0.0.1"},              // the first is silent
        {{"127.0.0.4", "127.0.0.2", "127.0.0.1"}, "127.0.0.1"}, // the first refuses
        {{"127.0.0.2", "127.0.0.3", "::1"}, "::1"},             // the families take turns
    };
    for (const auto& [addresses, expected] : cases) {
        SCOPED_TRACE(testing::PrintToString(addresses));
        const std::string name = "n" + std::to_string(++names) + ".test"; // Qt remembers names
        ScriptedNames()[name] = addresses;
        events.clear();
        socket->address = name;
        socket->Connect();
        EXPECT_TRUE(Eventually([this] { return !events.empty(); }));
        EXPECT_EQ(events, Events{"connected"});
        LetEventsRun();
        EXPECT_EQ(taken(), expected);
        socket->Disconnect();
    }
}

TEST_F(TCP, ALinkThatIsGivenUpWhileAddressesAreTriedStaysSilent) {
    const SilentPeer silent("127.0.0.2", server.serverPort());
    ScriptedNames()["late.test"] = {"127.0.0.2", "127.0.0.1"};
    socket->address = "late.test";
    socket->Connect();
    QTest::qWait(50);
    socket->Disconnect();
    QTest::qWait(400);
    EXPECT_EQ(events, Events{"error 102"});
    EXPECT_FALSE(server.hasPendingConnections());
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
