#include "qt/OnScreen.h"

#include <QHostAddress>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace larkspool {
namespace {

// A server that gives each path a reply laid down by the test, and ends the connection; on "/wait"
// it keeps silent.
class HTTP : public testing::Test {
  protected:
    HTTP() {
        EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
        QObject::connect(&server, &QTcpServer::newConnection, &server, [this] {
            QTcpSocket* visitor = server.nextPendingConnection();
            QObject::connect(visitor, &QTcpSocket::readyRead, visitor, [this, visitor] {
                const std::string request = visitor->readAll().toStdString();
                const std::string path = request.substr(4, request.find(' ', 4) - 4);
                if (path != "/wait") {
                    visitor->write(QByteArray::fromStdString(replies[path]));
                    visitor->disconnectFromHost();
                }
            });
        });
        fetch->pageReceived = [this](const std::string& /*url*/, int status,
                                     const std::string& content) {
            events.push_back(std::to_string(status) + " " + content);
        };
        fetch->error = [this](int code) { events.push_back("error " + std::to_string(code)); };
    }

    std::string Url(const std::string& path) const {
        return "http://127.0.0.1:" + std::to_string(server.serverPort()) + path;
    }

    std::string EventOf(const std::string& url) {
        events.clear();
        fetch->Get(url);
        EXPECT_TRUE(events.empty());
        EXPECT_TRUE(Eventually([this] { return !events.empty(); })) << url;
        LetEventsRun();
        return events.size() == 1 ? events.front() : "not one event";
    }

    std::map<std::string, std::string> replies;
    std::vector<std::string> events;
    QTcpServer server;
    std::unique_ptr<HTTPSocket> fetch = TheDesktop().MakeHTTPSocket();
};

TEST_F(HTTP, APageComesWholeWhateverItsStatus) {
    replies["/public/"] = "HTTP/1.1 200 OK\r\n\r\nline one\nline two";
    replies["/gone"] = "HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\ngone";
    replies["/broken"] = "HTTP/1.1 503 Busy\r\n\r\nlater";
    replies["/moved"] = "HTTP/1.1 302 Found\r\nLocation: /public/\r\nContent-Length: 0\r\n\r\n";
    EXPECT_EQ(EventOf(Url("/public/")), "200 line one\nline two");
    EXPECT_EQ(EventOf(Url("/gone")), "404 gone");
    EXPECT_EQ(EventOf(Url("/broken")), "503 later");
    EXPECT_EQ(EventOf(Url("/moved")), "200 line one\nline two");
}

TEST_F(HTTP, WhatIsNoWholeAnswerIsAnError) {
    replies["/short"] = "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf a page";
    replies["/huge"] = "HTTP/1.1 200 OK\r\n\r\n" + std::string(std::size_t{9} * 1024 * 1024, 'x');
    replies["/round"] = "HTTP/1.1 302 Found\r\nLocation: /round\r\nContent-Length: 0\r\n\r\n";
    EXPECT_EQ(EventOf(Url("/short")), "error 102");
    EXPECT_EQ(EventOf(Url("/silent")), "error 102");
    EXPECT_EQ(EventOf(Url("/huge")), "error " + std::to_string(EFBIG));
    EXPECT_EQ(EventOf(Url("/round")), "error " + std::to_string(ELOOP));
    EXPECT_EQ(EventOf("http://127.0.0.1:1/"), "error 102");
    EXPECT_EQ(EventOf("file:///etc/hostname"), "error " + std::to_string(EINVAL));
    EXPECT_EQ(EventOf(""), "error " + std::to_string(EINVAL));
    EXPECT_EQ(EventOf("http://none.test/public/"), "error 103"); // see TCPTest.cpp
    EXPECT_EQ(EventOf("http://later.test/public/"), "error 102");
}

std::string Gzipped(const std::string& text) {
    QProcess gzip;
    gzip.start(QStringLiteral("gzip"), QStringList());
    gzip.write(QByteArray::fromStdString(text));
    gzip.closeWriteChannel();
    EXPECT_TRUE(gzip.waitForFinished());
    return gzip.readAllStandardOutput().toStdString();
}

TEST_F(HTTP, AnEncodedPageThatIsCutOrBrokenIsAnError) {
    std::string page;
    for (int row = 0; row < 700; ++row) {
        page += "<span class='cl-name'>" + std::to_string(row * row) + "</span>\n";
    }
    const std::string packed = Gzipped(page);
    const auto answer = [this](const std::string& body, const std::string& encoding = "gzip") {
        replies["/"] = "HTTP/1.1 200 OK\r\nContent-Encoding: " + encoding +
                       "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
        return EventOf(Url("/"));
    };
    EXPECT_EQ(answer(packed), "200 " + page);
    EXPECT_EQ(answer(packed + Gzipped("more"), "x-gzip"), "200 " + page + "more");
    EXPECT_EQ(answer("plain", "identity"), "200 plain");
    for (const std::size_t length : {std::size_t{0}, std::size_t{5}, packed.size() / 2,
                                     packed.size() - 8, packed.size() - 1}) {
        EXPECT_EQ(answer(packed.substr(0, length)), "error 102") << length;
    }
    const std::string broken = "error " + std::to_string(EPROTO);
    for (const std::size_t place : {std::size_t{0}, packed.size() / 2, packed.size() - 8}) {
        std::string wrong = packed;
        wrong[place] = static_cast<char>(~wrong[place]);
        EXPECT_EQ(answer(wrong), broken) << place;
    }
    EXPECT_EQ(answer(page), broken) << "not packed at all";
    EXPECT_EQ(answer(packed, "br"), broken) << "nobody has asked for that";
    EXPECT_EQ(answer(Gzipped(std::string(std::size_t{9} * 1024 * 1024, 'x'))),
              "error " + std::to_string(EFBIG));
    const std::string pieces = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4\r\nhalf\r\n";
    replies["/pieces"] = pieces;
    EXPECT_EQ(EventOf(Url("/pieces")), "error 102");
    replies["/pieces"] = pieces + "0\r\n\r\n";
    EXPECT_EQ(EventOf(Url("/pieces")), "200 half");
}

TEST_F(HTTP, AFetchMayBeReplacedOrDestroyedUnderWayAndInItsOwnEvent) {
    replies["/page"] = "HTTP/1.1 200 OK\r\n\r\npage";
    fetch->Get(Url("/wait"));
    QTest::qWait(1);
    EXPECT_EQ(EventOf(Url("/page")), "200 page");
    fetch->Get(Url("/wait"));
    LetEventsRun();
    fetch = TheDesktop().MakeHTTPSocket();
    fetch->pageReceived = [this](const std::string&, int, const std::string&) { fetch.reset(); };
    fetch->Get(Url("/page"));
    EXPECT_TRUE(Eventually([this] { return fetch == nullptr; }));
    EXPECT_EQ(events.size(), 1U);
}

} // namespace
} // namespace larkspool
