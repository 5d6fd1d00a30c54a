#pragma once

#include <string>

namespace larkspool {

// The decimal digits of a Double, rounded once to a number of significant
// digits. Zero has no digits and no sign.
struct Decimal {
    // Significant digits without leading zeros. The first integerDigits of them
    // are before the point; if it is below 0, that many zeros follow the point.
    std::string digits;
    int integerDigits = 0;
    bool negative = false;

    // Infinities and NaN are zero. significantDigits is 2 to 17.
    static Decimal From(double value, int significantDigits);

    // Half away from zero.
    void RoundTo(int decimalPlaces);
    // '0' where there is no digit.
    char DigitAt(int index) const;
    bool IsNegative() const { return negative && !digits.empty(); }
    std::string Plain() const;

  private:
    void DropTrailingZeros();
};

} // namespace larkspool
