#include "directory/PastedUrl.h"

#include "directory/ReceiverList.h"
#include "platform/Text.h"

namespace larkspool {

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
    const std::size_t bracket = text.find(']');
    if (text.starts_with('[') && bracket != std::string_view::npos) {
        typed.host = text.substr(1, bracket - 1);
        const std::string_view rest = text.substr(bracket + 1);
        typed.port = rest.starts_with(':') ? rest.substr(1) : "";
    } else if (const auto parts = SplitHostAndPort(text)) {
        typed = *parts;
    }
    return {std::string(WithoutBlanksAround(typed.host)),
            typed.port.empty() ? std::string(port) : Str(Val(typed.port))};
}

} // namespace larkspool
