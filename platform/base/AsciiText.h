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
