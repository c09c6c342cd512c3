#include "NumberText.h"

#include <cmath>

std::optional<double> parseReal(std::string_view text)
{
    double value = 0;
    const char* last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, value);
    if (error != std::errc() || end != last || std::isnan(value))
        return std::nullopt;
    return value;
}
