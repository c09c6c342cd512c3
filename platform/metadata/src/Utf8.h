#pragma once

#include <cstddef>
#include <string_view>

/// A character of a text that should be UTF-8.
struct Character
{
    char32_t code = 0;
    std::size_t length = 1;
};

/// The character that a non-empty text begins with. A byte that begins none is one of its own, with
/// the code kStrayByte + byte: a half of a surrogate pair, which no text holds otherwise.
Character decodeCharacter(std::string_view text);

inline constexpr char32_t kStrayByte = 0xDC00;
/// Whether the code is that of a byte that is not UTF-8.
constexpr bool isStrayByte(char32_t code)
{
    return code >= kStrayByte + 0x80 && code <= kStrayByte + 0xFF;
}
