#include "bridge/JsonValue.h"

#include <bit>
#include <cmath>
#include <limits>

namespace {
/// Converts as Java casts a double to an int: NaN is 0, values out of range are limited.
int integerOf(double value)
{
    using Limits = std::numeric_limits<int>;
    if (std::isnan(value))
        return 0;
    if (value >= Limits::max())
        return Limits::max();
    return value <= Limits::min() ? Limits::min() : static_cast<int>(value);
}
} // namespace

std::string_view JsonValue::text() const
{
    if (!isText())
        return {};
    const auto place = static_cast<std::uint64_t>(payload());
    return {_texts + (place >> 32), place & 0xFFFFFFFFU};
}

double JsonValue::number() const
{
    if (kind() == JsonKind::Real)
        return std::bit_cast<double>(payload());
    return kind() == JsonKind::Integer ? static_cast<double>(payload()) : 0.0;
}

int JsonValue::integer(int byDefault) const
{
    if (kind() == JsonKind::Integer)
        return static_cast<int>(payload());
    return kind() == JsonKind::Real ? integerOf(number()) : byDefault;
}

bool JsonValue::flag(bool byDefault) const
{
    return kind() == JsonKind::Flag ? payload() != 0 : byDefault;
}

JsonValue JsonValue::operator[](std::string_view key) const
{
    if (!isObject())
        return {};
    for (std::int64_t name = _index + 1; name < next(); name = at(name + 1).next())
        if (at(name).text() == key)
            return at(name + 1);
    return {};
}

std::size_t JsonValue::size() const
{
    return isArray() ? static_cast<std::size_t>(payload()) : 0;
}

JsonValue::Iterator& JsonValue::Iterator::operator++()
{
    _index = (**this).next();
    return *this;
}
