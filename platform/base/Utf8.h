#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Texts in UTF-8 without a library: for libraries that do not link ICU, and for places where
/// invalid bytes must be found or kept.
namespace base {

/// The first character of a text.
struct Character
{
    char32_t code = 0;
    std::size_t length = 1; ///< in bytes
};

/// Decodes the first character of a non-empty text. Overlong forms, surrogates and codes above
/// U+10FFFF are invalid. An invalid byte is a character of length 1 with the code kStrayByte +
/// byte, half of a surrogate pair, which valid text does not contain.
Character decodeCharacter(std::string_view text);

inline constexpr char32_t kStrayByte = 0xDC00;
/// Whether the code represents an invalid byte.
constexpr bool isStrayByte(char32_t code)
{
    return code >= kStrayByte + 0x80 && code <= kStrayByte + 0xFF;
}

/// Whether the bytes are valid UTF-8.
bool isUtf8(std::string_view bytes);

/// Whether this byte of a text is the first byte of a character.
constexpr bool beginsCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

/// The number of characters in a text.
std::size_t countCharacters(std::string_view text);

/// The length in bytes of the longest prefix of at most `most` bytes that cuts no character.
constexpr std::size_t wholeCharacters(std::string_view text, std::size_t most)
{
    if (text.size() <= most)
        return text.size();
    std::size_t length = most;
    while (length > 0 && !beginsCharacter(text[length]))
        --length;
    return length;
}

/// Appends the bytes of a character. `code` must be at most U+10FFFF.
void appendCharacter(std::string& text, char32_t code);

} // namespace base
