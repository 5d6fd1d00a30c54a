#pragma once

#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace larkspool {

// The number at the start of a text, after blanks and tabs; 0 if there is none. Never infinite: a
// larger number becomes the largest Double. The decimal separator is a point in every locale.
double Val(std::string_view text);

// Plain decimal without exponent, of at most 12 significant digits; "0" for NaN and infinities.
std::string Str(double value);
std::string StrSigned(std::int64_t value);
std::string StrUnsigned(std::uint64_t value);

template <std::integral T>
requires(!std::same_as<T, bool>) std::string Str(T value) {
    if constexpr (std::is_signed_v<T>) {
        return StrSigned(value);
    } else {
        return StrUnsigned(value);
    }
}

// By a mask such as "00" or "##.00": "0" is a digit that is always shown, "#" one that is shown if
// needed. Rounds half away from zero; NaN and infinities are 0.
std::string Format(double value, std::string_view mask);

// The parts between the separators, one more than there are separators. They are views of the text,
// so the text must outlive them.
std::vector<std::string_view> SplitB(std::string_view text, std::string_view separator);
template <std::same_as<std::string> T>
std::vector<std::string_view> SplitB(T&& temporary, std::string_view separator) = delete;

inline bool Contains(std::string_view text, std::string_view key) {
    return text.find(key) != std::string_view::npos;
}

// Both return views of the text.
std::string_view WithoutBlanksAround(std::string_view text);
std::string_view FirstCharacters(std::string_view text, std::size_t count); // of UTF-8, not bytes

// At most maxBytes from the start of a UTF-8 text, never a part of a character.
std::string CutUtf8(std::string_view text, std::size_t maxBytes);

// The text with blanks in place of its line ends: a cell with a pasted line end would make two
// lines of one in a file.
std::string OnOneLine(std::string text);

// Base64 with padding.
std::string EncodeBase64(std::string_view bytes);

// Without the fraction, clamped to T's range; 0 for NaN.
template <std::signed_integral T = std::int64_t>
T WholePart(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    // Exact in a Double, unlike the largest value of a 64-bit T.
    constexpr double BeyondLargest = -static_cast<double>(std::numeric_limits<T>::min());
    if (value >= BeyondLargest) {
        return std::numeric_limits<T>::max();
    }
    if (value <= -BeyondLargest) {
        return std::numeric_limits<T>::min();
    }
    return static_cast<T>(value);
}

} // namespace larkspool
