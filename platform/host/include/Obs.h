#pragma once

/// The host's value of one case: a number, or eight bytes of text. A text of more than eight bytes
/// takes as many units as it needs, one after the other; short text is filled up with blanks and
/// has no terminator.
union OBS
{
    double number;
    char text[8];
};
static_assert(sizeof(OBS) == 8, "case buffers are addressed in units of eight bytes");
