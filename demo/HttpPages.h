#pragma once

#include "demo/Handshake.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace larkspool::demo {

// The values in the pages. The ports are the open ones.
struct PageSettings {
    std::string host; // for addresses, if the request has none
    std::array<std::uint16_t, 7> ports{};
    std::string newest; // the version to offer; empty: there is no newer one
};

// The whole response to a request, head and body.
std::string HttpResponse(const Request& request, const PageSettings& settings);

// A response without a page of its own, such as "400 Bad Request".
std::string HttpError(std::string_view status);

} // namespace larkspool::demo
