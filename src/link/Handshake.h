#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace larkspool {

// The two links of a session.
enum class LinkKind { Audio = 0, Waterfall = 1 };

inline constexpr std::string_view SwitchingProtocols = "101 Switching Protocols";

// "sdr.example.net:8073"; an IPv6 address is in brackets.
std::string HostPort(std::string_view host, std::int64_t port);

// The HTTP request that turns a TCP connection into a WebSocket link.
// unixTime: whole seconds since 1970. key: 16 random bytes, before Base64 encoding.
std::string UpgradeRequest(LinkKind kind, std::int64_t unixTime, std::string_view hostPort,
                           std::string_view key);

} // namespace larkspool
