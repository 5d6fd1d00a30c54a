#pragma once

#include "shell/App.h"
#include "support/Files.h"
#include "support/VirtualDesktop.h"
#include "support/VirtualReceiver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
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

    void Start() { // opens the program, as a user's click on its icon would
        desktop.tcpSockets.clear();
        desktop.udpSockets.clear();
        desktop.tcpServers.clear();
        desktop.hasEnded = false;
        app.reset(); // one program at a time on this computer
        desktop.queue.Clear();
        app = std::make_unique<App>(desktop, deployment);
        app->Event_Open();
        desktop.Advance(0);
    }
    void Quit(QuitCause cause = QuitCause::User) {
        desktop.quitRequested(cause);
        desktop.Advance(0);
        EXPECT_TRUE(desktop.hasEnded);
        app.reset();
        desktop.queue.Clear();
    }
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
    void PressConnect() { // and waits until the sockets are connecting
        Console().TextFieldAddress.SetText("sdr.example.net");
        Console().PushButtonConnect.Push();
        desktop.Advance(1.0);
    }
    void AcceptLinks() { // both TCP connections stand, the requests are out
        Audio().socket.Accept();
        Waterfall().socket.Accept();
        desktop.Advance(0);
    }
    void Upgrade() { // both links speak WebSocket
        Audio().Upgrade();
        Waterfall().Upgrade();
        desktop.Advance(0);
        TakeRequests();
    }
    void Stream(const std::string& rate = "12000") { // the receiver tells init and rate
        Audio().Message(" audio_init=0");
        Audio().Message(" audio_rate=" + rate);
        desktop.Advance(0);
    }
    void Answer(const std::string& rate = "12000") { // the receiver's part of it all
        AcceptLinks();
        Upgrade();
        Stream(rate);
    }
    void ConnectAndStream() { // all of it; what was sent meanwhile is dropped
        PressConnect();
        Answer();
        TakeRequests();
    }

    Window1& Console() { return app->Console(); }
    VirtualReceiver Audio() { return VirtualReceiver(*desktop.tcpSockets.at(0)); }
    VirtualReceiver Waterfall() { return VirtualReceiver(*desktop.tcpSockets.at(1)); }
    void TakeRequests() {
        Audio().TakeRequest();
        Waterfall().TakeRequest();
    }
    Strings Log() {
        Strings rows;
        for (int i = 0; i < Console().Listbox1.ListCount(); ++i) {
            rows.push_back(Console().Listbox1.Cell(i, 0));
        }
        return rows;
    }
    bool LogHas(const std::string& row) { return std::ranges::count(Log(), row) > 0; }

    std::vector<FolderItem> Recordings() { // in the order of their names
        std::vector<FolderItem> files;
        const FolderItem documents = desktop.Folder(SpecialFolder::Documents);
        for (const auto& entry : std::filesystem::directory_iterator(documents.Path())) {
            files.emplace_back(entry.path());
        }
        std::ranges::sort(files, {}, &FolderItem::Name);
        return files;
    }
    // The sound in a file, whose header must be what players expect. Written without any of the
    // program's own knowledge of such files.
    static std::string SoundIn(const FolderItem& item, std::uint32_t rate = 12000) {
        const std::string file = ContentOf(item);
        if (file.size() < 44) {
            ADD_FAILURE() << item.Name() << " has " << file.size() << " bytes";
            return {};
        }
        const std::uint32_t dataBytes = LittleEndianAt(file, 40);
        EXPECT_EQ(file.substr(0, 4) + file.substr(8, 8) + file.substr(36, 4), "RIFFWAVEfmt data");
        EXPECT_EQ(LittleEndianAt(file, 4), 36 + dataBytes);
        EXPECT_EQ(LittleEndianAt(file, 24), rate);
        EXPECT_EQ(dataBytes % 2, 0U);
        EXPECT_EQ((file.size() - 44) / 2, dataBytes / 2) << item.Name();
        return file.substr(44, dataBytes);
    }

    VirtualDesktop desktop;
    Deployment deployment;
    std::unique_ptr<App> app;
};

} // namespace larkspool
