#include "shell/VersionCheck.h"

#include "platform/Text.h"
#include "shell/Version.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace larkspool {

namespace {

// A version is a few characters; of any other page no more than this is shown.
constexpr std::size_t LongestVersion = 100;

} // namespace

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

std::string VersionDigits(int major, int minor, int bug) {
    return Str(major) + Str(minor) + Str(bug);
}

UpdateQuestion MakeUpdateQuestion(int programNumber, const std::string& runningDigits,
                                  std::uint32_t skippedDigits,
                                  const OperatingSystemVersion& system) {
    const bool wasSkipped = skippedDigits > Val(runningDigits);
    const std::string version = wasSkipped ? Str(skippedDigits) : runningDigits;
    const std::string osVersion = Format(system.major, "00") + Format(system.minor, "00");
    return {Format(programNumber, "0000").substr(0, 4), version.substr(0, 3), "M",
            osVersion.substr(0, 4)};
}

std::string UpdateAddress(const std::string& host, const UpdateQuestion& question) {
    return "http://" + host + "/version/versionb.html?p=" + question.programNumber +
           question.version + question.OS + question.osVersion;
}

std::optional<NewerVersion> ReadUpdateReply(std::string_view content) {
    const std::string_view first = content.substr(0, content.find_first_of(" \r\n"));
    if (first == "LATEST") {
        return std::nullopt;
    }
    NewerVersion newer;
    newer.text = CutUtf8(first, LongestVersion);
    std::string digits = newer.text;
    std::erase(digits, '.');
    constexpr double Largest = std::numeric_limits<std::uint32_t>::max();
    newer.digits = static_cast<std::uint32_t>(std::clamp(Val(digits), 0.0, Largest));
    return newer;
}

} // namespace larkspool
