#include "demo/Handshake.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cctype>
#include <cstdint>
#include <span>
#include <vector>

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

using Digest = std::array<std::uint32_t, 5>;

std::vector<std::uint8_t> Padded(std::string_view text) {
    std::vector<std::uint8_t> bytes(text.begin(), text.end());
    bytes.push_back(0x80);
    while (bytes.size() % 64 != 56) {
        bytes.push_back(0);
    }
    const std::uint64_t bits = static_cast<std::uint64_t>(text.size()) * 8;
    for (int shift = 56; shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(bits >> shift));
    }
    return bytes;
}

void DigestBlock(std::span<const std::uint8_t> block, Digest& digest) {
    std::array<std::uint32_t, 80> words{};
    for (std::size_t i = 0; i < 16; ++i) {
        for (std::size_t byte = 0; byte < 4; ++byte) {
            words[i] = words[i] << 8 | block[4 * i + byte];
        }
    }
    for (std::size_t i = 16; i < 80; ++i) {
        words[i] = std::rotl(words[i - 3] ^ words[i - 8] ^ words[i - 14] ^ words[i - 16], 1);
    }
    auto [a, b, c, d, e] = digest;
    for (std::size_t i = 0; i < 80; ++i) {
        std::uint32_t mixed = 0;
        if (i < 20) {
            mixed = ((b & c) | (~b & d)) + 0x5A827999U;
        } else if (i < 40) {
            mixed = (b ^ c ^ d) + 0x6ED9EBA1U;
        } else if (i < 60) {
            mixed = ((b & c) | (b & d) | (c & d)) + 0x8F1BBCDCU;
        } else {
            mixed = (b ^ c ^ d) + 0xCA62C1D6U;
        }
        const std::uint32_t next = std::rotl(a, 5) + mixed + e + words[i];
        e = d;
        d = c;
        c = std::rotl(b, 30);
        b = a;
        a = next;
    }
    digest = {digest[0] + a, digest[1] + b, digest[2] + c, digest[3] + d, digest[4] + e};
}

// SHA-1, which the handshake demands; nothing here rests on its strength.
std::vector<std::uint8_t> Sha1(std::string_view text) {
    Digest digest{0x67452301U, 0xEFCDAB89U, 0x98BADCFEU, 0x10325476U, 0xC3D2E1F0U};
    const std::vector<std::uint8_t> bytes = Padded(text);
    for (std::size_t at = 0; at < bytes.size(); at += 64) {
        DigestBlock(std::span(bytes).subspan(at, 64), digest);
    }
    std::vector<std::uint8_t> out;
    for (const std::uint32_t word : digest) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            out.push_back(static_cast<std::uint8_t>(word >> shift & 0xFF));
        }
    }
    return out;
}

std::string Base64(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view Alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - at);
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            group = group << 8 | (i < count ? bytes[at + i] : 0U);
        }
        for (std::size_t i = 0; i < 4; ++i) {
            out += i <= count ? Alphabet[group >> (18 - 6 * i) & 0x3F] : '=';
        }
    }
    return out;
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
    return Base64(Sha1(std::string(key) + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11"));
}

std::string SwitchingReply(const Request& request) {
    return "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
           "Sec-WebSocket-Accept: " +
           AcceptKey(request.Header("sec-websocket-key")) + "\r\n\r\n";
}

} // namespace larkspool::demo
