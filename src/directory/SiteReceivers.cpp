#include "directory/SiteReceivers.h"

namespace larkspool {

ReceiverList SiteReceivers(const Deployment& deployment) {
    constexpr std::int64_t FirstPort = 8073;
    ReceiverList list;
    if (deployment.siteHost.empty()) {
        return list;
    }
    std::int64_t port = FirstPort;
    for (const std::string& name : deployment.siteNames) {
        list.Append(name, deployment.siteHost, port);
        ++port;
    }
    return list;
}

} // namespace larkspool
