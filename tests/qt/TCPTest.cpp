#include "qt/OnScreen.h"

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>

#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <dlfcn.h>
#include <netdb.h>
#include <sys/socket.h>

namespace larkspool {
namespace {

// What the resolver of this process says of names that end in ".test": their addresses, in that
// order; without any there is no such name, and of "later.test" nothing is known yet. Other names
// are looked up as ever.
std::map<std::string, std::vector<std::string>> scriptedNames;

} // namespace
} // namespace larkspool

// Takes the place of the C library's for the whole process. Qt calls it on a thread of its own.
extern "C" [[gnu::visibility("default")]] int
getaddrinfo(const char* name, const char* service, const addrinfo* hints, addrinfo** result) {
    using Real = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
    static const auto real = reinterpret_cast<Real>(dlsym(RTLD_NEXT, "getaddrinfo"));
    if (name == nullptr || !std::string(name).ends_with(".test")) {
        return real(name, service, hints, result);
    }
    if (std::string(name) == "later.test") {
        return EAI_AGAIN;
    }
    addrinfo literal = *hints;
    literal.ai_flags = AI_NUMERICHOST;
    addrinfo** end = result;
    *end = nullptr;
    for (const std::string& address : larkspool::scriptedNames[name]) {
        if (const int failed = real(address.c_str(), service, &literal, end); failed != 0) {
            return failed;
        }
        while (*end != nullptr) {
            end = &(*end)->ai_next;
        }
    }
    return *result == nullptr ? EAI_NONAME : 0;
}

