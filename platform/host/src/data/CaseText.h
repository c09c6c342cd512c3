#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "Obs.h"

/// How texts stand in cases: in whole units, filled up with blanks.

/// The units that a value takes; `width` is 0 for a number.
inline std::size_t unitsOfWidth(int width)
{
    return width <= 0 ? 1 : (static_cast<std::size_t>(width) + sizeof(OBS) - 1) / sizeof(OBS);
}

/// Fills units with a text; what does not fit is cut.
inline void putText(OBS* units, std::size_t count, std::string_view text)
{
    char* bytes = units->text;
    const std::size_t length = std::min(text.size(), count * sizeof(OBS));
    if (length > 0)
        std::memcpy(bytes, text.data(), length);
    std::memset(bytes + length, ' ', count * sizeof(OBS) - length);
}

inline std::vector<OBS> unitsOfText(std::string_view text, int width)
{
    std::vector<OBS> units(unitsOfWidth(width));
    putText(units.data(), units.size(), text);
    return units;
}

/// The length without trailing blanks.
inline std::size_t trimmedLength(std::string_view text)
{
    return text.find_last_not_of(' ') + 1;
}
