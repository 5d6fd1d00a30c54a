#include "platform/Text.h"

#include "platform/Decimal.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace larkspool {

namespace {

constexpr int StrDigits = 12;
// As many as a Double keeps of any decimal: this rounds the number that was typed, 2.345, and not
// the 2.34499999 that represents it.
constexpr int FormatDigits = 15;

template <std::integral T>
std::string Digits(T value) {
    std::array<char, 24> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), result.ptr};
}

std::string IntegerDigits(const Decimal& number, std::string_view mask) {
    const std::size_t firstZero = std::min(mask.find('0'), mask.size());
    const std::size_t least = mask.size() - firstZero;
    std::string text;
    for (int place = 0; place < number.integerDigits; ++place) {
        text += number.DigitAt(place);
    }
    if (text.size() < least) {
        text.insert(0, least - text.size(), '0');
    }
    return text;
}

std::string FractionDigits(const Decimal& number, std::string_view mask) {
    std::string text;
    for (std::size_t place = 0; place < mask.size(); ++place) {
        text += number.DigitAt(number.integerDigits + static_cast<int>(place));
    }
    while (!text.empty() && text.back() == '0' && mask[text.size() - 1] == '#') {
        text.pop_back();
    }
    return text.empty() ? text : "." + text;
}

} // namespace

std::string Str(double value) { return Decimal::From(value, StrDigits).Plain(); }

std::string StrSigned(std::int64_t value) { return Digits(value); }

std::string StrUnsigned(std::uint64_t value) { return Digits(value); }

std::string Format(double value, std::string_view mask) {
    const std::size_t point = std::min(mask.find('.'), mask.size());
    const std::string_view integerMask = mask.substr(0, point);
    const std::string_view fractionMask = mask.substr(std::min(point + 1, mask.size()));
    Decimal number = Decimal::From(value, FormatDigits);
    number.RoundTo(static_cast<int>(fractionMask.size()));
    const std::string text =
        IntegerDigits(number, integerMask) + FractionDigits(number, fractionMask);
    if (text.empty()) {
        return "0";
    }
    return number.IsNegative() ? "-" + text : text;
}

std::vector<std::string_view> SplitB(std::string_view text, std::string_view separator) {
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    std::size_t end = separator.empty() ? std::string_view::npos : text.find(separator);
    while (end != std::string_view::npos) {
        parts.push_back(text.substr(start, end - start));
        start = end + separator.size();
        end = text.find(separator, start);
    }
    parts.push_back(text.substr(start));
    return parts;
}

std::string_view WithoutBlanksAround(std::string_view text) {
    constexpr std::string_view Blanks = " \t\r\n";
    const std::size_t first = std::min(text.find_first_not_of(Blanks), text.size());
    return text.substr(first, text.find_last_not_of(Blanks) + 1 - first);
}

std::string_view FirstCharacters(std::string_view text, std::size_t count) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool startsOne = (static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U;
        if (startsOne && count-- == 0) {
            return text.substr(0, i);
        }
    }
    return text;
}

std::string CutUtf8(std::string_view text, std::size_t maxBytes) {
    if (text.size() <= maxBytes) {
        return std::string(text);
    }
    const auto continues = [text](std::size_t index) {
        return (static_cast<unsigned char>(text[index]) & 0xC0U) == 0x80U;
    };
    std::size_t end = maxBytes;
    for (int back = 0; back < 3 && end > 0 && continues(end); ++back) {
        --end;
    }
    // No character is longer than four bytes: this isn't UTF-8, so any cut is right.
    if (end > 0 && continues(end)) {
        end = maxBytes;
    }
    return std::string(text.substr(0, end));
}

std::string OnOneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char letter) { return letter == '\n' || letter == '\r'; },
        ' ');
    return text;
}

std::string EncodeBase64(std::string_view bytes) {
    static constexpr char Alphabet[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::string_view group = bytes.substr(i, 3);
        std::uint32_t bits = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            bits = bits << 8U | (k < group.size() ? static_cast<std::uint8_t>(group[k]) : 0U);
        }
        for (std::size_t k = 0; k < 4; ++k) {
            text += k <= group.size() ? Alphabet[bits >> (18 - 6 * k) & 0x3FU] : '=';
        }
    }
    return text;
}

} // namespace larkspool
