#pragma once

#include <cstddef>

/// The host's value of one case: a number, or eight bytes of text. A text of more than eight bytes
/// takes as many units as it needs, one after the other; short text is filled up with blanks and
/// has no terminator.
union OBS
{
    double number;
    char text[8];
};
static_assert(sizeof(OBS) == 8, "case buffers are addressed in units of eight bytes");

/// How many units a value takes; `width` is 0 for a number, else the bytes of a text.
inline std::size_t unitsOfWidth(int width)
{
    return width <= 0 ? 1 : (static_cast<std::size_t>(width) + sizeof(OBS) - 1) / sizeof(OBS);
}
