#include "link/Handshake.h"

#include "platform/Text.h"

#include <initializer_list>

namespace larkspool {

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
