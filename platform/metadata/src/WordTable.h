#pragma once

#include <array>
#include <cstddef>

/// The word for a value in a table that is ordered like the enumeration; null for an unknown value.
/// Callers cast numbers to the enumerations, so any value may occur.
template <std::size_t Count>
const char* wordAt(const std::array<const char*, Count>& words, int value)
{
    if (value < 0 || static_cast<std::size_t>(value) >= Count)
        return nullptr;
    return words[static_cast<std::size_t>(value)];
}
