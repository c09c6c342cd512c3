#include "values/CellText.h"

#include <charconv>
#include <cmath>

#include "base/AsciiText.h"
#include "values/Calendar.h"

namespace scoring {
namespace {

/// Documents may have blanks and line ends around their texts.
std::string_view content(std::string_view text)
{
    return base::trimmed(text, " \t\r\n");
}

/// Accepts the spellings of XML.
std::optional<double> parseTruth(std::string_view text)
{
    if (text == "true" || text == "1")
        return 1.0;
    if (text == "false" || text == "0")
        return 0.0;
    return std::nullopt;
}

std::optional<double> parseAs(std::string_view text, ValueKind kind)
{
    switch (kind) {
    case ValueKind::Boolean:
        return parseTruth(text);
    case ValueKind::Date:
        return parseDate(text);
    case ValueKind::Time:
        return parseTime(text);
    case ValueKind::Moment:
        return parseMoment(text);
    default:
        return parseNumber(text);
    }
}

} // namespace

std::optional<double> parseNumber(std::string_view text)
{
    text = content(text);
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    double number = 0;
    const char* const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, number);
    if (error != std::errc() || end != last || !std::isfinite(number))
        return std::nullopt;
    return number;
}

std::optional<Cell> parseCell(std::string_view text, ValueKind kind)
{
    if (kind == ValueKind::Text)
        return Cell::of(text);
    const auto number = parseAs(content(text), kind);
    return number ? std::optional(Cell::of(*number)) : std::nullopt;
}

} // namespace scoring
