#pragma once

#include <string>

/// A finite number in decimal digits: the shortest that stand for it. Rounds as people do, a half
/// away from zero, by these digits and not by the binary number behind them: 1.005 is a half.
class Decimal
{
public:
    explicit Decimal(double value);

    bool isNegative() const { return _isNegative; }
    bool isZero() const;
    /// Significant digits.
    int count() const { return static_cast<int>(_digits.size()); }

    /// Rounded to some decimals; to some significant digits.
    Decimal rounded(int decimals) const;
    Decimal roundedTo(int significant) const { return rounded(significant - _point); }

    /// The digits of the amount before and after the decimal sign.
    std::string whole() const;
    std::string fraction(int decimals) const;
    /// The significant digits, and the power of ten of the first.
    const std::string& digits() const { return _digits; }
    int exponent() const { return _point - 1; }

private:
    bool _isNegative;
    std::string _digits;
    int _point = 0; ///< how many of the digits stand before the decimal sign; may lie outside them
};
