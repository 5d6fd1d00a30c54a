#include "directory/WindowFavoriteKiwis.h"
#include "schedule/SkedWindow.h"
#include "shell/App.h"
#include "shell/Version.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

namespace larkspool {

// The items that the application answers, whatever window is in front. An item that nobody answers
// is disabled.
void App::AddMenuHandlers() {
    MenuHandlers& handlers = desktop.applicationHandlers;
    handlers.Add("EditAboutLarkspool", [this] { return EditAboutLarkspool_Action(); });
    handlers.Add("FileFavorites", [this] { return FileFavorites_Action(); });
    if (!deployment.productPage.empty()) {
        handlers.Add("FileVisitWebsiteForInstructions",
                     [this] { return FileVisitWebsiteForInstructions_Action(); });
    }
    handlers.Add("FileNewScheduleWindow", [this] { return FileNewScheduleWindow_Action(); });
    handlers.Add("FileOpenSchedule", [this] { return FileOpenSchedule_Action(); });
}

bool App::EditAboutLarkspool_Action() {
    MessageDialog dialog;
    dialog.message = std::string("Larkspool ") + version::Short +
                     "\n\nA client for networked shortwave receivers.";
    dialog.alternateCaption = "Visit Website";
    dialog.alternateEnabled = !deployment.productPage.empty();
    desktop.ShowDialog(dialog, [this](MessageDialog::Answer answer) {
        if (answer == MessageDialog::Answer::Alternate) {
            VisitProductPage();
        }
    });
    return true;
}

bool App::FileFavorites_Action() {
    // One that has just been closed may still be there, hidden.
    const auto open =
        std::find_if(furtherWindows.begin(), furtherWindows.end(), [](const auto& window) {
            return window->Visible() && dynamic_cast<WindowFavoriteKiwis*>(window.get()) != nullptr;
        });
    if (open != furtherWindows.end()) {
        (*open)->Show();
        return true;
    }
    auto window = std::make_unique<WindowFavoriteKiwis>(desktop, *this);
    window->Event_Open();
    OpenWindow(std::move(window));
    return true;
}

bool App::FileVisitWebsiteForInstructions_Action() {
    VisitProductPage();
    return true;
}

bool App::FileNewScheduleWindow_Action() {
    OpenWindow(std::make_unique<SkedWindow>(desktop, *this));
    return true;
}

// Always into a window of its own, never into the one in front.
bool App::FileOpenSchedule_Action() {
    desktop.ShowOpenFileDialog("text/txt", [this](const std::optional<FolderItem>& chosen) {
        if (chosen && !isQuitting) {
            OpenSchedule(*chosen, false);
        }
    });
    return true;
}

void App::OpenSchedule(const FolderItem& file, bool enable) {
    auto window = std::make_unique<SkedWindow>(desktop, *this);
    SkedWindow& schedule = *window;
    schedule.OpenFile(file);
    OpenWindow(std::move(window));
    if (enable) {
        schedule.SetEnabled(true);
    }
}

void App::OpenSchedules(const CommandLine& commandLine) {
    for (const std::string& name : commandLine.files) {
        const FolderItem file(name);
        if (!file.Exists()) { // mistyped, and nobody has picked it from a dialog
            desktop.MsgBox("Error opening file");
            window1->Log("No such schedule: " + name);
        }
        OpenSchedule(file, commandLine.enable);
    }
}

void App::VisitProductPage() { desktop.OpenInBrowser(deployment.productPage); }

} // namespace larkspool
