#pragma once

#include "platform/Desktop.h"
#include "platform/qt/PosixFiles.h"
#include "support/RecordingSoundLibrary.h"
#include "support/VirtualSockets.h"

#include <deque>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace larkspool {

// A computer that the test is. The clock moves when the test moves it, the sockets' other ends are
// the test's, dialogs are noted and answered from a list, files lie in a folder of their own that
// goes with the object.
class VirtualDesktop : public Desktop {
  public:
    VirtualDesktop() {
        queue.raise = [this](const auto& event) { Raise([&event] { event(); }); };
    }
    ~VirtualDesktop() override {
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }

    // Lets the event loop run for so long; 0 runs what is due at this moment.
    void Advance(double seconds) { queue.Advance(seconds); }

    std::unique_ptr<WindowView> MakeWindowView(Window& window) override;
    std::unique_ptr<TCPSocket> MakeTCPSocket() override { return Make(tcpSockets); }
    std::unique_ptr<TCPServer> MakeTCPServer() override { return Make(tcpServers); }
    std::unique_ptr<UDPSocket> MakeUDPSocket() override { return Make(udpSockets); }
    std::unique_ptr<HTTPSocket> MakeHTTPSocket() override {
        return std::make_unique<VirtualHTTPSocket>(httpSockets);
    }
    std::unique_ptr<Timer> MakeTimer() override;
    double UtcNow() const override { return queue.Now(); }
    void CallLater(int milliseconds, std::function<void()> call) override {
        queue.After(milliseconds / 1000.0, std::move(call));
    }
    void MsgBox(const std::string& text) override { boxes.push_back(text); }
    void ShowDialog(const MessageDialog& dialog,
                    std::function<void(MessageDialog::Answer)> answered) override {
        dialogs.push_back(dialog);
        Reply(answers, std::move(answered));
    }
    void ShowOpenFileDialog(const std::string&,
                            std::function<void(std::optional<FolderItem>)> chosen) override {
        Reply(chosenFiles, std::move(chosen));
    }
    void ShowSaveFileDialog(const std::string&, const std::string& defaultName,
                            std::function<void(std::optional<FolderItem>)> chosen) override {
        offeredName = defaultName;
        Reply(chosenFiles, std::move(chosen));
    }
    void ShowToolTip(const std::string& text) override { toolTip = text; }
    void HideToolTip() override { toolTip.clear(); }
    void OpenInBrowser(const std::string& url) override { openedPages.push_back(url); }
    std::optional<std::string> ClipboardText() const override { return clipboard; }
    bool ShiftKeyDown() const override { return shiftKey; }
    bool ControlKeyDown() const override { return controlKey; }
    FolderItem Folder(SpecialFolder kind) override {
        static constexpr const char* Names[] = {"program", "preferences", "data", "state",
                                                "documents"};
        FolderItem folder(root / Names[static_cast<std::size_t>(kind)]);
        std::error_code ignored;
        std::filesystem::create_directories(folder.Path(), ignored);
        return folder;
    }
    std::unique_ptr<FileLock> Lock(const FolderItem& file) override { return LockFile(file); }
    bool Settle(const FolderItem& item) override { return SettleFile(item); }
    std::unique_ptr<LogFile> MakeLogFile(RolledFile file) override;
    std::unique_ptr<StayAwake> KeepAwake(const std::string& reason,
                                         std::function<void(const std::string&)> answered) override;
    std::string RandomBytes(std::size_t count) override { return std::string(count, 'k'); }
    OperatingSystemVersion SystemVersion() const override { return {12, 5}; }
    SoundLibrary& Sound() override { return sound; }
    void EndEventLoop() override { hasEnded = true; }

    // What the test sees and sets.
    EventQueue queue;
    RecordingSoundLibrary sound;
    std::vector<Window*> windows;              // that have been shown, the one in front last
    std::vector<VirtualTCPSocket*> tcpSockets; // in the order in which they were made
    std::vector<VirtualUDPSocket*> udpSockets;
    std::vector<VirtualTCPServer*> tcpServers;
    std::shared_ptr<std::vector<VirtualHTTPSocket*>> httpSockets = // those that are alive
        std::make_shared<std::vector<VirtualHTTPSocket*>>();
    std::vector<std::string> boxes;                    // texts of the message boxes, in order
    std::vector<MessageDialog> dialogs;                // those shown
    std::deque<MessageDialog::Answer> answers;         // to come; without one a dialog stays open
    std::deque<std::optional<FolderItem>> chosenFiles; // answers of the file dialogs
    std::string offeredName;                           // of the last save dialog
    std::string toolTip;
    std::vector<std::string> openedPages;
    std::optional<std::string> clipboard;
    int awakeHolds = 0;                           // while the program keeps the computer awake
    std::optional<std::string> answerToHold = ""; // a refusal, or nothing: there is no such service
    bool shiftKey = false;
    bool controlKey = false;
    bool hasEnded = false;

  private:
    template <typename Socket>
    std::unique_ptr<Socket> Make(std::vector<Socket*>& sockets) {
        auto socket = std::make_unique<Socket>(queue);
        sockets.push_back(socket.get());
        return socket;
    }
    // By the next of the replies to come, if there is one.
    template <typename Answer>
    void Reply(std::deque<Answer>& replies, std::function<void(Answer)> answered) {
        if (!replies.empty()) {
            queue.After(
                0, [answered = std::move(answered), reply = replies.front()] { answered(reply); });
            replies.pop_front();
        }
    }

    std::filesystem::path root = std::filesystem::temp_directory_path() /
                                 ("larkspool-test-" + std::to_string(std::random_device{}()));
};

} // namespace larkspool
