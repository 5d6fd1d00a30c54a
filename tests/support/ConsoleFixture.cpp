#include "support/ConsoleFixture.h"

#include <algorithm>
#include <filesystem>

namespace larkspool {

void ConsoleFixture::Start() {
    desktop.tcpSockets.clear();
    desktop.udpSockets.clear();
    desktop.hasEnded = false;
    app.reset(); // one program at a time on this computer
    app = std::make_unique<App>(desktop, deployment);
    app->Event_Open();
    desktop.Advance(0);
}

void ConsoleFixture::Quit(QuitCause cause) {
    desktop.quitRequested(cause);
    desktop.Advance(0);
    EXPECT_TRUE(desktop.hasEnded);
    app.reset();
    desktop.queue.Clear();
}

void ConsoleFixture::PressConnect() {
    Console().TextFieldAddress.SetText("sdr.example.net");
    Console().PushButtonConnect.Push();
    desktop.Advance(1.0);
}

void ConsoleFixture::AcceptLinks() {
    Audio().socket.Accept();
    Waterfall().socket.Accept();
    desktop.Advance(0);
}

void ConsoleFixture::Upgrade() {
    Audio().Upgrade();
    Waterfall().Upgrade();
    desktop.Advance(0);
}

void ConsoleFixture::Stream(const std::string& rate) {
    Audio().Message(" audio_init=0");
    Audio().Message(" audio_rate=" + rate);
    desktop.Advance(0);
}

void ConsoleFixture::ConnectAndStream() {
    PressConnect();
    AcceptLinks();
    Upgrade();
    Stream();
    Audio().TakeRequest();
    Waterfall().TakeRequest();
}

std::vector<std::string> ConsoleFixture::Log() {
    std::vector<std::string> rows;
    for (int i = 0; i < Console().Listbox1.ListCount(); ++i) {
        rows.push_back(Console().Listbox1.Cell(i, 0));
    }
    return rows;
}

bool ConsoleFixture::LogHas(const std::string& row) {
    const auto rows = Log();
    return std::find(rows.begin(), rows.end(), row) != rows.end();
}

std::vector<FolderItem> ConsoleFixture::Recordings() {
    std::vector<FolderItem> files;
    const FolderItem documents = desktop.Folder(SpecialFolder::Documents);
    for (const auto& entry : std::filesystem::directory_iterator(documents.Path())) {
        files.emplace_back(entry.path());
    }
    std::sort(files.begin(), files.end(),
              [](const FolderItem& a, const FolderItem& b) { return a.Name() < b.Name(); });
    return files;
}

} // namespace larkspool
