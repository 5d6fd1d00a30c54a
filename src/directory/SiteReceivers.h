#pragma once

#include "directory/ReceiverList.h"
#include "shell/Deployment.h"

namespace larkspool {

// The receivers of the site that this build knows, one port an antenna; none without a site.
ReceiverList SiteReceivers(const Deployment& deployment);

} // namespace larkspool
