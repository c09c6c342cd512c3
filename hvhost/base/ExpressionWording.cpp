#include "hvhost/base/ExpressionWording.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "hvhost/base/Text.h"

namespace {

/// The position as a byte offset in the text.
std::size_t offsetOf(const datafile::TextPlace& place, const std::string& text)
{
    std::size_t offset = 0;
    for (std::uint64_t line = 1; line < place.line && offset < text.size(); ++line)
        offset = std::min(text.size(), text.find('\n', offset)) + 1;
    for (std::uint64_t column = 1; column < place.column && offset < text.size(); ++column)
        do
            ++offset;
        while (offset < text.size() && !beginsCharacter(text[offset]));
    return offset;
}

/// The number of characters in the option's value before its expression, for example the name of a
/// derived field.
std::size_t charactersBefore(const JobOrigin::Expression& expression)
{
    const std::size_t value = expression.option.find(' ') + 1;
    const std::size_t begin = expression.option.rfind(expression.text);
    return begin == std::string::npos
               ? 0
               : countCharacters(expression.option.substr(value, begin - value));
}

/// The option for which a line of the text was composed; null if the user wrote the expression.
const JobOrigin::Expression* composedFor(std::size_t fault, const std::string& job,
                                         const JobOrigin& origin)
{
    for (const JobOrigin::Expression& composed : origin.composed) {
        const std::size_t begin = job.find(composed.text);
        if (begin <= fault && fault < job.find('\n', begin))
            return &composed;
    }
    return nullptr;
}

} // namespace

std::string inExpression(const datafile::FaultParts& parts, const std::string& job,
                         const JobOrigin& origin)
{
    static constexpr std::string_view lambda = "Lambda = ctx => x => ";
    const std::size_t fault = offsetOf(parts.inJob, job);
    if (const JobOrigin::Expression* const composed = composedFor(fault, job, origin))
        return composed->option + ": " + parts.what;
    std::size_t begin = 0;
    const JobOrigin::Expression* behind = nullptr;
    for (const JobOrigin::Expression& expression : origin.expressions) {
        begin = job.find(lambda, begin);
        begin = begin == std::string::npos ? begin : job.find(expression.text, begin);
        if (begin == std::string::npos || begin > fault)
            break;
        const std::size_t end = begin + expression.text.size();
        if (fault < end)
            return expression.option + ": character " +
                   std::to_string(charactersBefore(expression) +
                                  countCharacters(job.substr(begin, fault - begin)) + 1) +
                   ": " + parts.what;
        behind = &expression;
        begin = end;
    }
    if (behind == nullptr)
        return parts.what;
    return behind->option + ": incomplete expression, or unexpected text after it";
}
