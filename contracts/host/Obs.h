#pragma once

#include <cstddef>

/// A value of a case: a number or eight bytes of text. A longer text uses as many consecutive units
/// as it needs. Texts are padded with blanks and have no terminator.
union OBS
{
    double number; ///< of a numeric variable
    char text[8];  ///< a part of a string variable, in the host's encoding
};
static_assert(sizeof(OBS) == 8, "case buffers are addressed in units of eight bytes");

/// The number of units of a value. `width` is 0 for a number, otherwise the number of bytes of a
/// text.
inline std::size_t unitsOfWidth(int width)
{
    return width <= 0 ? 1 : (static_cast<std::size_t>(width) + sizeof(OBS) - 1) / sizeof(OBS);
}
