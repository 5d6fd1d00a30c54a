#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace larkspool::demo {

// The head of an HTTP request. Header names are in lower case.
struct Request {
    std::string method;
    std::string target;
    std::map<std::string, std::string> headers;

    std::string_view Header(const std::string& name) const;
};

constexpr std::size_t LargestRequest = 8192;

// The size of the head at the front of bytes, with its empty line; empty until that line has
// arrived.
std::optional<std::size_t> HeadSize(std::string_view bytes);

// Empty if the first line isn't an HTTP request.
std::optional<Request> ParseRequest(std::string_view head);

enum class LinkKind { Sound, Waterfall };

// The link that a request asks for; empty if it is not an upgrade.
std::optional<LinkKind> RequestedLink(const Request& request);

// The answer to a client's Sec-WebSocket-Key.
std::string AcceptKey(std::string_view key);

// The whole reply that accepts the upgrade.
std::string SwitchingReply(const Request& request);

} // namespace larkspool::demo
