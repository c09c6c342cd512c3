#include "report/text/BarText.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr std::size_t kEighths = 8;
constexpr const char* kFull = "█";
constexpr std::array<const char*, kEighths> kParts{"", "▏", "▎", "▍", "▌", "▋", "▊", "▉"};

/// Repeats a character of several bytes.
std::string repeated(const char* text, std::size_t count)
{
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

} // namespace

void BarScale::include(double value)
{
    if (!std::isfinite(value))
        return;
    _least = std::min(_least, value);
    _most = std::max(_most, value);
}

std::string BarScale::bar(double value) const
{
    // Use halves: the full range may overflow a double.
    const double range = _most / 2 - _least / 2;
    if (!std::isfinite(value) || range <= 0)
        return {};
    const auto places = static_cast<double>(_width);
    const auto before = static_cast<std::size_t>(std::lround(-_least / 2 / range * places));
    if (value < 0) {
        const auto length =
            std::min(before, static_cast<std::size_t>(std::lround(-value / 2 / range * places)));
        return std::string(before - length, ' ') + repeated(kFull, length);
    }
    const auto room = (_width - before) * kEighths;
    const auto eighths = std::min(
        room, static_cast<std::size_t>(std::lround(value / 2 / range * places * kEighths)));
    return std::string(before, ' ') + repeated(kFull, eighths / kEighths) +
           kParts.at(eighths % kEighths);
}
