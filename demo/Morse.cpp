#include "demo/Morse.h"

#include <array>
#include <cctype>

namespace larkspool::demo {
namespace {

constexpr std::array<std::string_view, 26> Letters{
    ".-",   "-...", "-.-.", "-..",  ".",   "..-.", "--.",  "....", "..",
    ".---", "-.-",  ".-..", "--",   "-.",  "---",  ".--.", "--.-", ".-.",
    "...",  "-",    "..-",  "...-", ".--", "-..-", "-.--", "--.."};
constexpr std::array<std::string_view, 10> Digits{"-----", ".----", "..---", "...--", "....-",
                                                  ".....", "-....", "--...", "---..", "----."};

// International teleprinter alphabet no. 2, A to Z, first bit sent lowest.
constexpr std::array<std::uint8_t, 26> TeleprinterLetters{
    0x03, 0x19, 0x0E, 0x09, 0x01, 0x0D, 0x1A, 0x14, 0x06, 0x0B, 0x0F, 0x12, 0x1C,
    0x0C, 0x18, 0x16, 0x17, 0x0A, 0x05, 0x10, 0x07, 0x1E, 0x13, 0x1D, 0x15, 0x11};
constexpr std::uint8_t TeleprinterBlank = 0x04;

void AddCharacter(std::vector<std::uint8_t>& keying, std::string_view code) {
    for (const char element : code) {
        keying.insert(keying.end(), element == '-' ? 3 : 1, 1);
        keying.push_back(0);
    }
    keying.insert(keying.end(), 2, 0);
}

// The dots and dashes of a character, empty if it has none.
std::string_view MorseCode(char character) {
    const int upper = std::toupper(static_cast<unsigned char>(character));
    if (upper >= 'A' && upper <= 'Z') {
        return Letters[static_cast<std::size_t>(upper - 'A')];
    }
    if (upper >= '0' && upper <= '9') {
        return Digits[static_cast<std::size_t>(upper - '0')];
    }
    switch (upper) {
    case '/':
        return "-..-.";
    case '=':
        return "-...-";
    case '?':
        return "..--..";
    default:
        return {};
    }
}

} // namespace

std::vector<std::uint8_t> MorseKeying(std::string_view text) {
    std::vector<std::uint8_t> keying;
    for (const char character : text) {
        if (character == ' ') {
            keying.insert(keying.end(), 4, 0);
        } else if (const auto code = MorseCode(character); !code.empty()) {
            AddCharacter(keying, code);
        }
    }
    keying.insert(keying.end(), 11, 0);
    return keying;
}

std::vector<std::uint8_t> TeleprinterBits(std::string_view text) {
    std::vector<std::uint8_t> bits;
    for (const char character : text) {
        const int upper = std::toupper(static_cast<unsigned char>(character));
        std::uint8_t code = TeleprinterBlank;
        if (upper >= 'A' && upper <= 'Z') {
            code = TeleprinterLetters[static_cast<std::size_t>(upper - 'A')];
        }
        bits.push_back(0);
        for (int bit = 0; bit < 5; ++bit) {
            bits.push_back(static_cast<std::uint8_t>((code >> bit) & 1));
        }
        bits.insert(bits.end(), 2, 1);
    }
    return bits;
}

} // namespace larkspool::demo
