#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <vector>

#include "Obs.h"
#include "base/Utf8.h"
#include "text/CodePage.h"

/// Texts in cases: whole units, padded with blanks.

/// The greatest width of a text, in bytes.
inline constexpr int kWidestText = 32767;

/// Writes a text to units; cuts what does not fit.
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

/// The length of the longest prefix of at most `most` bytes that cuts no character. The text must
/// be longer. A null page means UTF-8.
inline std::size_t wholeCharacters(std::string_view text, std::size_t most, const CodePage* page)
{
    if (!page)
        return base::wholeCharacters(text, most);
    std::size_t length = 0;
    page->eachCharacter(text, [&](std::size_t offset, std::size_t count) {
        const bool fits = offset + count <= most;
        if (fits)
            length = offset + count;
        return fits;
    });
    return length;
}

/// The length without trailing blanks.
inline std::size_t trimmedLength(std::string_view text)
{
    return text.find_last_not_of(' ') + 1;
}
