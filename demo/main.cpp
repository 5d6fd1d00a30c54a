#include "demo/Options.h"
#include "demo/Server.h"

#include <cerrno>
#include <csignal>
#include <exception>
#include <iostream>
#include <span>
#include <string>
#include <system_error>
#include <variant>

#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace larkspool::demo;

int stopPipe[2] = {-1, -1}; // a signal writes, the server's loop reads

extern "C" void StopOnSignal(int) {
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(stopPipe[1], &byte, 1);
}

bool CatchSignals() {
    if (::pipe(stopPipe) != 0 || ::fcntl(stopPipe[1], F_SETFL, O_NONBLOCK) != 0) {
        return false;
    }
    struct sigaction action = {};
    action.sa_handler = StopOnSignal;
    ::sigemptyset(&action.sa_mask);
    // The reader of our lines may end; the receivers go on.
    std::signal(SIGPIPE, SIG_IGN);
    return ::sigaction(SIGTERM, &action, nullptr) == 0 &&
           ::sigaction(SIGINT, &action, nullptr) == 0;
}

// One line per port, flushed, so that a script that started us can wait for them.
void PrintPorts(const Server& server, const Options& options) {
    for (std::size_t i = 0; i < options.ports.size(); ++i) {
        std::cout << "receiver " << i + 1 << " on " << options.bindAddress << ':'
                  << server.ReceiverPort(i) << " (" << Antennas()[i].name << ")\n";
    }
    std::cout << "http on " << options.bindAddress << ':' << server.HttpPort() << std::endl;
}

int Serve(const Options& options) {
    Server server(options);
    std::string error;
    if (!CatchSignals()) {
        throw std::system_error(errno, std::generic_category(), "catching signals");
    }
    if (!server.Open(error)) {
        std::cerr << "larkspool-demo: " << error << '\n';
        return 1;
    }
    PrintPorts(server, options);
    server.Run(stopPipe[0]);
    return 0;
}

int Run(std::span<const char* const> arguments) {
    const auto parsed = ParseOptions(arguments);
    if (const auto* problem = std::get_if<std::string>(&parsed)) {
        std::cerr << "larkspool-demo: " << *problem << "\nTry --help.\n";
        return 2;
    }
    const auto* options = std::get_if<Options>(&parsed);
    if (options->help) {
        std::cout << HelpText();
        return 0;
    }
    return Serve(*options);
}

} // namespace

int main(int argc, char** argv) {
    try {
        const std::span arguments(argv, static_cast<std::size_t>(argc));
        return Run(arguments.subspan(argc > 0 ? 1 : 0));
    } catch (const std::exception& problem) {
        std::cerr << "larkspool-demo: " << problem.what() << '\n';
        return 1;
    }
}
