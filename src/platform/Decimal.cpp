#include "platform/Decimal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace larkspool {

Decimal Decimal::From(double value, int significantDigits) {
    Decimal number;
    if (!std::isfinite(value) || value == 0) {
        return number;
    }
    std::array<char, 40> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(value),
                                      std::chars_format::scientific, significantDigits - 1);
    const std::string_view text(buffer.data(),
                                static_cast<std::size_t>(result.ptr - buffer.data()));
    const std::size_t exponentMark = text.find('e');
    const std::string_view exponentDigits = text.substr(exponentMark + 2);
    int exponent = 0;
    std::from_chars(exponentDigits.data(), exponentDigits.data() + exponentDigits.size(), exponent);
    if (text[exponentMark + 1] == '-') {
        exponent = -exponent;
    }

    number.negative = value < 0;
    number.digits = text.front();
    number.digits += text.substr(2, exponentMark - 2);
    number.integerDigits = exponent + 1;
    number.DropTrailingZeros();
    return number;
}

void Decimal::RoundTo(int decimalPlaces) {
    const int kept = integerDigits + decimalPlaces;
    if (kept >= static_cast<int>(digits.size())) {
        return;
    }
    const bool up = kept >= 0 && digits[static_cast<std::size_t>(kept)] >= '5';
    digits.resize(kept > 0 ? static_cast<std::size_t>(kept) : 0);
    if (up) {
        while (!digits.empty() && digits.back() == '9') {
            digits.pop_back();
        }
        if (digits.empty()) {
            digits.assign(1, '1');
            ++integerDigits;
        } else {
            ++digits.back();
        }
    }
    DropTrailingZeros();
}

char Decimal::DigitAt(int index) const {
    if (index < 0 || index >= static_cast<int>(digits.size())) {
        return '0';
    }
    return digits[static_cast<std::size_t>(index)];
}

std::string Decimal::Plain() const {
    if (digits.empty()) {
        return "0";
    }
    std::string text = negative ? "-" : "";
    const int count = static_cast<int>(digits.size());
    if (integerDigits <= 0) {
        text += '0';
    }
    for (int index = std::min(integerDigits, 0); index < std::max(count, integerDigits); ++index) {
        if (index == integerDigits) {
            text += '.';
        }
        text += DigitAt(index);
    }
    return text;
}

void Decimal::DropTrailingZeros() {
    while (!digits.empty() && digits.back() == '0') {
        digits.pop_back();
    }
    if (digits.empty()) {
        integerDigits = 0;
    }
}

} // namespace larkspool
