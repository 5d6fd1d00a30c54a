#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace larkspool {

struct OperatingSystemVersion;

// What the version server is told, each field cut to its length on the wire.
struct UpdateQuestion {
    std::string programNumber; // 4 digits
    std::string version;       // 3 digits: the running version, or the skipped one if that is newer
    std::string OS;            // a letter
    std::string osVersion;     // major and minor, 2 digits each
};

// "130" for 1.3.0.
std::string VersionDigits(int major, int minor, int bug);

UpdateQuestion MakeUpdateQuestion(int programNumber, const std::string& runningDigits,
                                  std::uint32_t skippedDigits,
                                  const OperatingSystemVersion& system);

// The address to fetch. The host may carry a :port.
std::string UpdateAddress(const std::string& host, const UpdateQuestion& question);

struct NewerVersion {
    std::string text;         // as the server writes it
    std::uint32_t digits = 0; // what to remember if the user skips it
};

// Nothing if the running version is the latest. Takes any page: what doesn't say so offers one.
std::optional<NewerVersion> ReadUpdateReply(std::string_view content);

} // namespace larkspool
