#include "hvhost/base/FaultWording.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "hvhost/base/Text.h"
#include "hvhost/base/TextScan.h"

namespace {

/// An error of a file that is read, with a hint for commands that have the options for it.
struct InputFault
{
    std::string_view id;
    const char* hint;
};
constexpr const char* kPasswordHint = "--password-file FILE or --password WORD gives it";
constexpr std::array<InputFault, 13> kInputFaults{{
    {"HVEIO0001E", ""},
    {"HVEIO0002E", ""},
    {"HVEIO0003E", ""},
    {"HVEIO0004E", ""},
    {"HVEIO0005E", kKindHint},
    {"HVEIO0006E", "--max-errors N skips up to N bad records, and says how many there were"},
    {"HVEIO0007E", "a larger --max-errors skips more bad records, -1 any number"},
    {"HVEIO0009E", kPasswordHint},
    {"HVEIO0010E", kPasswordHint},
    {"HVEIO0011E", ""},
    {"HVEIO0012E", ""},
    {"HVEIO0019E", ""},
    {"HVEIO0020E", ""},
}};

const InputFault* inputFault(const EngineFault& fault)
{
    const auto* const row =
        std::find_if(kInputFaults.begin(), kInputFaults.end(),
                     [&](const InputFault& known) { return known.id == fault.id; });
    // The write step reports some of the same errors.
    return row != kInputFaults.end() && fault.text.starts_with("read") ? row : nullptr;
}

/// Removes the iterator from "read: the row iterator "NAME" failed at record N: what". Empty for
/// other texts.
std::string iteratorFault(std::string_view text)
{
    TextScan scan(text);
    if (scan.skip("read: the row iterator \"") && scan.until("\" failed at record ") &&
        scan.number() && scan.skip(": "))
        return "read: " + std::string(scan.rest());
    return {};
}

/// Rewrites "read: field F of the row iterator "NAME", record N: what" for a file. Empty for other
/// texts.
std::string valueFault(std::string_view text, const std::string& file)
{
    TextScan scan(text);
    if (!scan.skip("read: ") || !scan.rest().starts_with("field \""))
        return {};
    const auto field = scan.untilLast(" of the row iterator \"");
    if (!field || !scan.until("\", record "))
        return {};
    const auto record = scan.number();
    if (!record || !scan.skip(": "))
        return {};
    return "read: " + file + ": " + std::string(*field) + ", record " + std::to_string(*record) +
           ": " + std::string(scan.rest());
}

/// Rewrites an error of served rows as the engine would report it for the file.
std::string withoutIterator(const std::string& text, const JobOrigin& origin)
{
    std::string bare = iteratorFault(text);
    if (bare.empty() && !origin.inputs.empty())
        bare = valueFault(text, origin.inputs.front().path);
    return bare.empty() ? text : bare;
}

/// A position in a job text, and the message about it.
struct Place
{
    std::size_t line = 0;
    std::size_t column = 0; ///< in characters, from 1
    std::string what;
};

/// Parses "line L, column C: what", also after "step NAME, ".
std::optional<Place> placeOf(const std::string& text)
{
    TextScan scan(text);
    if (scan.skip("step ") && !scan.until(", "))
        return std::nullopt;
    if (!scan.skip("line "))
        return std::nullopt;
    const auto line = scan.number();
    if (!line || !scan.skip(", column "))
        return std::nullopt;
    const auto column = scan.number();
    if (!column || !scan.skip(": "))
        return std::nullopt;
    return Place{*line, *column, std::string(scan.rest())};
}

/// The position as a byte offset in the text.
std::size_t offsetOf(const Place& place, const std::string& text)
{
    std::size_t offset = 0;
    for (std::size_t line = 1; line < place.line && offset < text.size(); ++line)
        offset = std::min(text.size(), text.find('\n', offset)) + 1;
    for (std::size_t column = 1; column < place.column && offset < text.size(); ++column)
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

/// Rewrites an error in a generated text. If it is after an expression, where the engine expected
/// more of it, it is reported as an error of that expression.
std::string inExpression(const Place& place, const std::string& job, const JobOrigin& origin)
{
    static constexpr std::string_view lambda = "Lambda = ctx => x => ";
    const std::size_t fault = offsetOf(place, job);
    if (const JobOrigin::Expression* const composed = composedFor(fault, job, origin))
        return composed->option + ": " + place.what;
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
                   ": " + place.what;
        behind = &expression;
        begin = end;
    }
    if (behind == nullptr)
        return place.what;
    return behind->option + ": incomplete expression, or unexpected text after it";
}

/// Rewrites an error that names an output of the aggregate step by its number.
std::string withAggregate(const std::string& text, const JobOrigin& origin)
{
    TextScan scan(text);
    if (!scan.skip("aggregate: the setting \"output["))
        return text;
    const auto number = scan.number();
    if (!number || *number >= origin.aggregates.size() || !scan.skip("]."))
        return text;
    const auto setting = scan.until("\" ");
    if (!setting)
        return text;
    return origin.aggregates[*number] + ": the " + std::string(*setting) + " " +
           std::string(scan.rest());
}

/// The first text in double quotes.
std::string firstQuoted(const std::string& text)
{
    const std::size_t begin = text.find('"');
    const std::size_t end = begin == std::string::npos ? begin : text.find('"', begin + 1);
    return end == std::string::npos ? std::string() : text.substr(begin + 1, end - begin - 1);
}

/// The option that derives the field.
std::string derivationOf(const std::string& name, const JobOrigin& origin)
{
    for (const JobOrigin::Expression& expression : origin.expressions)
        if (expression.option.starts_with("--derive " + name) &&
            trimmed(expression.option.substr(9 + name.size())).starts_with('='))
            return expression.option;
    return "--derive";
}

/// The first option that names the field, for example "--by NAME" or "--stat mean:NAME:other".
std::string aggregateOf(const std::string& name, const JobOrigin& origin)
{
    for (const std::string& option : origin.aggregates)
        if (option == "--by " + name || option.ends_with(":" + name) ||
            option.find(":" + name + ":") != std::string::npos)
            return option;
    return "--stat";
}

std::string withOption(const std::string& text, const std::string& job, const JobOrigin& origin)
{
    if (const std::optional<Place> place = placeOf(text))
        return inExpression(*place, job, origin);
    const std::string step = text.substr(0, text.find(": "));
    const std::string what = text.substr(std::min(text.size(), step.size() + 2));
    const std::string name = firstQuoted(what);
    // The condition of a generated job is its last expression.
    if (step == "filterRecords" && !origin.expressions.empty())
        return origin.expressions.back().option + ": " + what;
    if (step == "filterFields")
        return "--keep: " + what;
    if (step == "deriveField")
        return derivationOf(name, origin) + ": " + what;
    // This step only restores the types of the file. No option names it.
    if (step == "updateDataModel" && !origin.inputs.empty())
        return origin.inputs.front().name + ": " + what;
    if (step == "aggregate" && !what.starts_with("the setting "))
        return aggregateOf(name, origin) + ": " + what;
    return withAggregate(text, origin);
}

/// An error in the user's own job text, in the format of compilers.
std::string withPosition(const std::string& text, const std::string& name)
{
    const std::optional<Place> place = placeOf(text);
    if (!place)
        return name + ": " + text;
    return name + ":" + std::to_string(place->line) + ":" + std::to_string(place->column) + ": " +
           place->what;
}

/// Users of other languages write "wind > 2" or "x.weather == 'sun'".
std::string expressionHint(const std::string& text)
{
    TextScan scan(text);
    if (scan.until("the name '"))
        if (const auto name = scan.until("' is neither"))
            return "a field of the record is written x." + std::string(*name) + ", a text \"" +
                   std::string(*name) + "\"";
    TextScan quoted(text);
    if (quoted.until("expected the name of a field after '.', found string \""))
        if (const auto name = quoted.untilLast("\""))
            return "it is written x.`" + std::string(*name) + "`";
    if (text.find("found Date") != std::string::npos && text.find("String") != std::string::npos)
        return "a date is written toDate(\"2024-12-31\")";
    if (text.ends_with("the file exists already"))
        return "--force replaces it";
    return text.ends_with("found '\''") ? "write a text in double quotes" : "";
}

/// A hint for an error of a generated job.
std::string hintFor(const std::string& text)
{
    const bool isOffered = text.find("did you mean") != std::string::npos;
    if (!isOffered && text.find("is not an aggregate function") != std::string::npos)
        return "hvhost help aggregate lists the functions";
    if (!isOffered && text.find("the input has no field") != std::string::npos)
        return "hvhost info lists the variables";
    if (text.find("cannot be stored as integer") != std::string::npos)
        return "--direct reads whole numbers of more than 15 digits as they are";
    if (text.starts_with(kTemporaryFile) && text.find("no space is left") != std::string::npos)
        return kTemporaryHint;
    return expressionHint(text);
}

} // namespace

