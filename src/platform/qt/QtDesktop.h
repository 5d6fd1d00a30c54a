#pragma once

#include "platform/MakeDesktop.h"
#include "platform/qt/Application.h"
#include "platform/qt/Boxes.h"
#include "platform/qt/EndingLimit.h"
#include "platform/qt/QtSoundLibrary.h"
#include "platform/qt/SignalWatcher.h"

#include <QNetworkAccessManager>

#include <memory>
#include <optional>
#include <string>

namespace larkspool {

// The desktop on Qt. It knows nothing of the program but what the models and handlers tell it.
class QtDesktop : public RunningDesktop {
  public:
    QtDesktop(int& argc, char** argv, const std::string& applicationName);
    ~QtDesktop() override;

    int Run(const std::function<void()>& opened) override;
    void EndEventLoop() override;

    std::unique_ptr<WindowView> MakeWindowView(Window& window) override;
    std::unique_ptr<TCPSocket> MakeTCPSocket() override;
    std::unique_ptr<TCPServer> MakeTCPServer() override;
    std::unique_ptr<UDPSocket> MakeUDPSocket() override;
    std::unique_ptr<HTTPSocket> MakeHTTPSocket() override;
    std::unique_ptr<Timer> MakeTimer() override;

    double UtcNow() const override;
    void CallLater(int milliseconds, std::function<void()> call) override;

    void MsgBox(const std::string& text) override;
    void ShowDialog(const MessageDialog& dialog,
                    std::function<void(MessageDialog::Answer)> answered) override;
    void ShowOpenFileDialog(const std::string& filter,
                            std::function<void(std::optional<FolderItem>)> chosen) override;
    void ShowSaveFileDialog(const std::string& filter, const std::string& defaultName,
                            std::function<void(std::optional<FolderItem>)> chosen) override;
    void ShowToolTip(const std::string& text) override;
    void HideToolTip() override;
    void OpenInBrowser(const std::string& url) override;
    std::optional<std::string> ClipboardText() const override;
    bool ShiftKeyDown() const override;
    bool ControlKeyDown() const override;

    FolderItem Folder(SpecialFolder kind) override;
    std::unique_ptr<FileLock> Lock(const FolderItem& file) override;
    bool Settle(const FolderItem& item) override;
    std::unique_ptr<LogFile> MakeLogFile(RolledFile file) override;
    std::unique_ptr<StayAwake>
    KeepAwake(const std::string& reason,
              std::function<void(const std::string& refusal)> answered) override;
    std::string RandomBytes(std::size_t count) override;
    OperatingSystemVersion SystemVersion() const override;
    SoundLibrary& Sound() override { return sound; }

  private:
    void Quit(QuitCause cause);

    EndingLimit endingLimit;     // first, so that it outlasts the others
    std::optional<int> exitCode; // once the event loop has ended
    Application application;
    SignalWatcher signalWatcher;
    Boxes boxes;
    QtSoundLibrary sound;
    std::unique_ptr<QNetworkAccessManager> network; // made at the first fetch
};

} // namespace larkspool
