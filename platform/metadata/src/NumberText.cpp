#include "NumberText.h"

#include <array>
#include <cmath>

std::string numberText(double value)
{
    // "-1.7976931348623157e+308" is the longest text.
    std::array<char, 32> text;
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), result.ptr};
}

std::optional<double> parseReal(std::string_view text)
{
    double value = 0;
    const char* last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, value);
    if (error != std::errc() || end != last || std::isnan(value))
        return std::nullopt;
    return value;
}
