#pragma once

#include <cstddef>
#include <string_view>

/// A decoded character of a text.
struct Character
{
    char32_t code = 0;
    std::size_t length = 1;
};

/// Decodes the first character of a non-empty text. An invalid byte is a character with the code
/// kStrayByte + byte, half of a surrogate pair, which valid text does not contain.
Character decodeCharacter(std::string_view text);

inline constexpr char32_t kStrayByte = 0xDC00;
/// Whether the code represents an invalid byte.
constexpr bool isStrayByte(char32_t code)
{
    return code >= kStrayByte + 0x80 && code <= kStrayByte + 0xFF;
}
