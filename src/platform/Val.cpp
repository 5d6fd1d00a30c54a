#include "platform/Text.h"

#include <charconv>
#include <locale>
#include <sstream>
#include <string>
#include <system_error>

namespace larkspool {

namespace {

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

std::size_t DigitsFrom(std::string_view text, std::size_t start) {
    std::size_t end = start;
    while (end < text.size() && IsDigit(text[end])) {
        ++end;
    }
    return end - start;
}

struct Number {
    std::size_t integerDigits = 0;
    std::size_t fractionDigits = 0;
    std::size_t length = 0; // with point and exponent; 0 if there is no number
    std::size_t mantissaLength = 0;
};

// An unsigned number at the start of the text.
Number Measure(std::string_view text) {
    Number number;
    number.integerDigits = DigitsFrom(text, 0);
    std::size_t end = number.integerDigits;
    if (end < text.size() && text[end] == '.') {
        number.fractionDigits = DigitsFrom(text, end + 1);
        end += 1 + number.fractionDigits;
    }
    if (number.integerDigits + number.fractionDigits == 0) {
        return number;
    }
    number.mantissaLength = number.length = end;
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        ++end;
        if (end < text.size() && (text[end] == '+' || text[end] == '-')) {
            ++end;
        }
        const std::size_t digits = DigitsFrom(text, end);
        if (digits > 0) {
            number.length = end + digits;
        }
    }
    return number;
}

// The exponent's value; digits are ignored when they can't make a difference any more.
double ExponentOf(std::string_view text) {
    double exponent = 0;
    for (const char character : text) {
        if (IsDigit(character) && exponent < 1e30) {
            exponent = exponent * 10 + (character - '0');
        }
    }
    return Contains(text, "-") ? -exponent : exponent;
}

bool IsAboveOne(std::string_view text, const Number& number) {
    const std::string_view mantissa = text.substr(0, number.mantissaLength);
    const std::size_t leading = mantissa.find_first_not_of("0.");
    if (leading == std::string_view::npos) {
        return false;
    }
    const double power = static_cast<double>(number.integerDigits) - static_cast<double>(leading);
    const std::string_view exponent =
        text.substr(number.mantissaLength, number.length - number.mantissaLength);
    return power + ExponentOf(exponent) > 0;
}

#ifdef __cpp_lib_to_chars
double ValueOf(std::string_view text, const Number& number) {
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + number.length, value);
    const bool fits = result.ec != std::errc::result_out_of_range && !std::isinf(value);
    return fits ? value : IsAboveOne(text, number) ? std::numeric_limits<double>::max() : 0;
}
#else
// For standard libraries whose from_chars reads integers only.
double ValueOf(std::string_view text, const Number& number) {
    std::istringstream stream{std::string(text.substr(0, number.length))};
    stream.imbue(std::locale::classic());
    double value = 0;
    const bool fits = static_cast<bool>(stream >> value) && !std::isinf(value);
    return fits ? value : IsAboveOne(text, number) ? std::numeric_limits<double>::max() : 0;
}
#endif

} // namespace

double Val(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos) {
        return 0;
    }
    text.remove_prefix(start);
    const bool negative = text.front() == '-';
    if (negative || text.front() == '+') {
        text.remove_prefix(1);
    }
    const Number number = Measure(text);
    if (number.length == 0) {
        return 0;
    }
    const double value = ValueOf(text, number);
    return negative && value > 0 ? -value : value;
}

} // namespace larkspool
