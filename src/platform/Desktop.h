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
    Program,         // where the executable stands
    Preferences,     // the program's own folder in the user's settings
    ApplicationData, // the program's own folder among the user's data
    State,           // the program's own folder for what it notes while it runs
    Documents
};

enum class QuitCause { User, Signal, Logout };

// Everything that the program asks of the computer it runs on. One object, made before the program
// and alive after it; all of it belongs to the event loop's thread. Boxes and dialogs never nest an
// event loop: they are shown, the call returns, and an answer comes by callback if there is one,
// perhaps after the window that asked is gone (see Window::LifeToken).
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
    // Can't be withdrawn: what the call needs must outlive it, or be asked by a life token.
    virtual void CallLater(int milliseconds, std::function<void()> call) = 0;

    // Talking to the user.
    virtual void MsgBox(const std::string& text) = 0; // not while one with this text is open
    virtual void ShowDialog(const MessageDialog& dialog,
                            std::function<void(MessageDialog::Answer)> answered) = 0;
    virtual void ShowOpenFileDialog(const std::string& filter,
                                    std::function<void(std::optional<FolderItem>)> chosen) = 0;
    virtual void ShowSaveFileDialog(const std::string& filter, const std::string& defaultName,
                                    std::function<void(std::optional<FolderItem>)> chosen) = 0;
    virtual void ShowToolTip(const std::string& text) = 0; // 20 points below the pointer
    virtual void HideToolTip() = 0;
    virtual void OpenInBrowser(const std::string& url) = 0;
    virtual std::optional<std::string> ClipboardText() const = 0; // nothing: it holds no text
    virtual bool ShiftKeyDown() const = 0;
    virtual bool ControlKeyDown() const = 0;

    // The computer.
    virtual FolderItem Folder(SpecialFolder kind) = 0; // made if missing
    // Null if somebody else holds the file. Where the file system knows no locks, or there is no
    // such file, the lock keeps nobody out.
    virtual std::unique_ptr<FileLock> Lock(const FolderItem& file) = 0;
    // Waits until what was written to the file, or the names in the folder, would survive a power
    // cut. False: the disk has refused it.
    virtual bool Settle(const FolderItem& item) = 0;
    // Lines that the disk takes too slowly are dropped. Lines written when the object goes are
    // given a fraction of a second.
    virtual std::unique_ptr<LogFile> MakeLogFile(RolledFile file) = 0;
    // Asks the computer not to go to sleep by itself, for that reason. answered comes later, with
    // the computer's own words if it refuses, with nothing if it agrees, and not at all where there
    // is nobody to ask or the object has gone.
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

    // Whether somebody answers the item while this window (or none) is in front.
    bool Answers(const MenuItem& item, const Window* front) const;
    void Perform(const MenuItem& item, const Window* front) const;

    // Runs an event's handler. Every event comes through here, so that a function missing in the
    // sound library costs one box and not the program. Called in place, so that a block of sound
    // costs no memory.
    template <typename Handler>
    void Raise(const Handler& handler) {
        try {
            handler();
        } catch (const FunctionNotFound& missing) {
            ReportMissing(missing);
        }
    }
    // The same for a handler that is kept somewhere, or is empty. Runs a copy, because a handler
    // may replace itself or end what keeps it.
    void Raise(std::function<void()> handler);
    void ReportMissing(const FunctionNotFound& missing); // once a function

    MenuBar menuBar;                  // the one of all windows
    MenuHandlers applicationHandlers; // what the application answers, whatever is in front
    std::function<void(QuitCause)> quitRequested; // menu, signal or logout: end the program

  private:
    std::set<std::string> reported;
};

} // namespace larkspool
