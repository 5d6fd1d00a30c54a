#include "link/Handshake.h"

#include <cstddef>
#include <initializer_list>

namespace larkspool {

namespace {

std::string EncodeBase64(std::string_view bytes) {
    static constexpr char Digits[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::string_view group = bytes.substr(i, 3);
        std::uint32_t bits = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            bits = bits << 8U | (k < group.size() ? static_cast<std::uint8_t>(group[k]) : 0U);
        }
        for (std::size_t k = 0; k < 4; ++k) {
            text += k <= group.size() ? Digits[bits >> (18 - 6 * k) & 0x3FU] : '=';
        }
    }
    return text;
}

} // namespace

std::string HostPort(std::string_view host, std::int64_t port) {
    const bool needsBrackets = host.find(':') != std::string_view::npos && !host.starts_with('[');
    const std::string name = needsBrackets ? "[" + std::string(host) + "]" : std::string(host);
    return name + ":" + std::to_string(port);
}

std::string UpgradeRequest(LinkKind kind, std::int64_t unixTime, std::string_view hostPort,
                           std::string_view key) {
    std::string request;
    const auto line = [&request](std::initializer_list<std::string_view> parts) {
        for (const std::string_view part : parts) {
            request += part;
        }
        request += "\r\n";
    };
    const std::string_view stream = kind == LinkKind::Waterfall ? "/W/F" : "/SND";
    line({"GET /kiwi/", std::to_string(unixTime), stream, " HTTP/1.1"});
    line({"Host: ", hostPort});
    line({"Connection: Upgrade"});
    line({"Pragma: no-cache"});
    line({"Cache-Control: no-cache"});
    line({"User-Agent: Mozilla/5.0"});
    line({"Upgrade: webSocket"});
    line({"Origin: http://", hostPort});
    line({"Sec-WebSocket-Version: 13"});
    line({"Accept-Encoding: gzip, deflate"});
    line({"Accept-Language: en-US,en;q=0.9"});
    line({"Sec-WebSocket-Key: ", EncodeBase64(key)});
    line({"Sec-WebSocket-Extensions: permessage-deflate; client_max_window_bits"});
    line({});
    return request;
}

} // namespace larkspool
