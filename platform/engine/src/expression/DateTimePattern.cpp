#include "expression/DateTimePattern.h"
#include "base/AsciiText.h"

#include <algorithm>

namespace EmbeddedHV {
namespace {

/// A letter that may be repeated `fewest` to `most` times.
struct PatternField
{
    char letter;
    std::size_t fewest, most;
    std::string_view format;
};

constexpr PatternField kFields[] = {
    {'y', 1, 1, "%Y"}, {'y', 2, 2, "%y"}, {'y', 3, 4, "%Y"}, {'u', 1, 4, "%Y"}, {'M', 1, 2, "%m"},
    {'M', 3, 3, "%b"}, {'M', 4, 4, "%B"}, {'d', 1, 2, "%d"}, {'D', 1, 3, "%j"}, {'E', 1, 3, "%a"},
    {'E', 4, 4, "%A"}, {'H', 1, 2, "%H"}, {'h', 1, 2, "%I"}, {'m', 1, 2, "%M"}, {'s', 1, 2, "%S"},
    {'S', 1, 3, "%g"}, {'S', 4, 6, "%f"}, {'a', 1, 1, "%p"},
};

void appendLiteral(char c, std::string& format)
{
    if (c == '%')
        format += '%';
    format += c;
}

/// Copies the quoted text that begins at `at`, and moves `at` behind it. Two apostrophes mean one,
/// inside a quoted text and outside. Returns false if the closing apostrophe is missing.
bool appendQuoted(std::string_view pattern, std::size_t& at, std::string& format)
{
    if (pattern.substr(at).starts_with("''")) {
        format += '\'';
        at += 2;
        return true;
    }
    for (++at; at < pattern.size(); ++at) {
        if (pattern[at] != '\'') {
            appendLiteral(pattern[at], format);
        } else if (pattern.substr(at).starts_with("''")) {
            format += pattern[at++];
        } else {
            ++at;
            return true;
        }
    }
    return false;
}

} // namespace

TranslatedPattern translatePattern(std::string_view pattern)
{
    TranslatedPattern result;
    for (std::size_t at = 0; at < pattern.size();) {
        const char c = pattern[at];
        if (c == '\'') {
            if (!appendQuoted(pattern, at, result.format))
                return {{}, "an apostrophe is not closed"};
            continue;
        }
        if (!base::isLetter(c)) {
            appendLiteral(c, result.format);
            ++at;
            continue;
        }
        const std::size_t end = std::min(pattern.find_first_not_of(c, at), pattern.size());
        const std::size_t count = end - at;
        const auto* field = std::ranges::find_if(kFields, [c,
                                                           count](const PatternField& candidate) {
            return candidate.letter == c && count >= candidate.fewest && count <= candidate.most;
        });
        if (field == std::end(kFields))
            return {{}, "'" + std::string(pattern.substr(at, count)) + "' has no meaning in it"};
        result.format += field->format;
        at = end;
    }
    return result;
}

} // namespace EmbeddedHV
