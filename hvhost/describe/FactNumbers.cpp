#include "hvhost/describe/FactNumbers.h"

#include <charconv>
#include <cstdint>
#include <cstdlib>

nlohmann::ordered_json jsonNumber(const std::string& text)
{
    std::int64_t whole = 0;
    const char* const end = text.data() + text.size();
    // Not through a double, which cannot hold the largest integers.
    const auto [last, error] = std::from_chars(text.data(), end, whole);
    if (error == std::errc() && last == end)
        return whole;
    return std::strtod(text.c_str(), nullptr);
}
