#pragma once

#include <charconv>
#include <optional>
#include <string_view>

/// The number that the whole text represents; nullopt if it has other content, is out of range or
/// is NaN.
std::optional<double> parseReal(std::string_view text);

template <typename Integer>
std::optional<Integer> parseInteger(std::string_view text)
{
    Integer value{};
    const char* last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, value);
    if (error != std::errc() || end != last)
        return std::nullopt;
    return value;
}
