#include "directory/PastedUrl.h"

#include "directory/ReceiverList.h"
#include "platform/Text.h"

namespace larkspool {

namespace {

// As many characters of a UTF-8 text, not bytes.
std::string_view FirstCharacters(std::string_view text, std::size_t count) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool startsOne = (static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U;
        if (startsOne && count-- == 0) {
            return text.substr(0, i);
        }
    }
    return text;
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

} // namespace larkspool
