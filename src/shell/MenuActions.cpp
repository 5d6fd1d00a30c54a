#include "shell/App.h"
#include "shell/Version.h"

namespace larkspool {

// The items that the application answers, whatever window is in front. An item that nobody answers
// is disabled.
void App::AddMenuHandlers() {
    MenuHandlers& handlers = desktop.applicationHandlers;
    handlers.Add("EditAboutLarkspool", [this] { return EditAboutLarkspool_Action(); });
    if (!deployment.productPage.empty()) {
        handlers.Add("FileVisitWebsiteForInstructions",
                     [this] { return FileVisitWebsiteForInstructions_Action(); });
    }
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

bool App::FileVisitWebsiteForInstructions_Action() {
    VisitProductPage();
    return true;
}

void App::VisitProductPage() { desktop.OpenInBrowser(deployment.productPage); }

} // namespace larkspool
