#include <charconv>
#include <limits>

#include "base/AsciiText.h"
#include "values/NumberText.h"
#include "values/TextParts.h"

namespace {

std::optional<double> readWord(std::string_view text)
{
    const std::string word = upperCase(text);
    if (word == "INF" || word == "INFINITY")
        return std::numeric_limits<double>::infinity();
    if (word == "NAN")
        return std::numeric_limits<double>::quiet_NaN();
    return std::nullopt;
}

bool takeSign(std::string_view& text)
{
    const bool isNegative = !text.empty() && text.front() == '-';
    if (isNegative || (!text.empty() && text.front() == '+'))
        text.remove_prefix(1);
    return isNegative;
}

// Converts the amount to the form of from_chars; empty for characters outside the style.
std::string plainAmount(std::string_view text, const NumberStyle& style)
{
    std::string plain;
    bool isWhole = true;
    for (const char character : text) {
        if (isWhole && style.groupSign != 0 && character == style.groupSign)
            continue;
        const bool isDecimalSign = character == style.decimalSign;
        if (!isDecimalSign && (character == '.' || character == ','))
            return {};
        isWhole = isWhole && base::isDigit(character);
        plain += isDecimalSign ? '.' : character;
    }
    return plain;
}

} // namespace

std::optional<double> readNumber(std::string_view text, const NumberStyle& style)
{
    const bool isNegative = takeSign(text);
    if (!style.prefix.empty() && text.starts_with(style.prefix))
        text.remove_prefix(style.prefix.size());
    if (!style.suffix.empty() && text.ends_with(style.suffix))
        text.remove_suffix(style.suffix.size());
    std::optional<double> number = readWord(text);
    if (!number) {
        const std::string amount = plainAmount(text, style);
        const char* end = amount.data() + amount.size();
        double value = 0;
        const auto [stop, error] = std::from_chars(amount.data(), end, value);
        if (amount.empty() || amount.front() == '-' || error != std::errc() || stop != end)
            return std::nullopt;
        number = value;
    }
    return isNegative ? -*number : *number;
}
