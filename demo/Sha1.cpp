#include "demo/Sha1.h"

#include <array>
#include <bit>
#include <cstdint>
#include <span>
#include <vector>

namespace larkspool::demo {
namespace {

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

} // namespace

std::string Sha1(std::string_view text) {
    Digest digest{0x67452301U, 0xEFCDAB89U, 0x98BADCFEU, 0x10325476U, 0xC3D2E1F0U};
    const std::vector<std::uint8_t> bytes = Padded(text);
    for (std::size_t at = 0; at < bytes.size(); at += 64) {
        DigestBlock(std::span(bytes).subspan(at, 64), digest);
    }
    std::string out;
    for (const std::uint32_t word : digest) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            out += static_cast<char>(word >> shift & 0xFF);
        }
    }
    return out;
}

} // namespace larkspool::demo
