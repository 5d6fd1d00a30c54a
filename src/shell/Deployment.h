#pragma once

#include <array>
#include <string>

namespace larkspool {

// What a deployer decides when building. Empty texts switch off what needs them.
struct Deployment {
    std::string directoryHost; // of the public receiver list, with :port where it is not 80
    std::string versionHost;   // of the version server
    std::string siteHost;      // of the seven built-in receivers
    std::array<std::string, 7> siteNames; // of those, on ports 8073 to 8079
    std::string productPage;
    std::string downloadPage;
    int programNumber = 0;
};

// The values of this build.
Deployment ConfiguredDeployment();

} // namespace larkspool
