#include "shell/VersionCheck.h"

#include "shell/UpdateCheck.h"
#include "shell/Version.h"

#include <utility>

namespace larkspool {

VersionCheck::VersionCheck(Desktop& theDesktop, Preferences& stored, std::string server)
    : desktop(theDesktop), prefs(stored), versionHost(std::move(server)),
      socket(theDesktop.MakeHTTPSocket()) {
    socket->pageReceived = [this](const std::string&, int, const std::string& content) {
        Event_PageReceived(content);
    };
}

void VersionCheck::CheckForLatestVersion(int programNumber, const std::string& downloadPage) {
    downloadUrl = downloadPage;
    const UpdateQuestion question = MakeUpdateQuestion(
        programNumber, VersionDigits(version::Major, version::Minor, version::Bug),
        prefs.lastUpdateCheckVersion, desktop.SystemVersion());
    socket->Get(UpdateAddress(versionHost, question));
}

void VersionCheck::Event_PageReceived(const std::string& content) {
    const auto newer = ReadUpdateReply(content);
    if (!newer) {
        return;
    }
    MessageDialog dialog;
    dialog.message = "A new version of this program, " + newer->text +
                     ", is now available. Would you like your web browser to open the download "
                     "page so you can get a copy?";
    dialog.actionCaption = "Yes";
    dialog.cancelCaption = "Not Now";
    dialog.alternateCaption = "Skip This Version";
    desktop.ShowDialog(dialog, [&theDesktop = desktop, &stored = prefs, url = downloadUrl,
                                digits = newer->digits](MessageDialog::Answer answer) {
        if (answer == MessageDialog::Answer::Action) {
            theDesktop.OpenInBrowser(url);
        } else if (answer == MessageDialog::Answer::Alternate) {
            stored.lastUpdateCheckVersion = digits;
        }
    });
}

} // namespace larkspool
