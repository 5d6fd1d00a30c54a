#include "shell/Deployment.h"

#include "DeploymentValues.h"
#include "platform/Text.h"

#include <algorithm>
#include <iterator>

namespace larkspool {

Deployment ConfiguredDeployment() {
    Deployment values;
    values.directoryHost = DirectoryHost;
    values.versionHost = VersionHost;
    values.siteHost = SiteHost;
    std::copy(std::begin(SiteNames), std::end(SiteNames), values.siteNames.begin());
    values.productPage = ProductPage;
    values.downloadPage = DownloadPage;
    values.programNumber = WholePart<int>(Val(ProgramNumber));
    return values;
}

} // namespace larkspool
