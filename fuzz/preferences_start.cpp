// Any bytes as the settings that the program finds at its start: it starts, a receiver can be heard
// with them, and a second start changes nothing that the first has left.
#include "FuzzedConsole.h"

#include <fstream>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace larkspool;
    fuzz::FuzzedConsole program;
    program.desktop.sound.devices = {{"Speakers"}, {"Headphones"}};
    std::ofstream(program.PreferencesFile().Path(), std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    program.Start();
    program.CheckBounds();
    const std::string first = program.QuitAndCheckFiles();
    program.Start();
    const std::string second = program.QuitAndCheckFiles();
    fuzz::Require(first == second, "starting and quitting changes no setting");
    program.Start();
    program.CheckThatAGoodReceiverIsHeard();
    program.QuitAndCheckFiles();
    return 0;
}
