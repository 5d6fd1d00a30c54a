#pragma once

#include "platform/Desktop.h"
#include "shell/Preferences.h"

#include <memory>
#include <string>

namespace larkspool {

// Asks the version server once whether a newer release exists, and offers to open the download
// page. Owned by App, which keeps it until the answer has come and keeps the preferences beyond
// that: the offer may stay open for as long as the user likes.
class VersionCheck {
  public:
    VersionCheck(Desktop& theDesktop, Preferences& stored, std::string server);

    void CheckForLatestVersion(int programNumber, const std::string& downloadPage);

  private:
    void Event_PageReceived(const std::string& content);

    Desktop& desktop;
    Preferences& prefs; // where a skipped version is remembered
    const std::string versionHost;
    std::string downloadUrl;
    std::unique_ptr<HTTPSocket> socket;
};

} // namespace larkspool
