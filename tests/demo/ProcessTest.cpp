#include "demo/Listening.h"

#include "demo/Listener.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

#include <arpa/inet.h>
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
    explicit Program(const std::string& arguments) {
        const std::string command = "echo $$; exec \"$LARKSPOOL_DEMO\" " + arguments + " 2>&1";
        output = ::popen(command.c_str(), "r");
        process = std::atoi(ReadLine().c_str());
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program() {
        if (output != nullptr) {
            ::kill(process, SIGKILL);
            ::pclose(output);
        }
    }

    std::string ReadLine() {
        std::array<char, 200> line{};
        EXPECT_NE(std::fgets(line.data(), line.size(), output), nullptr);
        return line.data();
    }

    void StopReading() {
        const Descriptor nothing(::open("/dev/null", O_RDONLY));
        ::dup2(nothing.Get(), ::fileno(output));
    }

    void Terminate() const { ::kill(process, SIGTERM); }

    // Waits for the end; the exit code, or -1 for a violent one.
    int ExitCode() {
        const int status = ::pclose(std::exchange(output, nullptr));
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

  private:
    FILE* output = nullptr;
    pid_t process = -1;
};

std::uint16_t PortIn(const std::string& line) {
    return static_cast<std::uint16_t>(std::atoi(line.substr(line.find(':') + 1).c_str()));
}

// A blocking client that gives up after ten seconds of silence.
class Client {
  public:
    explicit Client(std::uint16_t port, const std::string& request = {})
        : socket(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in where{};
        where.sin_family = AF_INET;
        where.sin_port = htons(port);
        where.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        const timeval patience{10, 0};
        ::setsockopt(socket.Get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        EXPECT_EQ(::connect(socket.Get(), reinterpret_cast<sockaddr*>(&where), sizeof where), 0);
        Send(request);
    }

    template <typename Bytes>
    void Send(const Bytes& bytes) const {
        EXPECT_EQ(::send(socket.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL),
                  std::ssize(bytes));
    }

    // What comes, up to this or to the end.
    std::string ReadUntil(const std::string& end) const {
        std::string text;
        for (char byte = 0; !text.ends_with(end) && ::recv(socket.Get(), &byte, 1, 0) == 1;) {
            text += byte;
        }
        return text;
    }

  private:
    Descriptor socket;
};

const std::string linkRequest = "GET /kiwi/1700000000/SND HTTP/1.1\r\nHost: x\r\nUpgrade: webSocket"
                                "\r\nSec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\n";

TEST(DemoProgram, ServesASessionBesideHostileClientsAndClosesOnSignal) {
    Program program("--ports 0 --http-port 0");
    const std::uint16_t port = PortIn(program.ReadLine());
    std::string lastLine;
    for (int i = 0; i < 7; ++i) {
        lastLine = program.ReadLine();
    }
    program.StopReading(); // what it says of each link finds nobody
    const Client silent(port);
    const std::pair<std::string, std::string> cases[] = {
        {"GET / HTTP/1.1\r\nX: " + std::string(9000, 'x'), "431"},
        {"\x82\x85\r\n\r\n", "400"},
        {"GET / HTTP/1.1\r\nHost: x\r\n\r\n", "404"},
        {linkRequest, "101"},
    };
    for (const auto& [request, status] : cases) {
        EXPECT_EQ(Client(port, request).ReadUntil("\r\n").substr(0, 12), "HTTP/1.1 " + status);
    }

    const Client listener(port, linkRequest);
    EXPECT_TRUE(listener.ReadUntil("\r\n\r\n").ends_with("s3pPLMBiTxaQ9kYGzzhZRbK+xOo=\r\n\r\n"));
    for (const char* command : {"SET auth t=kiwi p=#", "SET AR OK in=12000 out=44100",
                                "SET mod=am low_cut=-5000 high_cut=5000 freq=10000"}) {
        listener.Send(ClientFrame(command));
    }
    for (char number = 0; number < 12; ++number) {
        const std::string start = std::string("SND\0", 4) + number + std::string(3, '\0');
        const std::string heard = listener.ReadUntil(start);
        ASSERT_TRUE(heard.ends_with(start)) << int{number};
        EXPECT_TRUE(number == 0 || heard.size() == 1038) << int{number};
    }
    const Client browser(PortIn(lastLine),
                         "GET /version/versionb.html?p=0001130M1207 HTTP/1.1\r\nHost: x\r\n\r\n");
    EXPECT_TRUE(browser.ReadUntil("its end").ends_with("LATEST"));
    program.Terminate();
    EXPECT_EQ(program.ExitCode(), 0);
}

TEST(DemoProgram, SaysWhyItCannotStart) {
    Program mistaken("--rate fast");
    EXPECT_NE(mistaken.ReadLine().find("--rate"), std::string::npos);
    EXPECT_EQ(mistaken.ExitCode(), 2);

    Listener taken;
    std::string error;
    ASSERT_TRUE(taken.Open("127.0.0.1", 0, error)) << error;
    const std::string port = std::to_string(taken.Port());
    Program late("--ports 0 --http-port " + port);
    EXPECT_NE(late.ReadLine().find(port), std::string::npos);
    EXPECT_EQ(late.ExitCode(), 1);
}

} // namespace
} // namespace larkspool::demo
