#include "expression/DateTimePattern.h"
#include "base/AsciiText.h"

#include <algorithm>

namespace EmbeddedHV {
namespace {

/// A letter that may be repeated `fewest` to `most` times.
struct PatternLetter
{
    char letter;
    std::size_t fewest, most;
    PatternField field;
};

constexpr PatternLetter kLetters[] = {
    {'y', 1, 1, PatternField::Year},          {'y', 2, 2, PatternField::YearOfCentury},
    {'y', 3, 4, PatternField::Year},          {'u', 1, 4, PatternField::Year},
    {'M', 1, 2, PatternField::Month},         {'M', 3, 3, PatternField::MonthShortName},
    {'M', 4, 4, PatternField::MonthName},     {'d', 1, 2, PatternField::DayOfMonth},
    {'D', 1, 3, PatternField::DayOfYear},     {'E', 1, 3, PatternField::DayShortName},
    {'E', 4, 4, PatternField::DayName},       {'H', 1, 2, PatternField::Hour},
    {'h', 1, 2, PatternField::HourOfHalfDay}, {'m', 1, 2, PatternField::Minute},
    {'s', 1, 2, PatternField::Second},        {'S', 1, 3, PatternField::Milliseconds},
    {'S', 4, 6, PatternField::Microseconds},  {'a', 1, 1, PatternField::HalfDay},
};

void appendLiteral(char c, DateTimePattern& pattern)
{
    if (pattern.empty() || pattern.back().field != PatternField::Literal)
        pattern.push_back({PatternField::Literal});
    pattern.back().text += c;
}

/// Copies the quoted text that begins at `at`, and moves `at` behind it. Two apostrophes mean one,
/// inside a quoted text and outside. Returns false if the closing apostrophe is missing.
bool appendQuoted(std::string_view pattern, std::size_t& at, DateTimePattern& parts)
{
    if (pattern.substr(at).starts_with("''")) {
        appendLiteral('\'', parts);
        at += 2;
        return true;
    }
    for (++at; at < pattern.size(); ++at) {
        if (pattern[at] != '\'') {
            appendLiteral(pattern[at], parts);
        } else if (pattern.substr(at).starts_with("''")) {
            appendLiteral(pattern[at++], parts);
        } else {
            ++at;
            return true;
        }
    }
    return false;
}

} // namespace

ParsedPattern parsePattern(std::string_view pattern)
{
    ParsedPattern result;
    for (std::size_t at = 0; at < pattern.size();) {
        const char c = pattern[at];
        if (c == '\'') {
            if (!appendQuoted(pattern, at, result.pattern))
                return {{}, "an apostrophe is not closed"};
            continue;
        }
        if (!base::isLetter(c)) {
            appendLiteral(c, result.pattern);
            ++at;
            continue;
        }
        const std::size_t end = std::min(pattern.find_first_not_of(c, at), pattern.size());
        const std::size_t count = end - at;
        const auto* field = std::ranges::find_if(kLetters, [c,
                                                            count](const PatternLetter& candidate) {
            return candidate.letter == c && count >= candidate.fewest && count <= candidate.most;
        });
        if (field == std::end(kLetters))
            return {{}, "'" + std::string(pattern.substr(at, count)) + "' has no meaning in it"};
        result.pattern.push_back({field->field});
        at = end;
    }
    return result;
}

} // namespace EmbeddedHV
