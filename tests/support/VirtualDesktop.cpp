#include "support/VirtualDesktop.h"

#include <algorithm>
#include <random>
#include <utility>

namespace larkspool {

namespace {

class VirtualWindowView : public WindowView {
  public:
    VirtualWindowView(Window& shown, std::vector<Window*>& all) : window(shown), windows(all) {
        windows.push_back(&window);
    }
    ~VirtualWindowView() override { std::erase(windows, &window); }
    VirtualWindowView(const VirtualWindowView&) = delete;
    VirtualWindowView& operator=(const VirtualWindowView&) = delete;

    void Changed(WindowAspect /*aspect*/) override {}
    void ComeToFront() override {
        std::erase(windows, &window);
        windows.push_back(&window);
    }

  private:
    Window& window;
    std::vector<Window*>& windows;
};

class WrittenAtOnce : public LogFile {
  public:
    explicit WrittenAtOnce(RolledFile written) : file(std::move(written)) {}
    void Write(std::string line) override { file.Append(line + "\n"); }

  private:
    RolledFile file;
};

class Hold : public StayAwake {
  public:
    explicit Hold(int& counter) : count(counter) { ++count; }
    ~Hold() override { --count; }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

    std::shared_ptr<int> life = std::make_shared<int>(0);

  private:
    int& count;
};

} // namespace

VirtualDesktop::VirtualDesktop()
    : httpSockets(std::make_shared<std::vector<VirtualHTTPSocket*>>()),
      root(std::filesystem::temp_directory_path() /
           ("larkspool-test-" + std::to_string(std::random_device{}()))) {
    queue.raise = [this](const std::function<void()>& event) { Raise([&event] { event(); }); };
}

VirtualDesktop::~VirtualDesktop() {
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
}

std::unique_ptr<WindowView> VirtualDesktop::MakeWindowView(Window& window) {
    return std::make_unique<VirtualWindowView>(window, windows);
}

std::unique_ptr<TCPSocket> VirtualDesktop::MakeTCPSocket() {
    auto socket = std::make_unique<VirtualTCPSocket>(queue);
    tcpSockets.push_back(socket.get());
    return socket;
}

std::unique_ptr<TCPServer> VirtualDesktop::MakeTCPServer() {
    auto server = std::make_unique<VirtualTCPServer>(queue);
    tcpServers.push_back(server.get());
    return server;
}

std::unique_ptr<UDPSocket> VirtualDesktop::MakeUDPSocket() {
    auto socket = std::make_unique<VirtualUDPSocket>(queue);
    udpSockets.push_back(socket.get());
    return socket;
}

std::unique_ptr<HTTPSocket> VirtualDesktop::MakeHTTPSocket() {
    return std::make_unique<VirtualHTTPSocket>(httpSockets);
}

std::unique_ptr<Timer> VirtualDesktop::MakeTimer() { return std::make_unique<VirtualTimer>(queue); }

void VirtualDesktop::CallLater(int milliseconds, std::function<void()> call) {
    queue.After(milliseconds / 1000.0, std::move(call));
}

void VirtualDesktop::MsgBox(const std::string& text) {
    if (std::find(boxes.begin(), boxes.end(), text) == boxes.end()) {
        boxes.push_back(text);
    }
}

void VirtualDesktop::ShowDialog(const MessageDialog& dialog,
                                std::function<void(MessageDialog::Answer)> answered) {
    dialogs.push_back(dialog);
    if (answers.empty()) {
        return;
    }
    queue.After(0,
                [answered = std::move(answered), answer = answers.front()] { answered(answer); });
    answers.pop_front();
}

void VirtualDesktop::Choose(std::function<void(std::optional<FolderItem>)> chosen) {
    if (chosenFiles.empty()) {
        return;
    }
    queue.After(0, [chosen = std::move(chosen), file = chosenFiles.front()] { chosen(file); });
    chosenFiles.pop_front();
}

void VirtualDesktop::ShowOpenFileDialog(const std::string&,
                                        std::function<void(std::optional<FolderItem>)> chosen) {
    Choose(std::move(chosen));
}

void VirtualDesktop::ShowSaveFileDialog(const std::string&, const std::string& defaultName,
                                        std::function<void(std::optional<FolderItem>)> chosen) {
    offeredName = defaultName;
    Choose(std::move(chosen));
}

FolderItem VirtualDesktop::Folder(SpecialFolder kind) {
    static constexpr const char* Names[] = {"program", "preferences", "data", "state", "documents"};
    const std::filesystem::path folder = root / Names[static_cast<std::size_t>(kind)];
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    return FolderItem(folder);
}

std::unique_ptr<LogFile> VirtualDesktop::MakeLogFile(RolledFile file) {
    return std::make_unique<WrittenAtOnce>(std::move(file));
}

std::unique_ptr<StayAwake>
VirtualDesktop::KeepAwake(const std::string&, std::function<void(const std::string&)> answered) {
    auto hold = std::make_unique<Hold>(awakeHolds);
    if (answerToHold) {
        queue.After(0, [answered = std::move(answered), answer = *answerToHold,
                        life = std::weak_ptr<int>(hold->life)] {
            if (!life.expired()) {
                answered(answer);
            }
        });
    }
    return hold;
}

} // namespace larkspool
