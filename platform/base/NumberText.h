#pragma once

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

} // namespace base
