#include "values/TextParts.h"

#include <algorithm>
#include <charconv>

#include "base/AsciiText.h"

namespace {

// Removes the longest prefix of characters for which `question` is true, and returns it.
template <typename Question>
std::string_view takeWhile(std::string_view& text, std::size_t most, Question question)
{
    std::size_t length = 0;
    while (length < std::min(most, text.size()) && question(text[length]))
        ++length;
    const std::string_view taken = text.substr(0, length);
    text.remove_prefix(length);
    return taken;
}

} // namespace

std::string upperCase(std::string_view text)
{
    std::string upper(text);
    for (char& character : upper)
        if (character >= 'a' && character <= 'z')
            character = static_cast<char>(character - 'a' + 'A');
    return upper;
}

bool TextParts::take(std::string_view characters)
{
    const bool found = !_rest.empty() && characters.find(_rest.front()) != std::string_view::npos;
    if (found)
        _rest.remove_prefix(1);
    return found;
}

void TextParts::skip(std::string_view characters)
{
    while (take(characters)) {
    }
}

std::optional<int> TextParts::number(std::size_t mostDigits)
{
    const std::string_view digits = takeWhile(_rest, mostDigits, base::isDigit);
    int value = 0;
    const auto error = std::from_chars(digits.data(), digits.data() + digits.size(), value).ec;
    return error == std::errc() ? std::optional(value) : std::nullopt;
}

std::optional<double> TextParts::amount()
{
    const std::string_view digits = takeWhile(_rest, _rest.size(), base::isDigit);
    double value = 0;
    const auto error = std::from_chars(digits.data(), digits.data() + digits.size(), value).ec;
    return error == std::errc() ? std::optional(value) : std::nullopt;
}

std::string TextParts::word()
{
    return upperCase(takeWhile(_rest, _rest.size(), base::isLetter));
}

double TextParts::fraction()
{
    if (!take(".,"))
        return 0;
    const std::string digits =
        "0." + std::string(takeWhile(_rest, _rest.size(), base::isDigit)) + "0";
    double value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}
