#pragma once

#include "demo/Handshake.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace larkspool::demo {

// What the pages speak of. Ports are those really listened on.
struct PageSettings {
    std::string host; // for addresses, where the request names none
    std::array<std::uint16_t, 7> ports{};
    std::string newest; // the version to offer; empty: everyone is up to date
};

// The whole response to a request, head and body.
std::string HttpResponse(const Request& request, const PageSettings& settings);

// A response without a page of its own, such as "400 Bad Request".
std::string HttpError(std::string_view status);

} // namespace larkspool::demo