namespace larkspool {
namespace {

// A socket of the program's that tells its events, and a peer on this computer.
class TCP : public testing::Test {
  protected:
    TCP() {
        EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
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
    // What a connect comes to, which is never reported before it returns.
    Events EventsOfConnect(const std::string& address, int port) {
        events.clear();
        socket->address = address;
        socket->port = port;
        socket->Connect();
        EXPECT_EQ(events, Events());
        EXPECT_FALSE(socket->IsConnected());
        EXPECT_TRUE(Eventually([this] { return !events.empty(); }));
        return events;
    }

    Events events;
    std::string received;
    QTcpServer server;
    QTcpSocket* peer = nullptr; // the server owns it
    std::unique_ptr<TCPSocket> socket = TheDesktop().MakeTCPSocket();
};

TEST_F(TCP, DisconnectReportsTheLossOnceBeforeItReturns) {
    Join();
    socket->Disconnect();
    EXPECT_EQ(events, (Events{"error 102"}));
    EXPECT_FALSE(socket->IsConnected());
    socket->Disconnect();
    socket->Connect();
    socket->Disconnect();
    LetEventsRun();
    EXPECT_EQ(events, (Events{"error 102", "error 102"}));
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

TEST_F(TCP, ATargetThatIsNoneIsReportedLaterAndSaysWhy) {
    struct Case {
        const char* address;
        int port;
        int code;
        SocketFailure failure;
    };
    using enum SocketFailure;
    scriptedNames["mixed.test"] = {"::1", "127.0.0.1"};
    for (const auto& [address, port, code, failure] :
         {Case{"", 8073, 103, NoSuchName}, Case{"a.test:8073", 8073, 103, NoSuchName},
          Case{"none.test", 8073, 103, NoSuchName}, Case{"later.test", 8073, 102, NoResolver},
          Case{"127.0.0.1", 0, EINVAL, NoSuchPort}, Case{"127.0.0.1", 65536, EINVAL, NoSuchPort},
          Case{"127.0.0.1", 1, 102, Refused}, Case{"[::1]", 1, 102, Refused},
          Case{"mixed.test", 1, 102, Refused}, Case{"255.255.255.255", 1, 102, Unreachable}}) {
        SCOPED_TRACE(address);
        EXPECT_EQ(EventsOfConnect(address, port), Events{"error " + std::to_string(code)});
        EXPECT_EQ(socket->LastFailure(), failure);
    }
}

// A computer that takes no connection and doesn't refuse one either: its queue is full.
class SilentPeer {
  public:
    SilentPeer(const QHostAddress& address, quint16 port) {
        listener.setListenBacklogSize(1);
        EXPECT_TRUE(listener.listen(address, port));
        listener.pauseAccepting();
        for (QTcpSocket& filler : fillers) {
            filler.connectToHost(address, port);
            filler.waitForConnected(20);
        }
    }

  private:
    QTcpServer listener;
    QTcpSocket fillers[3];
};

TEST_F(TCP, OfANamesAddressesTheFirstThatAnswersIsTaken) {
    const quint16 port = server.serverPort(); // on 127.0.0.1
    const SilentPeer silent(QHostAddress("127.0.0.2"), port);
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
    const struct {
        std::vector<std::string> addresses;
        const char* taken;
    } cases[] = {
        {{"127.0.0.1", "127.0.0.3", "::1"}, "127.0.0.1"},       // and no other is asked
        {{"127.0.0.2", "127.0.0.1"}, "127.0.0.1"},              // the first is silent
        {{"127.0.0.4", "127.0.0.2", "127.0.0.1"}, "127.0.0.1"}, // the first refuses
        {{"127.0.0.2", "127.0.0.3", "::1"}, "::1"},             // the families take turns
    };
    int names = 0; // Qt remembers them: each row has its own
    for (const auto& [addresses, expected] : cases) {
        SCOPED_TRACE(testing::PrintToString(addresses));
        const std::string name = "n" + std::to_string(++names) + ".test";
        scriptedNames[name] = addresses;
        EXPECT_EQ(EventsOfConnect(name, port), Events{"connected"});
        LetEventsRun();
        EXPECT_EQ(taken(), expected);
        socket->Disconnect();
    }
    events.clear();
    socket->address = "n2.test";
    socket->Connect();
    QTest::qWait(50);
    socket->Disconnect(); // while addresses are tried
    QTest::qWait(400);
    EXPECT_EQ(events, Events{"error 102"});
    EXPECT_EQ(taken(), "");
}

TEST_F(TCP, WhatThePeerSentBeforeItClosedArrivesFirst) {
    std::vector<std::uint8_t> room;
    socket->dataAvailable = [&] { received.append(socket->Read(room), 'x'); };
    socket->error = [this] { events.push_back("error after " + std::to_string(received.size())); };
    for (const int sent : {1'000'000, 95}) {
        room.resize(static_cast<std::size_t>(sent == 95 ? 10 : 1'000'000)); // also little by little
        Join();
        received.clear();
        peer->write(QByteArray(sent, 'x'));
        peer->disconnectFromHost();
        EXPECT_TRUE(Eventually([this] { return !events.empty(); }));
        EXPECT_EQ(events, (Events{"error after " + std::to_string(sent)}));
        EXPECT_EQ(socket->LastErrorCode(), ErrorLostConnection);
    }
}

TEST_F(TCP, AFloodThatIsNotReadStaysWithThePeer) {
    Join();
    socket->dataAvailable = nullptr;
    constexpr qint64 flood = 20'000'000;
    peer->write(QByteArray(flood, 'x'));
    QTest::qWait(200);
    EXPECT_LE(socket->BytesAvailable(), 512U * 1024U);
    EXPECT_TRUE(Eventually([&] {
        received += socket->ReadAll();
        return received.size() == static_cast<std::size_t>(flood);
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
    peer = server.nextPendingConnection();
    peer->write("new");
    EXPECT_TRUE(Eventually([this] { return !received.empty(); }));
    EXPECT_EQ(received, "new");
    socket->Write("hello");
    ASSERT_TRUE(Eventually([this] { return peer->bytesAvailable() > 0; }));
    EXPECT_EQ(peer->readAll(), "hello");
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
