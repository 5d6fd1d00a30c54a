#include "directory/PastedUrl.h"

#include "directory/ReceiverList.h"
#include "platform/Text.h"

namespace larkspool {

namespace {

// As SplitHostAndPort, but an IPv6 address may be in brackets, "[2001:db8::1]:8073".
std::optional<HostAndPort> SplitTyped(std::string_view text) {
    const std::size_t end = text.starts_with('[') ? text.find("]:") : std::string_view::npos;
    if (end == std::string_view::npos) {
        return SplitHostAndPort(text);
    }
    return HostAndPort{text.substr(1, end - 1), text.substr(end + 2)};
}

} // namespace

std::optional<PastedUrl> ParsePastedUrl(std::string_view text) {
    constexpr std::string_view Scheme = "http://";
    constexpr std::size_t LongestRest = 200;
    if (!text.starts_with(Scheme)) {
        return std::nullopt;
    }
    const auto parts = SplitHostAndPort(FirstCharacters(text.substr(Scheme.size()), LongestRest));
    if (!parts) {
        return std::nullopt;
    }
    return PastedUrl{std::string(parts->host), Str(Val(parts->port))};
}

PastedUrl TidyReceiver(std::string_view address, std::string_view port) {
    std::string_view text = WithoutBlanksAround(address);
    if (const std::size_t scheme = text.find("://"); scheme != std::string_view::npos) {
        text.remove_prefix(scheme + 3);
    }
    text = text.substr(0, text.find_first_of("/?#"));
    HostAndPort typed{text, ""};
    if (const auto parts = SplitTyped(text)) {
        typed = *parts;
    } else if (text.starts_with('[') && text.ends_with(']')) {
        typed.host = text.substr(1, text.size() - 2);
    }
    return {std::string(WithoutBlanksAround(typed.host)),
            typed.port.empty() ? std::string(port) : Str(Val(typed.port))};
}

std::optional<PastedUrl> ParseReceiverCell(std::string_view text) {
    const auto parts = SplitTyped(WithoutBlanksAround(text));
    if (!parts) {
        return std::nullopt;
    }
    return PastedUrl{std::string(parts->host), std::string(parts->port)};
}

std::string ReceiverCell(const PastedUrl& receiver) {
    const bool isIPv6 = Contains(receiver.host, ":");
    return (isIPv6 ? "[" + receiver.host + "]" : receiver.host) + ":" + receiver.port;
}

} // namespace larkspool
