#pragma once

#include <array>
#include <charconv>
#include <string>

namespace base {

/// Appends the shortest text that converts back to the same number. Allocates nothing if the text
/// has room.
template <class Number>
void appendNumber(std::string& text, Number number)
{
    // "-1.7976931348623157e+308" is the longest text.
    std::array<char, 32> digits;
    text.append(digits.data(),
                std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
}

/// The shortest text that converts back to the same number.
inline std::string shortestNumber(double number)
{
    std::string text;
    appendNumber(text, number);
    return text;
}

} // namespace base
