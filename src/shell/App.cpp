#include "shell/App.h"

#include "platform/Text.h"
#include "shell/MainMenuBar.h"

#include <utility>

namespace larkspool {

App::App(Desktop& host, Deployment values) : deployment(std::move(values)), desktop(host) {
    desktop.menuBar = MakeMainMenuBar();
    desktop.quitRequested = [this](QuitCause cause) { Quit(cause); };
    AddMenuHandlers();
}

App::~App() = default;

void App::Event_Open() {
    ReadPrefs();
    // Taken before the console exists, because building it overwrites the mode.
    const int lastMode = WholePart<int>(static_cast<double>(prefs.prefsLastMode));
    window1 = std::make_unique<Window1>(desktop, *this);
    window1->closed = [this] { WindowClosed(); };
    window1->Event_Open();
    window1->init(lastMode);
    isOpen = true;
    window1->Show();
}

void App::MyShowToolTip(const std::string& text) {
    if (!prefsHideTooltips) {
        desktop.ShowToolTip(text);
    }
}

Date App::GetCurrentUtcDate() const { return Date::FromUnixSeconds(desktop.UtcNow()); }

void App::WindowClosed() {
    if (!window1->Visible()) {
        Quit(QuitCause::User);
    }
}

bool App::Event_CancelClose() const { return WritePrefs(); }

void App::Quit(QuitCause cause) {
    if (isQuitting) {
        return;
    }
    isQuitting = true;
    if (!isOpen) {
        desktop.EndEventLoop();
        return;
    }
    const bool written = Event_CancelClose();
    window1->Event_CancelClose(true);
    if (written || cause != QuitCause::User) {
        desktop.EndEventLoop();
        return;
    }
    window1->Hide();
    MessageDialog dialog;
    dialog.message = "The settings could not be saved in " + PreferencesFile().Path().string() +
                     ". Larkspool will start with the earlier ones next time.";
    desktop.ShowDialog(dialog, [this](MessageDialog::Answer) { desktop.EndEventLoop(); });
}

} // namespace larkspool
