#include "values/Decimal.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <iterator>

Decimal::Decimal(double value) : _isNegative(std::signbit(value))
{
    char text[32];
    const char* end =
        std::to_chars(text, text + sizeof(text), std::fabs(value), std::chars_format::scientific)
            .ptr;
    const char* begin = text;
    const char* sign = std::find(begin, end, 'e');
    std::copy_if(begin, sign, std::back_inserter(_digits),
                 [](char character) { return character != '.'; });
    int exponent = 0;
    std::from_chars(sign + (sign[1] == '+' ? 2 : 1), end, exponent);
    _point = exponent + 1;
}

bool Decimal::isZero() const
{
    return _digits.find_first_not_of('0') == std::string::npos;
}

Decimal Decimal::rounded(int decimals) const
{
    Decimal result = *this;
    const int keep = _point + decimals;
    if (keep >= count())
        return result;
    const bool up = keep >= 0 && _digits[static_cast<std::size_t>(keep)] >= '5';
    // Add a leading zero for a carry.
    result._digits = "0" + _digits.substr(0, static_cast<std::size_t>(std::max(keep, 0)));
    ++result._point;
    if (up) {
        auto place = result._digits.rbegin();
        for (; *place == '9'; ++place)
            *place = '0';
        ++*place;
    }
    if (result._digits.front() == '0' && result._digits.size() > 1) {
        result._digits.erase(0, 1);
        --result._point;
    }
    return result;
}

std::string Decimal::whole() const
{
    if (_point <= 0)
        return "0";
    std::string whole = _digits.substr(0, static_cast<std::size_t>(_point));
    whole.resize(static_cast<std::size_t>(_point), '0');
    return whole;
}

std::string Decimal::fraction(int decimals) const
{
    std::string fraction(static_cast<std::size_t>(std::max(-_point, 0)), '0');
    if (_point < count())
        fraction += _digits.substr(static_cast<std::size_t>(std::max(_point, 0)));
    fraction.resize(static_cast<std::size_t>(decimals), '0');
    return fraction;
}
