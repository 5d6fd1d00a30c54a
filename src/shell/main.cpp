#include "platform/MakeDesktop.h"
#include "shell/App.h"
#include "shell/CommandLine.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {

std::vector<std::string> Arguments(int argc, char** argv) {
    return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

} // namespace

int main(int argc, char** argv) {
    if (const auto text = larkspool::TextAskedFor(Arguments(argc, argv))) {
        std::fputs(text->c_str(), stdout); // works without a display
        return 0;
    }
    const auto desktop =
        larkspool::MakeDesktop(argc, argv, "larkspool"); // removes the desktop's options
    const auto commandLine = larkspool::ReadCommandLine(Arguments(argc, argv));
    if (!commandLine.complaint.empty()) {
        std::fputs(commandLine.complaint.c_str(), stderr);
        return 2;
    }
    larkspool::App app(*desktop, larkspool::ConfiguredDeployment());
    return desktop->Run([&app, &commandLine] {
        app.Event_Open();
        app.OpenSchedules(commandLine);
    });
}
