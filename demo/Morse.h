#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace larkspool::demo {

// The keying of a text in Morse, one element per dot length, 1 for key down. It ends with the pause
// behind the text, so that it can be sent in a loop. Characters without a code are left out.
std::vector<std::uint8_t> MorseKeying(std::string_view text);

// The bits of a text as a teleprinter sends them: a start bit 0, five code bits, two stop bits 1.
// Letters and blanks only.
std::vector<std::uint8_t> TeleprinterBits(std::string_view text);

} // namespace larkspool::demo
