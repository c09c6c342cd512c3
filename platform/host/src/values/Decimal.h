#pragma once

#include <string>

/// A finite number in decimal digits, the shortest that identify it. Rounds halves away from zero
/// by these digits, not by the binary number: 1.005 is a half.
class Decimal
{
public:
    explicit Decimal(double value);

    bool isNegative() const { return _isNegative; }
    bool isZero() const;
    /// Significant digits.
    int count() const { return static_cast<int>(_digits.size()); }

    /// Rounds to a number of decimals.
    Decimal rounded(int decimals) const;
    /// Rounds to a number of significant digits.
    Decimal roundedTo(int significant) const { return rounded(significant - _point); }

    /// The digits before and behind the decimal sign, without the number's sign.
    std::string whole() const;
    std::string fraction(int decimals) const;
    /// The significant digits.
    const std::string& digits() const { return _digits; }
    /// The power of ten of the first digit.
    int exponent() const { return _point - 1; }

private:
    bool _isNegative;
    std::string _digits;
    int _point = 0; ///< position of the decimal sign in the digits; may be outside them
};
