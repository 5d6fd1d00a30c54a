#include "qt/OnScreen.h"

#include <QHostAddress>
#include <QNetworkInterface>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUdpSocket>

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <string>
#include <vector>

#include <sys/socket.h>

namespace larkspool {
namespace {

// A server of the program's, and programs that connect to it.
class Server : public testing::Test {
  protected:
    Server() {
        server->accepted = [this](std::unique_ptr<TCPPeer> peer) {
            peer->dataAvailable = [this, &from = *peer] { received += TakeAll(from); };
            peers.push_back(std::move(peer));
        };
        do {
            server->Listen(++port);
        } while (server->LastErrorCode() == EADDRINUSE);
    }

    static std::string TakeAll(TCPPeer& peer) {
        std::string bytes;
        std::uint8_t piece[10];
        while (const std::size_t count = peer.Read(piece)) {
            bytes.append(reinterpret_cast<const char*>(piece), count);
        }
        return bytes;
    }
    void Join() {
        client.connectToHost(QHostAddress::LocalHost, port);
        ASSERT_TRUE(Eventually([this] { return peers.size() == 1; }));
        ASSERT_TRUE(Eventually([this] { return client.state() == QTcpSocket::ConnectedState; }));
    }

    quint16 port = 20'000; // or the next that is free
    QTcpSocket client;
    std::string received;
    std::vector<std::unique_ptr<TCPPeer>> peers;
    std::unique_ptr<TCPServer> server = TheDesktop().MakeTCPServer();
};

TEST_F(Server, ThisComputerAloneGetsIn) {
    for (const QHostAddress& address : QNetworkInterface::allAddresses()) {
        QTcpSocket socket;
        socket.connectToHost(address, port);
        EXPECT_EQ(socket.waitForConnected(1000), address.isLoopback())
            << address.toString().toStdString();
    }
}

TEST_F(Server, BytesGoBothWaysAndTheLastAnswerReachesAPeerThatHasSaidAll) {
    Join();
    peers[0]->dataAvailable = [this] { peers[0]->Write("<" + TakeAll(*peers[0]) + ">"); };
    client.write("question");
    EXPECT_TRUE(Eventually([this] { return client.bytesAvailable() == 10; }));
    EXPECT_EQ(client.readAll(), "<question>");
    client.write("last");
    client.flush();
    shutdown(static_cast<int>(client.socketDescriptor()), SHUT_WR);
    EXPECT_TRUE(Eventually([this] { return client.bytesAvailable() == 6; }));
    EXPECT_TRUE(Eventually([this] { return !peers[0]->IsOpen(); }));
    peers[0]->Write("to nobody");
}

TEST_F(Server, WhatCameBeforeTheEndCanBeReadAfterIt) {
    Join();
    peers[0]->dataAvailable = nullptr;
    client.write(QByteArray(3000, 'x'));
    client.disconnectFromHost();
    ASSERT_TRUE(Eventually([this] { return !peers[0]->IsOpen(); }));
    EXPECT_EQ(TakeAll(*peers[0]).size(), 3000U);
}

TEST_F(Server, APeerThatTakesNothingIsCut) {
    Join();
    client.setReadBufferSize(1);
    const std::string block(1000, 'x');
    int written = 0;
    for (; written < 5000 && peers[0]->IsOpen(); ++written) {
        peers[0]->Write(block);
        if (written % 16 == 0) {
            LetEventsRun();
        }
    }
    EXPECT_FALSE(peers[0]->IsOpen()) << written;
}

TEST_F(Server, ATakenPortIsToldAtOnceAndClosingFreesIt) {
    const auto second = TheDesktop().MakeTCPServer();
    second->Listen(port);
    EXPECT_EQ(second->LastErrorCode(), EADDRINUSE);
    second->Listen(70000);
    EXPECT_EQ(second->LastErrorCode(), EINVAL);
    Join();
    server->Close();
    second->Listen(port);
    EXPECT_EQ(second->LastErrorCode(), 0);
    client.write("still here");
    EXPECT_TRUE(Eventually([this] { return received == "still here"; }));
    peers.clear();
    EXPECT_TRUE(Eventually([this] { return client.state() == QTcpSocket::UnconnectedState; }));
}

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
