#pragma once

#include "platform/Desktop.h"
#include "shell/Preferences.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace larkspool {

// Asks the version server once whether a newer release exists, and offers to open the download
// page. Owned by App, which keeps it until the answer has come. The preferences must live longer:
// the offer may stay open for as long as the user likes.
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

// What the request says, each field cut to its length on the wire.
struct UpdateQuestion {
    std::string programNumber; // 4 digits
    std::string version;       // 3 digits: the running version, or the skipped one if that is newer
    std::string OS;            // a letter
    std::string osVersion;     // major and minor, 2 digits each
};

// "130" for version 1.3.0.
std::string VersionDigits(int major, int minor, int bug);

UpdateQuestion MakeUpdateQuestion(int programNumber, const std::string& runningDigits,
                                  std::uint32_t skippedDigits,
                                  const OperatingSystemVersion& system);

// The address to fetch. host: may include a :port.
std::string UpdateAddress(const std::string& host, const UpdateQuestion& question);

struct NewerVersion {
    std::string text;         // as the server writes it
    std::uint32_t digits = 0; // what to remember if the user skips it
};

// Empty if the running version is the latest. Accepts any page: the first word of a page that does
// not say so is taken for a newer version.
std::optional<NewerVersion> ReadUpdateReply(std::string_view content);

} // namespace larkspool