std::string withFileName(const std::string& text, const JobOrigin& origin)
{
    const auto named = [&](const std::vector<JobOrigin::File>& files, const std::string& step) {
        for (const JobOrigin::File& file : files) {
            const std::string start = step + ": " + file.path + ":";
            if (text.starts_with(start))
                return file.name + text.substr(start.size() - 1);
        }
        return std::string();
    };
    const std::string input = named(origin.inputs, "read");
    const std::string output = input.empty() ? named(origin.outputs, "write") : input;
    return output.empty() ? text : output;
}

std::string withOptions(std::string text, const JobOrigin& origin)
{
    for (const JobOrigin::Expression& composed : origin.composed)
        if (const std::size_t place = text.find(composed.text); place != std::string::npos)
            text.replace(place, composed.text.size(), composed.option);
    return text;
}

CommandFault wordFault(const EngineFault& fault, const std::string& jobText,
                       const JobOrigin& origin)
{
    const std::string detail = fault.id + " " + fault.detail;
    if (const InputFault* const input = inputFault(fault)) {
        const std::string text = withFileName(withoutIterator(fault.text, origin), origin);
        const bool generated = origin.jobName.empty();
        const char* const hint = text.ends_with("UTF-8") ? kForeignTextHint : input->hint;
        return {ExitStatus::Input, generated ? text : origin.jobName + ": " + text,
                generated && origin.hasInputOptions ? hint : "", detail};
    }
    const std::string text = withFileName(fault.text, origin);
    if (text != fault.text)
        return {ExitStatus::JobFailed, text, hintFor(text), detail};
    if (!origin.jobName.empty())
        return {ExitStatus::JobFailed, withPosition(text, origin.jobName), expressionHint(text),
                detail};
    return {ExitStatus::JobFailed, withOption(text, jobText, origin), hintFor(text), detail};
}
