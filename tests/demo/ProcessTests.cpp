#include "demo/Listener.h"
#include "demo/WebSocketFrame.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <string>
#include <vector>

#include <arpa/inet.h>
#include <csignal>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace larkspool::demo {
namespace {

// The program itself, its output read through a pipe.
class Program {
  public:
    explicit Program(const std::vector<std::string>& arguments) {
        int ends[2] = {-1, -1};
        if (::pipe2(ends, O_CLOEXEC) != 0) {
            return;
        }
        output = Descriptor(ends[0]);
        const Descriptor writeEnd(ends[1]);
        const char* path = std::getenv("LARKSPOOL_DEMO");
        std::vector<std::string> words{path != nullptr ? path : "larkspool-demo"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        std::vector<char*> argv;
        argv.reserve(words.size() + 1);
        for (std::string& word : words) {
            argv.push_back(word.data());
        }
        argv.push_back(nullptr);
        process = ::fork();
        if (process == 0) {
            ::dup2(writeEnd.Get(), 1);
            ::dup2(writeEnd.Get(), 2);
            ::execv(argv[0], argv.data());
            ::_exit(99);
        }
    }

    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    ~Program() {
        if (process > 0 && !ended) {
            ::kill(process, SIGKILL);
            ::waitpid(process, nullptr, 0);
        }
    }

    std::string ReadLine() {
        std::string line;
        for (char byte = 0; ::read(output.Get(), &byte, 1) == 1 && byte != '\n';) {
            line += byte;
        }
        return line;
    }

    void StopReading() { output = Descriptor(); }

    void Terminate() const { ::kill(process, SIGTERM); }

    // Waits for the end; the exit code, or -1 for a violent one.
    int ExitCode() {
        int status = 0;
        ::waitpid(process, &status, 0);
        ended = true;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

  private:
    Descriptor output;
    pid_t process = -1;
    bool ended = false;
};

std::uint16_t PortIn(const std::string& line) {
    const std::size_t colon = line.find(':');
    return static_cast<std::uint16_t>(
        std::atoi(line.c_str() + (colon == std::string::npos ? 0 : colon + 1)));
}

// A blocking client that gives up after ten seconds of silence.
class Client {
  public:
    explicit Client(std::uint16_t port) : socket(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in where{};
        where.sin_family = AF_INET;
        where.sin_port = htons(port);
        where.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        const timeval patience{10, 0};
        ::setsockopt(socket.Get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        connected = ::connect(socket.Get(), reinterpret_cast<sockaddr*>(&where), sizeof where) == 0;
    }

    bool IsConnected() const { return connected; }

    void Send(const std::string& bytes) const {
        ASSERT_EQ(::send(socket.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(bytes.size()));
    }

    void Command(const std::string& text) const {
        std::string frame{
            static_cast<char>(0x82), static_cast<char>(0x80 + text.size()), '2', '2', '2', '2'};
        for (const char character : text) {
            frame += static_cast<char>(character ^ '2');
        }
        Send(frame);
    }

    std::string Read(std::size_t count) const {
        std::string bytes(count, '\0');
        std::size_t got = 0;
        while (got < count) {
            const ssize_t size = ::recv(socket.Get(), bytes.data() + got, count - got, 0);
            if (size <= 0) {
                break;
            }
            got += static_cast<std::size_t>(size);
        }
        bytes.resize(got);
        return bytes;
    }

    std::string ReadUntil(const std::string& end) const {
        std::string text;
        while (!text.ends_with(end)) {
            const std::string byte = Read(1);
            if (byte.empty()) {
                break;
            }
            text += byte;
        }
        return text;
    }

    std::string ReadFrame() const {
        const std::string header = Read(2);
        if (header.size() < 2) {
            return {};
        }
        std::size_t length = static_cast<unsigned char>(header[1]);
        if (length == 126) {
            const std::string extended = Read(2);
            length = static_cast<std::size_t>(static_cast<unsigned char>(extended[0])) << 8 |
                     static_cast<unsigned char>(extended[1]);
        }
        return Read(length);
    }

  private:
    Descriptor socket;
    bool connected = false;
};

const std::string linkRequest = "GET /kiwi/1700000000/SND HTTP/1.1\r\nHost: x\r\nUpgrade: webSocket"
                                "\r\nSec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\n";

TEST(DemoProgram, ServesASessionAndThePagesAndClosesOnSignal) {
    Program program({"--ports", "0", "--http-port", "0", "--quiet"});
    const std::string firstLine = program.ReadLine();
    EXPECT_TRUE(firstLine.starts_with("receiver 1 on 127.0.0.1:")) << firstLine;
    std::string lastLine;
    for (int i = 0; i < 7; ++i) {
        lastLine = program.ReadLine();
    }
    EXPECT_TRUE(lastLine.starts_with("http on 127.0.0.1:")) << lastLine;

    const Client listener(PortIn(firstLine));
    ASSERT_TRUE(listener.IsConnected());
    listener.Send(linkRequest);
    const std::string reply = listener.ReadUntil("\r\n\r\n");
    EXPECT_TRUE(reply.starts_with("HTTP/1.1 101 Switching Protocols\r\n"));
    EXPECT_NE(reply.find("s3pPLMBiTxaQ9kYGzzhZRbK+xOo="), std::string::npos);
    listener.Command("SET auth t=kiwi p=#");
    while (listener.ReadFrame().find("audio_init=") == std::string::npos) {
    }
    listener.Command("SET AR OK in=12000 out=44100");
    listener.Command("SET mod=am low_cut=-5000 high_cut=5000 freq=10000");
    EXPECT_EQ(listener.ReadFrame(), "MSG audio_rate=12000");
    for (int wanted = 0; wanted < 12; ++wanted) {
        const std::string frame = listener.ReadFrame();
        ASSERT_EQ(frame.size(), 1034U);
        EXPECT_EQ(frame.substr(0, 3), "SND");
        EXPECT_EQ(frame[4], wanted);
    }

    const Client browser(PortIn(lastLine));
    browser.Send("GET /version/versionb.html?p=0001130M1207 HTTP/1.1\r\nHost: x\r\n\r\n");
    EXPECT_TRUE(browser.ReadUntil("LATEST").ends_with("LATEST"));
    EXPECT_EQ(browser.Read(1), "");

    program.Terminate();
    EXPECT_EQ(program.ExitCode(), 0);
}

TEST(DemoProgram, HostileClientsGetAnErrorAndNobodyIsHeldUp) {
    Program program({"--ports", "0", "--http-port", "0"});
    const std::uint16_t port = PortIn(program.ReadLine());
    program.StopReading(); // what it says of each link finds nobody
    const Client silent(port);
    const Client endless(port);
    endless.Send("GET / HTTP/1.1\r\nX: " + std::string(9000, 'x'));
    EXPECT_TRUE(endless.ReadUntil("\r\n").starts_with("HTTP/1.1 431"));
    const Client noise(port);
    noise.Send("\x82\x85\r\n\r\n");
    EXPECT_TRUE(noise.ReadUntil("\r\n").starts_with("HTTP/1.1 400"));
    const Client browser(port);
    browser.Send("GET / HTTP/1.1\r\nHost: x\r\n\r\n");
    EXPECT_TRUE(browser.ReadUntil("\r\n").starts_with("HTTP/1.1 404"));
    for (int i = 0; i < 2; ++i) {
        const Client listener(port);
        listener.Send(linkRequest);
        EXPECT_TRUE(listener.ReadUntil("\r\n").starts_with("HTTP/1.1 101"));
    }
    program.Terminate();
    EXPECT_EQ(program.ExitCode(), 0);
}

TEST(DemoProgram, SaysWhyItCannotStart) {
    Program mistaken({"--rate", "fast"});
    EXPECT_NE(mistaken.ReadLine().find("--rate"), std::string::npos);
    EXPECT_EQ(mistaken.ExitCode(), 2);

    Listener taken;
    std::string error;
    ASSERT_TRUE(taken.Open("127.0.0.1", 0, error)) << error;
    Program late({"--ports", "0", "--http-port", std::to_string(taken.Port())});
    EXPECT_NE(late.ReadLine().find(std::to_string(taken.Port())), std::string::npos);
    EXPECT_EQ(late.ExitCode(), 1);
}

} // namespace
} // namespace larkspool::demo
