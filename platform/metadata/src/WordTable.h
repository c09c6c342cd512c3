#pragma once

#include <array>
#include <cstddef>

/// The word of an enumeration's value in a table that is in the order of the enumeration; null for
/// a value without one. Callers cast integers of other tables into the enumerations, so any value
/// may come.
template <std::size_t Count>
const char* wordAt(const std::array<const char*, Count>& words, int value)
{
    if (value < 0 || static_cast<std::size_t>(value) >= Count)
        return nullptr;
    return words[static_cast<std::size_t>(value)];
}
