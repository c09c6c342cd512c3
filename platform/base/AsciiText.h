#pragma once

#include <string>
#include <string_view>

namespace base {

/// The text without blanks at both ends. `blanks` are the characters that count as blanks. The
/// result refers to the text.
constexpr std::string_view trimmed(std::string_view text, std::string_view blanks = " \t")
{
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Whether a byte is a decimal digit.
constexpr bool isDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

/// Whether a byte is an ASCII letter.
constexpr bool isLetter(char byte)
{
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

/// Whether a byte is an ASCII character.
constexpr bool isAscii(char byte)
{
    return static_cast<unsigned char>(byte) < 0x80;
}

/// Whether a text contains only ASCII characters. Such a text is the same in almost every code
/// page.
constexpr bool isAscii(std::string_view text)
{
    for (const char byte : text)
        if (!isAscii(byte))
            return false;
    return true;
}

/// The lower-case letter of an upper-case ASCII letter; any other byte unchanged.
constexpr char lowerCase(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// The text with its ASCII letters in lower case.
inline std::string lowerCase(std::string_view text)
{
    std::string result(text);
    for (char& letter : result)
        letter = lowerCase(letter);
    return result;
}

} // namespace base
