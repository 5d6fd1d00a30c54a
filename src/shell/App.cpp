#include "shell/App.h"

#include "directory/KiwiListClass.h"
#include "platform/Text.h"
#include "schedule/SkedWindow.h"
#include "shell/Version.h"

#include <algorithm>
#include <utility>

namespace larkspool {

namespace {

std::string CauseText(QuitCause cause) {
    switch (cause) {
    case QuitCause::User:
        return "because the user quits";
    case QuitCause::Signal:
        return "because of a signal";
    case QuitCause::Logout:
        return "because the user logs out";
    }
    return "";
}

} // namespace

App::App(Desktop& theDesktop, Deployment values)
    : deployment(std::move(values)), nightLog(theDesktop), desktop(theDesktop),
      recordingRepair(theDesktop),
      nightWatch(theDesktop, [this](const std::string& row) { window1->Log(row); }) {
    desktop.quitRequested = [this](QuitCause cause) { Quit(cause); };
    MakeMenu();
}

App::~App() {
    desktop.quitRequested = nullptr;
    desktop.applicationHandlers.Clear();
}

void App::Event_Open() {
    nightLog.Add(std::string("Larkspool ") + version::Short + " has started");
    ReadPrefs();
    // Read before the console exists, because creating it overwrites the mode.
    const int lastMode = WholePart<int>(static_cast<double>(prefs.prefsLastMode));
    window1 = std::make_unique<Window1>(desktop, *this);
    window1->closed = [this] { WindowClosed(); };
    window1->Event_Open();
    window1->init(lastMode);
    isOpen = true;
    window1->Show();
    recordingRepair.Start();
    PlanUpdateCheck();
}

// Some seconds after the start, when the console is visible and the sound devices are open.
void App::PlanUpdateCheck() {
    constexpr int Delay = 5000; // ms
    if (deployment.versionHost.empty() || prefs.noUpdateCheck) {
        return;
    }
    updateTimer = desktop.MakeTimer();
    updateTimer->action = [this] { CheckForTheLatestVersion(); };
    updateTimer->SetPeriod(Delay);
    updateTimer->SetMode(Timer::Mode::Single);
}

void App::CheckForTheLatestVersion() {
    versionCheck = std::make_unique<VersionCheck>(desktop, prefs, deployment.versionHost);
    versionCheck->CheckForLatestVersion(deployment.programNumber, deployment.downloadPage);
}

void App::OpenWindow(std::unique_ptr<Window> window) {
    Window& opened = *window;
    furtherWindows.push_back(std::move(window));
    opened.closed = [this, &opened] {
        // Not at once: this is called from inside the window's own close handling.
        desktop.CallLater(0, [this, &opened] {
            std::erase_if(furtherWindows, [&opened](const auto& w) { return w.get() == &opened; });
        });
        WindowClosed();
    };
    opened.Show();
}

std::vector<Window*> App::AllWindows() const {
    std::vector<Window*> all = {window1.get()};
    for (const auto& window : furtherWindows) {
        all.push_back(window.get());
    }
    return all;
}

void App::WatchTheNight() {
    const bool scheduled =
        std::any_of(furtherWindows.begin(), furtherWindows.end(), [](const auto& window) {
            const auto* schedule = dynamic_cast<const SkedWindow*>(window.get());
            return schedule != nullptr && schedule->schedulesEnabled;
        });
    nightWatch.Look(scheduled || window1->IsRecording());
}

void App::MyShowToolTip(const std::string& text) {
    if (!prefsHideTooltips) {
        desktop.ShowToolTip(text);
    }
}

Date App::GetCurrentUtcDate() const { return Date::FromUnixSeconds(desktop.UtcNow()); }

// The program ends with its last window.
void App::WindowClosed() {
    const auto windows = AllWindows();
    if (std::none_of(windows.begin(), windows.end(), [](Window* w) { return w->Visible(); })) {
        Quit(QuitCause::User);
    }
}

bool App::EndsWith(const Window& closing) const {
    const auto windows = AllWindows();
    return std::none_of(windows.begin(), windows.end(), [&closing](const Window* window) {
        return window != &closing && window->Visible();
    });
}

void App::Quit(QuitCause cause) {
    if (isQuitting) {
        if (cause != QuitCause::User) {
            desktop.EndEventLoop(); // without waiting for an answer
        }
        return;
    }
    isQuitting = true;
    updateTimer.reset();
    versionCheck.reset();
    if (!isOpen) {
        desktop.EndEventLoop();
        return;
    }
    nightLog.Add(std::string("Larkspool ends, ") + CauseText(cause));
    for (const Window* window : AllWindows()) {
        window->CommitEdits();
    }
    if (!WritePrefs()) {
        TellLoss("The settings could not be saved in " + PreferencesFile().Path().string() +
                 ". Larkspool will start with the earlier ones next time.");
    }
    CloseEverything();
    if (losses.empty() || cause != QuitCause::User) {
        desktop.EndEventLoop();
    } else {
        TellLosses();
    }
}

void App::CloseEverything() {
    for (Window* window : AllWindows()) {
        window->Event_CancelClose(true);
        window->Hide();
    }
    theKiwiList.reset(); // no page or error may arrive from now on
}

void App::TellLoss(const std::string& text) {
    if (isQuitting) {
        losses += losses.empty() ? text : "\n\n" + text;
    } else {
        desktop.MsgBox(text);
    }
}

void App::TellLosses() {
    MessageDialog dialog;
    dialog.message = losses;
    desktop.ShowDialog(dialog, [this](MessageDialog::Answer) { desktop.EndEventLoop(); });
}

} // namespace larkspool
