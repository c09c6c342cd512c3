#include "hvhost/base/ExpressionWording.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

#include "base/AsciiText.h"
#include "datafile/FaultIds.h"
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

/// The expression with blanks in the place of its texts and quoted names.
std::string withoutQuoted(const std::string& expression)
{
    std::string text = expression;
    char quote = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char character = expression[i];
        if (quote == 0 && (character == '"' || character == '`' || character == '\'')) {
            quote = character;
        } else if (quote != 0) {
            text[i] = ' ';
            if (character == '\\' && i + 1 < text.size())
                text[++i] = ' ';
            else if (character == quote)
                quote = 0;
        }
    }
    return text;
}

/// Whether the text has a "=" that is no part of another operator.
bool hasLoneEquals(std::string_view text)
{
    for (std::size_t at = text.find('='); at != std::string_view::npos;
         at = text.find('=', at + 1)) {
        const char before = at == 0 ? ' ' : text[at - 1];
        const char after = at + 1 < text.size() ? text[at + 1] : ' ';
        if (std::string_view("=!<>").find(before) == std::string_view::npos && after != '=' &&
            after != '>')
            return true;
    }
    return false;
}

bool isInWord(char character)
{
    return base::isDigit(character) || base::isLetter(character) || character == '_' ||
           !base::isAscii(character);
}

/// The words of the text. A field, x.name, is one word.
std::vector<std::string> splitWords(std::string_view text)
{
    std::vector<std::string> words;
    std::string word;
    for (const char character : text) {
        if (isInWord(character) || (character == '.' && !word.empty())) {
            word += character;
            continue;
        }
        if (!word.empty())
            words.push_back(std::exchange(word, {}));
        // Keeps apart words that are not separated by blanks alone.
        if (character != ' ')
            words.emplace_back(1, character);
    }
    if (!word.empty())
        words.push_back(word);
    return words;
}

/// A word of other languages, and the hint for it.
constexpr std::pair<std::string_view, const char*> kForeignWords[] = {
    {"and", "&& means and, || means or"},
    {"or", "&& means and, || means or"},
    {"not", "! means not"},
    {"is", "isMissing(x.name) tests for a missing value"},
    {"in", "== and || compare with several values"},
    {"between", ">=, <= and && test for a range"},
    {"like", "contains, startsWith and endsWith test for a part of a text"},
};

/// The hint for a word of another language; null for other words.
const char* foreignWordHint(const std::string& word)
{
    const auto* const known =
        std::ranges::find(kForeignWords, std::string_view(base::lowerCase(word)),
                          &std::pair<std::string_view, const char*>::first);
    return known == std::end(kForeignWords) ? nullptr : known->second;
}

std::string withoutRecord(const std::string& word)
{
    return word.starts_with("x.") ? word.substr(2) : word;
}

/// Whether the word is a field, or the name of one.
bool isName(const std::string& word)
{
    return isInWord(word.front()) && !base::isDigit(word.front()) && word != "if" && word != "else";
}

/// In an expression there are no steps.
std::string whatIn(const datafile::FaultParts& parts)
{
    return parts.kind == datafile::kinds::kBetweenSteps ? "the expression ends before this"
                                                        : parts.what;
}

} // namespace

std::string fieldText(const std::string& name)
{
    const bool isPlain = std::ranges::all_of(name, isInWord) && !base::isDigit(name.front());
    return isPlain ? "x." + name : "x.`" + name + "`";
}

std::string foreignSyntaxHint(const std::string& expression)
{
    const std::string text = withoutQuoted(expression);
    if (hasLoneEquals(text))
        return "== compares two values";
    if (text.find("<>") != std::string::npos)
        return "!= means not equal";
    const std::vector<std::string> words = splitWords(text);
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (const char* const hint = foreignWordHint(words[i]))
            return hint;
        if (i > 0 && isName(words[i - 1]) && isName(words[i]))
            return "a name with blanks is written " +
                   fieldText(withoutRecord(words[i - 1]) + " " + words[i]);
    }
    return {};
}

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
                   ": " + whatIn(parts);
        behind = &expression;
        begin = end;
    }
    if (behind == nullptr)
        return parts.what;
    return behind->option + ": incomplete expression, or unexpected text after it";
}
