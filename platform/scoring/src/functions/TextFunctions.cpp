#include <array>
#include <cmath>

#include <unicode/bytestream.h>
#include <unicode/casemap.h>

#include "base/AsciiText.h"
#include "base/Utf8.h"
#include "functions/FunctionTable.h"

namespace scoring {
namespace {

using Arguments = std::span<const Cell>;
using MapCase = void (*)(const char*, uint32_t, icu::StringPiece, icu::ByteSink&, icu::Edits*,
                         UErrorCode&);

/// Uses no language's special rules.
template <MapCase map>
Cell mapCase(Arguments arguments, Scratch& scratch)
{
    const std::string_view text = arguments[0].text;
    scratch.text.clear();
    icu::StringByteSink<std::string> sink(&scratch.text);
    UErrorCode status = U_ZERO_ERROR;
    map("", 0, icu::StringPiece(text.data(), static_cast<int32_t>(text.size())), sink, nullptr,
        status);
    return U_SUCCESS(status) ? Cell::of(std::string_view(scratch.text)) : Cell::invalid();
}

/// The byte position of a character, counted from 0. The end of the text if it is shorter.
std::size_t placeOf(std::string_view text, double number)
{
    std::size_t place = 0;
    for (double passed = 0; place < text.size(); ++place)
        if (base::beginsCharacter(text[place]) && passed++ == number)
            break;
    return place;
}

bool isWhole(double number, double least)
{
    return number >= least && number == std::floor(number);
}

/// Positions count characters, from 1.
Cell substring(Arguments arguments, Scratch&)
{
    const std::string_view text = arguments[0].text;
    const double start = arguments[1].number;
    const double length = arguments[2].number;
    if (!isWhole(start, 1) || !isWhole(length, 0))
        return Cell::invalid();
    const std::string_view rest = text.substr(placeOf(text, start - 1));
    return Cell::of(rest.substr(0, placeOf(rest, length)));
}

Cell trimBlanks(Arguments arguments, Scratch&)
{
    return Cell::of(base::trimmed(arguments[0].text, " "));
}

Cell concat(Arguments arguments, Scratch& scratch)
{
    scratch.text.clear();
    for (const Cell& cell : arguments)
        scratch.text += cell.text;
    return Cell::of(std::string_view(scratch.text));
}

Cell stringLength(Arguments arguments, Scratch&)
{
    return Cell::of(static_cast<double>(base::countCharacters(arguments[0].text)));
}

constexpr FunctionEntry textEntry(std::string_view name, FunctionEntry::Apply apply,
                                  ResultRule result = ResultRule::Text)
{
    return {name, 1, 1, ArgumentRule::Texts, result, MissingRule::Passes, apply, nullptr};
}

constexpr std::array kTexts{
    textEntry("uppercase", mapCase<icu::CaseMap::utf8ToUpper>),
    textEntry("lowercase", mapCase<icu::CaseMap::utf8ToLower>),
    textEntry("trimBlanks", trimBlanks),
    textEntry("stringLength", stringLength, ResultRule::Number),
    FunctionEntry{"substring", 3, 3, ArgumentRule::TextPart, ResultRule::Text, MissingRule::Passes,
                  substring, nullptr},
    FunctionEntry{"concat", 2, FunctionEntry::kAnyNumber, ArgumentRule::Texts, ResultRule::Text,
                  MissingRule::Passes, concat, nullptr},
};

} // namespace

std::span<const FunctionEntry> textFunctions()
{
    return kTexts;
}

} // namespace scoring
