#include "directory/WindowFavoriteKiwis.h"
#include "schedule/SkedWindow.h"
#include "shell/App.h"
#include "shell/Version.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

namespace larkspool {

namespace {

// The menu bar of all windows: the File menu and the Edit menu.
MenuBar MakeMainMenuBar() {
    Menu file{"FileMenu",
              "&File",
              {{"FileFavorites", "Favorites...", ""},
               {"FileClose", "Close", "Cmd+W"},
               {"FileNewScheduleWindow", "New Schedule Window", "Cmd+N"},
               {"FileOpenSchedule", "Open Schedule...", "Cmd+O"},
               {"FileSaveSchedule", "Save Schedule...", "Cmd+S"},
               {"FileQuit", "&Quit", "Cmd+Q", MenuRole::Quit}}};
    Menu edit{"EditMenu",
              "&Edit",
              {{"EditUndo", "&Undo", "Cmd+Z", MenuRole::Undo},
               {"EditSeparator1", "-", "", MenuRole::Separator},
               {"EditCut", "Cu&t", "Cmd+X", MenuRole::Cut},
               {"EditCopy", "&Copy", "Cmd+C", MenuRole::Copy},
               {"EditPaste", "&Paste", "Cmd+V", MenuRole::Paste},
               {"EditClear", "&Delete", "", MenuRole::Clear},
               {"EditSeparator2", "-", "", MenuRole::Separator},
               {"EditSelectAll", "Select &All", "Cmd+A", MenuRole::SelectAll},
               {"EditAboutLarkspool", "About Larkspool", "", MenuRole::About},
               {"FileVisitWebsiteForInstructions", "Visit Website For Instructions", ""}}};
    return MenuBar{{file, edit}};
}

} // namespace

// The handlers of the application apply whatever window is in front. An item without a handler is
// disabled.
void App::MakeMenu() {
    desktop.menuBar = MakeMainMenuBar();
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
    // A window that was just closed may still exist, hidden.
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

// Always opens a new window.
bool App::FileOpenSchedule_Action() {
    desktop.ShowOpenFileDialog("text/txt", [this](const std::optional<FolderItem>& chosen) {
        if (chosen && !isQuitting) {
            OpenSchedule(*chosen);
        }
    });
    return true;
}

SkedWindow& App::OpenSchedule(const FolderItem& file) {
    auto window = std::make_unique<SkedWindow>(desktop, *this);
    SkedWindow& schedule = *window;
    schedule.OpenFile(file);
    OpenWindow(std::move(window));
    return schedule;
}

void App::OpenSchedules(const CommandLine& commandLine) {
    for (const std::string& name : commandLine.files) {
        const FolderItem file(name);
        if (!file.Exists()) { // a typing error; a dialog offers only files that exist
            desktop.MsgBox("Error opening file");
            window1->Log("No such schedule: " + name);
        }
        SkedWindow& schedule = OpenSchedule(file);
        if (commandLine.enable) {
            schedule.SetEnabled(true);
        }
    }
}

void App::VisitProductPage() { desktop.OpenInBrowser(deployment.productPage); }

} // namespace larkspool
