#pragma once

#include "platform/FileLock.h"
#include "platform/FolderItem.h"
#include "platform/HTTPSocket.h"
#include "platform/LogFile.h"
#include "platform/Menu.h"
#include "platform/RolledFile.h"
#include "platform/SoundLibrary.h"
#include "platform/StayAwake.h"
#include "platform/TCPServer.h"
#include "platform/TCPSocket.h"
#include "platform/Timer.h"
#include "platform/UDPSocket.h"
#include "platform/Window.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace larkspool {

// A question with up to three buttons. An empty caption leaves its button out.
struct MessageDialog {
    enum class Answer { Action, Cancel, Alternate };

    std::string message;
    std::string actionCaption = "OK";
    std::string cancelCaption;
    std::string alternateCaption;
    bool alternateEnabled = true;
};

struct OperatingSystemVersion {
    int major = 0;
    int minor = 0;
};

enum class SpecialFolder {
    Program,         // the folder of the executable
    Preferences,     // the program's own folder in the user's settings
    ApplicationData, // the program's own folder in the user's data
    State,           // the program's own folder for its log
    Documents
};

enum class QuitCause { User, Signal, Logout };

// Everything that the program needs from its computer. One object, made before the program and
// destroyed after it; used on the event loop's thread only. Boxes and dialogs never nest an
// event loop: they are shown, the call returns, and an answer comes by callback if there is one,
// perhaps after the window that asked is destroyed (see Window::LifeToken).
class Desktop {
  public:
    virtual ~Desktop() = default;

    // Makers.
    virtual std::unique_ptr<WindowView> MakeWindowView(Window& window) = 0;
    virtual std::unique_ptr<TCPSocket> MakeTCPSocket() = 0;
    virtual std::unique_ptr<TCPServer> MakeTCPServer() = 0;
    virtual std::unique_ptr<UDPSocket> MakeUDPSocket() = 0;
    virtual std::unique_ptr<HTTPSocket> MakeHTTPSocket() = 0;
    virtual std::unique_ptr<Timer> MakeTimer() = 0;

    // Time.
    virtual double UtcNow() const = 0; // seconds since 1970-01-01 UTC, with a fraction
    // Can't be canceled: what the call uses must outlive it, or be checked by a life token.
    virtual void CallLater(int milliseconds, std::function<void()> call) = 0;

    // Talking to the user.
    virtual void MsgBox(const std::string& text) = 0; // ignored while one with this text is open
    virtual void ShowDialog(const MessageDialog& dialog,
                            std::function<void(MessageDialog::Answer)> answered) = 0;
    virtual void ShowOpenFileDialog(const std::string& filter,
                                    std::function<void(std::optional<FolderItem>)> chosen) = 0;
    virtual void ShowSaveFileDialog(const std::string& filter, const std::string& defaultName,
                                    std::function<void(std::optional<FolderItem>)> chosen) = 0;
    virtual void ShowToolTip(const std::string& text) = 0; // 20 points below the pointer
    virtual void HideToolTip() = 0;
    virtual void OpenInBrowser(const std::string& url) = 0;
    virtual std::optional<std::string> ClipboardText() const = 0; // empty: it holds no text
    virtual bool ShiftKeyDown() const = 0;
    virtual bool ControlKeyDown() const = 0;

    // The computer.
    virtual FolderItem Folder(SpecialFolder kind) = 0; // created if missing
    // Null if another holder has the file. If the file system has no locks, or the file does not
    // exist, the lock has no effect.
    virtual std::unique_ptr<FileLock> Lock(const FolderItem& file) = 0;
    // Waits until the data of the file, or the names in the folder, would survive a power cut.
    // False: the disk has failed.
    virtual bool Settle(const FolderItem& item) = 0;
    // If the disk is too slow, lines are dropped. The destructor waits a fraction of a second for
    // the last lines.
    virtual std::unique_ptr<LogFile> MakeLogFile(RolledFile file) = 0;
    // Asks the computer not to go to sleep by itself, for that reason. answered is called later:
    // with the computer's own words if it refuses, with an empty text if it agrees. It is not
    // called if the computer has no such service, or after the object is destroyed.
    virtual std::unique_ptr<StayAwake>
    KeepAwake(const std::string& reason,
              std::function<void(const std::string& refusal)> answered) = 0;
    virtual std::string RandomBytes(std::size_t count) = 0; // fit for cryptography
    virtual OperatingSystemVersion SystemVersion() const = 0;
    virtual SoundLibrary& Sound() = 0;

    // The item of that name beside the program if there is one, else in the folder.
    FolderItem BesideProgramOrIn(SpecialFolder folder, const std::string& name);

    // Ends the event loop once the event that runs now is over.
    virtual void EndEventLoop() = 0;

    // Whether the item has a handler while this window (or none) is in front.
    bool Answers(const MenuItem& item, const Window* front) const;
    void Perform(const MenuItem& item, const Window* front) const;

    // Runs an event's handler. Every event comes through here, so that a function missing in the
    // sound library costs one box and not the program. Not stored, so that a block of
    // sound allocates no memory.
    template <typename Handler>
    void Raise(const Handler& handler) {
        try {
            handler();
        } catch (const FunctionNotFound& missing) {
            ReportMissing(missing);
        }
    }
    // The same for a stored handler, which may be empty. Runs a copy, because a handler may
    // replace itself or destroy its owner.
    void Raise(std::function<void()> handler);
    void ReportMissing(const FunctionNotFound& missing); // once per function

    MenuBar menuBar;                              // shared by all windows
    MenuHandlers applicationHandlers;             // for the items that no window in front handles
    std::function<void(QuitCause)> quitRequested; // menu, signal or logout: end the program

  private:
    std::set<std::string> reported;
};

} // namespace larkspool
