#pragma once

#include <array>
#include <string>

namespace larkspool {

// The values that a deployer sets for a build. An empty text disables what depends on it.
struct Deployment {
    std::string directoryHost;            // of the public receiver list, with :port if it is not 80
    std::string versionHost;              // of the version server
    std::string siteHost;                 // of the seven built-in receivers
    std::array<std::string, 7> siteNames; // of those receivers, on ports 8073 to 8079
    std::string productPage;
    std::string downloadPage;
    int programNumber = 0;
};

// The values of this build.
Deployment ConfiguredDeployment();

} // namespace larkspool
