#include "demo/Handshake.h"

#include "demo/Sha1.h"
#include "platform/Text.h"

#include <algorithm>
#include <cctype>

namespace larkspool::demo {
namespace {

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

std::string_view Trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    return text.substr(0, text.find_last_not_of(" \t\r") + 1);
}

} // namespace

std::string_view Request::Header(const std::string& name) const {
    const auto found = headers.find(name);
    return found == headers.end() ? std::string_view{} : std::string_view(found->second);
}

std::optional<std::size_t> HeadSize(std::string_view bytes) {
    const std::size_t end = bytes.find("\r\n\r\n");
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    return end + 4;
}

std::optional<Request> ParseRequest(std::string_view head) {
    const std::string_view first = head.substr(0, head.find('\r'));
    const std::size_t methodEnd = first.find(' ');
    const std::size_t targetEnd = first.rfind(' ');
    if (methodEnd == std::string_view::npos || targetEnd == methodEnd ||
        !first.substr(targetEnd + 1).starts_with("HTTP/1.")) {
        return std::nullopt;
    }
    Request request;
    request.method = first.substr(0, methodEnd);
    request.target = first.substr(methodEnd + 1, targetEnd - methodEnd - 1);
    head.remove_prefix(std::min(first.size() + 2, head.size()));
    while (!head.empty()) {
        const std::string_view line = head.substr(0, head.find('\n'));
        head.remove_prefix(std::min(line.size() + 1, head.size()));
        const std::size_t colon = line.find(':');
        if (colon != std::string_view::npos) {
            request.headers[Lower(line.substr(0, colon))] = Trimmed(line.substr(colon + 1));
        }
    }
    return request;
}

std::optional<LinkKind> RequestedLink(const Request& request) {
    constexpr std::string_view Prefix = "/kiwi/";
    if (request.method != "GET" || Lower(request.Header("upgrade")) != "websocket" ||
        !request.target.starts_with(Prefix)) {
        return std::nullopt;
    }
    const std::string_view behind = std::string_view(request.target).substr(Prefix.size());
    const std::size_t slash = behind.find('/');
    if (slash == std::string_view::npos || slash == 0 ||
        behind.substr(0, slash).find_first_not_of("0123456789") != std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view kind = behind.substr(slash);
    if (kind == "/SND") {
        return LinkKind::Sound;
    }
    if (kind == "/W/F") {
        return LinkKind::Waterfall;
    }
    return std::nullopt;
}

std::string AcceptKey(std::string_view key) {
    return EncodeBase64(Sha1(std::string(key) + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11"));
}

std::string SwitchingReply(const Request& request) {
    return "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
           "Sec-WebSocket-Accept: " +
           AcceptKey(request.Header("sec-websocket-key")) + "\r\n\r\n";
}

} // namespace larkspool::demo
