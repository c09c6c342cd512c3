#include "components/temporal/preparation/DimensionKey.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>

#include "components/temporal/preparation/CivilTime.h"

namespace EmbeddedHV {
namespace {

template <class Number>
std::optional<Number> allOf(std::string_view text)
{
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && last == end ? std::optional(number) : std::nullopt;
}

std::string numberKey(std::string_view text)
{
    // Not by way of double, which cannot hold all 64-bit integers.
    if (const auto whole = allOf<std::int64_t>(text))
        return std::to_string(*whole);
    const auto number = allOf<double>(text);
    if (!number)
        return std::string(text);
    constexpr double kExact = 9007199254740992.0; // 2^53
    if (std::abs(*number) < kExact && std::trunc(*number) == *number)
        return std::to_string(static_cast<std::int64_t>(*number));
    char key[32];
    return {key, std::to_chars(key, key + sizeof key, *number).ptr};
}

} // namespace

std::string dimensionKey(std::string_view value, CFField::StorageType storage)
{
    if (storage == CFField::Real || storage == CFField::Integer)
        return numberKey(value);
    if (storage == CFField::Date || storage == CFField::Time || storage == CFField::Timestamp)
        if (const auto moment = momentOfText(std::string(value)))
            return std::to_string(*moment);
    return std::string(value);
}

} // namespace EmbeddedHV
