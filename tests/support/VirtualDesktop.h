#pragma once

#include "platform/Desktop.h"
#include "platform/qt/PosixFiles.h"
#include "support/EventQueue.h"
#include "support/VirtualServer.h"
#include "support/VirtualServices.h"
#include "support/VirtualSocket.h"

#include <deque>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace larkspool {

// A computer that the test is. The clock moves when the test moves it, the sockets' other ends are
// the test's, dialogs are noted and answered from a list, files lie in a folder of their own that
// goes with the object.
class VirtualDesktop : public Desktop {
  public:
    VirtualDesktop();
    ~VirtualDesktop() override;

    // Lets the event loop run for so long; 0 runs what is due at this moment.
    void Advance(double seconds) { queue.Advance(seconds); }

    std::unique_ptr<WindowView> MakeWindowView(Window& window) override;
    std::unique_ptr<TCPSocket> MakeTCPSocket() override;
    std::unique_ptr<TCPServer> MakeTCPServer() override;
    std::unique_ptr<UDPSocket> MakeUDPSocket() override;
    std::unique_ptr<HTTPSocket> MakeHTTPSocket() override;
    std::unique_ptr<Timer> MakeTimer() override;
    double UtcNow() const override { return queue.Now(); }
    void CallLater(int milliseconds, std::function<void()> call) override;
    void MsgBox(const std::string& text) override;
    void ShowDialog(const MessageDialog& dialog,
                    std::function<void(MessageDialog::Answer)> answered) override;
    void ShowOpenFileDialog(const std::string& filter,
                            std::function<void(std::optional<FolderItem>)> chosen) override;
    void ShowSaveFileDialog(const std::string& filter, const std::string& defaultName,
                            std::function<void(std::optional<FolderItem>)> chosen) override;
    void ShowToolTip(const std::string& text) override { toolTip = text; }
    void HideToolTip() override { toolTip.clear(); }
    void OpenInBrowser(const std::string& url) override { openedPages.push_back(url); }
    std::optional<std::string> ClipboardText() const override { return clipboard; }
    bool ShiftKeyDown() const override { return shiftKey; }
    bool ControlKeyDown() const override { return controlKey; }
    FolderItem Folder(SpecialFolder kind) override;
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
    std::shared_ptr<std::vector<VirtualHTTPSocket*>> httpSockets; // those that are alive
    std::vector<std::string> boxes;     // texts of the message boxes, in order; each stays open
    std::vector<MessageDialog> dialogs; // those shown
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
    void Choose(std::function<void(std::optional<FolderItem>)> chosen);

    std::filesystem::path root;
};

} // namespace larkspool
