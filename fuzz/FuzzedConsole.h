#pragma once

#include "Input.h"
#include "platform/FolderItem.h"
#include "support/ConsoleFixture.h"

#include <string>
#include <string_view>

namespace larkspool::fuzz {

// The whole program on a virtual desktop, made for one input. It has the tests' ways of acting as
// the user and as the receiver, and checks of its own: a test framework's would let the process go
// on.
class FuzzedConsole : public ConsoleFixture {
  public:
    FuzzedConsole();

    // What holds at any moment: the log and the texts are bounded, what goes out is well formed.
    // Takes what the program has sent and played so far.
    void CheckBounds();

    // The user turns to a receiver that behaves, hears it and records it.
    void CheckThatAGoodReceiverIsHeard();

    // The program ends; every recording is whole and the settings can be read again. The settings
    // as they lie on disk.
    std::string QuitAndCheckFiles();

    FolderItem PreferencesFile();
    static std::string ContentOf(const FolderItem& file);

    using ConsoleFixture::Audio;
    using ConsoleFixture::Console;
    using ConsoleFixture::deployment;
    using ConsoleFixture::desktop;
    using ConsoleFixture::PressConnect;
    using ConsoleFixture::Quit;
    using ConsoleFixture::Start;
    using ConsoleFixture::Waterfall;

  private:
    void TestBody() override {}

    void CheckLog();
    static void CheckSent(VirtualTCPSocket& link);
    void CheckDatagrams();
    bool IsRecording();
    void CheckRecordings(std::string_view expected);
};

} // namespace larkspool::fuzz
