#include "support/ConsoleFixture.h"

#include "support/Files.h"

#include <algorithm>
#include <filesystem>

namespace larkspool {

void ConsoleFixture::Start() {
    desktop.tcpSockets.clear();
    desktop.udpSockets.clear();
    desktop.hasEnded = false;
    app.reset(); // one program at a time on this computer
    desktop.queue.Clear();
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
    Audio().TakeRequest();
    Waterfall().TakeRequest();
}

void ConsoleFixture::Stream(const std::string& rate) {
    Audio().Message(" audio_init=0");
    Audio().Message(" audio_rate=" + rate);
    desktop.Advance(0);
}

void ConsoleFixture::Answer(const std::string& rate) {
    AcceptLinks();
    Upgrade();
    Stream(rate);
}

void ConsoleFixture::ConnectAndStream() {
    PressConnect();
    Answer();
    Audio().TakeRequest();
    Waterfall().TakeRequest();
}

ConsoleFixture::Strings ConsoleFixture::Log() {
    Strings rows;
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

std::string ConsoleFixture::SoundIn(const FolderItem& item, std::uint32_t rate) {
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

} // namespace larkspool
