#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <type_traits>

namespace base {

/// Appends the shortest text that converts back to the same number. A real number from 0.00001 up
/// to 1e17 has no exponent: 100000, not 1e+05. Allocates nothing if the text has room.
template <class Number>
void appendNumber(std::string& text, Number number)
{
    // "-1.7976931348623157e+308" and "-0.000012345678901234568" are the longest texts.
    std::array<char, 32> digits;
    char* const end = digits.data() + digits.size();
    if constexpr (std::is_floating_point_v<Number>) {
        const Number size = std::abs(number);
        if (size >= Number(1e-5) && size < Number(1e17)) {
            text.append(digits.data(),
                        std::to_chars(digits.data(), end, number, std::chars_format::fixed).ptr);
            return;
        }
    }
    text.append(digits.data(), std::to_chars(digits.data(), end, number).ptr);
}

/// The shortest text that converts back to the same number.
inline std::string shortestNumber(double number)
{
    std::string text;
    appendNumber(text, number);
    return text;
}

/// A number with `digits` significant digits, and with all its whole units, without trailing zeros:
/// 0.00001234568, 12345678. From 0.00001 up to 1e15 it has no exponent. At most 17 digits.
inline std::string roundedNumber(double number, int digits = 6)
{
    constexpr double kSmallest = 1e-5;
    constexpr double kLargest = 1e15; // beyond, a number is not exact to the unit
    const double size = std::abs(number);
    std::array<char, 64> text{};
    char* const end = text.data() + text.size();
    if (!(size >= kSmallest && size < kLargest)) {
        if (size == 0)
            return "0";
        return {text.data(),
                std::to_chars(text.data(), end, number, std::chars_format::general, digits).ptr};
    }
    const int places = digits - 1 - static_cast<int>(std::floor(std::log10(size)));
    std::string shown(
        text.data(),
        std::to_chars(text.data(), end, number, std::chars_format::fixed, std::max(places, 0)).ptr);
    if (places > 0)
        shown.erase(shown.find_last_not_of('0') + 1);
    if (shown.ends_with('.'))
        shown.pop_back();
    return shown;
}

} // namespace base
