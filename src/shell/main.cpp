#include "platform/MakeDesktop.h"
#include "shell/App.h"

int main(int argc, char** argv) {
    const auto desktop = larkspool::MakeDesktop(argc, argv, "larkspool");
    larkspool::App app(*desktop, larkspool::ConfiguredDeployment());
    return desktop->Run([&app] { app.Event_Open(); });
}
