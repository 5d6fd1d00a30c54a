#pragma once

#include "shell/App.h"
#include "support/VirtualDesktop.h"
#include "support/VirtualReceiver.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace larkspool {

// The whole program on a virtual desktop, with a receiver at the other end of its sockets. Tests
// act as the user and as the receiver, and look at what shows, what goes over the wire and what
// lies on disk.
class ConsoleFixture : public ::testing::Test {
  protected:
    using Strings = std::vector<std::string>;

    void Start(); // opens the program, as a user's click on its icon would
    void Quit(QuitCause cause = QuitCause::User);
    void Restart() {
        Quit();
        Start();
    }
    // Picks a menu item while that window is in front.
    void Perform(const std::string& menuItem, const Window* front) {
        desktop.Perform(MenuItem{menuItem, "", ""}, front);
        desktop.Advance(0);
    }

    // From the Connect button to where frames flow. What is sent up to the upgrade is dropped.
    void PressConnect(); // and waits until the sockets are connecting
    void AcceptLinks();  // both TCP connections stand, the requests are out
    void Upgrade();      // both links speak WebSocket
    void Stream(const std::string& rate = "12000"); // the receiver tells init and rate
    void Answer(const std::string& rate = "12000"); // the receiver's part of it all
    void ConnectAndStream();                        // all of it; what was sent meanwhile is dropped

    Window1& Console() { return app->Console(); }
    VirtualReceiver Audio() { return VirtualReceiver(*desktop.tcpSockets.at(0)); }
    VirtualReceiver Waterfall() { return VirtualReceiver(*desktop.tcpSockets.at(1)); }
    bool LogHas(const std::string& row);
    Strings Log();

    std::vector<FolderItem> Recordings(); // in the order of their names
    // The sound in a file, whose header must be what players expect. Written without any of the
    // program's own knowledge of such files.
    static std::string SoundIn(const FolderItem& item, std::uint32_t rate = 12000);

    VirtualDesktop desktop;
    Deployment deployment;
    std::unique_ptr<App> app;
};

} // namespace larkspool
