#include "expression/FunctionCall.h"

#include <algorithm>
#include <utility>

#include "ErrorIds.h"
#include "base/ListText.h"
#include "base/NearestName.h"
#include "datafile/RaisedFault.h"
#include "expression/DateTimePattern.h"
#include "expression/ValueTypes.h"
#include "functions/FunctionTable.h"
#include "language/Describe.h"
#include "language/TextCursor.h"

namespace EmbeddedHV {
namespace {

constexpr std::string_view kMore = "...";

constexpr ValueType kNamedTypes[] = {ValueType::Integer, ValueType::Real, ValueType::String,
                                     ValueType::Date,    ValueType::Time, ValueType::Timestamp,
                                     ValueType::Boolean};

/// The type that a word of the table names; empty for a word that means several types.
std::optional<ValueType> namedType(std::string_view word)
{
    const auto* found =
        std::ranges::find_if(kNamedTypes, [word](ValueType type) { return word == wordOf(type); });
    return found == std::end(kNamedTypes) ? std::nullopt : std::optional(*found);
}

/// A form of a function, with its parameters split into words.
struct Form
{
    const Function* function;
    std::vector<std::string_view> words;
    bool open = false; ///< the last parameter may be repeated

    bool takes(std::size_t count) const
    {
        return open ? count >= words.size() : count == words.size();
    }
    std::string_view word(std::size_t argument) const
    {
        return words[std::min(argument, words.size() - 1)];
    }
};

/// The table lists the parameters as docs/hvl.md shows them, in one text.
Form formOf(const Function& function)
{
    Form form{&function, {}, function.parameters.ends_with(kMore)};
    std::string_view rest = function.parameters;
    if (form.open)
        rest.remove_suffix(kMore.size());
    constexpr std::string_view kSeparator = ", ";
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(kSeparator), rest.size());
        form.words.push_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + kSeparator.size(), rest.size()));
    }
    return form;
}

/// Whether a parameter with this word accepts the argument.
bool accepts(std::string_view word, const Operand& argument)
{
    const ValueType type = argument.value.type;
    if (const auto named = namedType(word))
        return converts(type, *named);
    if (word == "Number")
        return isNumber(type) || type == ValueType::Null;
    if (word == "Pattern")
        return argument.constant.has_value();
    return word == "Any" || type != ValueType::List;
}

/// The common type of the arguments that must have the same type; Null if there are no such
/// arguments.
std::optional<ValueType> sharedType(const Form& form, const std::vector<Operand>& arguments)
{
    std::optional<ValueType> shared = ValueType::Null;
    for (std::size_t i = 0; i < arguments.size() && shared; ++i)
        if (form.word(i) == "Same")
            shared = commonType(*shared, arguments[i].value.type);
    return shared;
}

bool acceptsAll(const Form& form, const std::vector<Operand>& arguments)
{
    if (!form.takes(arguments.size()))
        return false;
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (!accepts(form.word(i), arguments[i]))
            return false;
    return sharedType(form, arguments).has_value();
}

/// "(A), (B, C) or (D)"
std::string listed(const std::vector<std::string>& items)
{
    std::string text;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i > 0)
            text += i + 1 == items.size() ? " or " : ", ";
        text += "(" + items[i] + ")";
    }
    return text;
}

[[noreturn]] void failUnknown(const std::string& name, const Place& place)
{
    const std::string suggestion = base::suggestion(name, kFunctions, &Function::name);
    place.fail(errors::kUnknownFunction, "there is no function '" + name + "'" + suggestion,
               {.name = name, .hasSuggestion = !suggestion.empty()});
}

[[noreturn]] void failArguments(const std::vector<Form>& forms,
                                const std::vector<Operand>& arguments, const Place& place)
{
    std::vector<std::string> known;
    known.reserve(forms.size());
    for (const Form& form : forms)
        known.emplace_back(form.function->parameters);
    const std::string found = base::joined(arguments, ", ", &Operand::description);
    // If a form takes this number of arguments, the types are wrong; else the number is.
    const bool countFits =
        std::ranges::any_of(forms, [&](const Form& form) { return form.takes(arguments.size()); });
    place.fail(countFits ? errors::kOperandType : errors::kArgumentCount,
               std::string(forms.front().function->name) + " takes " + listed(known) + ", found (" +
                   found + ")",
               {.name = std::string(forms.front().function->name)});
}

std::string patternSql(const Dialect& dialect, const Operand& argument, const Place& place)
{
    const ParsedPattern parsed = parsePattern(*argument.constant);
    if (!parsed.fault.empty())
        place.fail(errors::kPattern,
                   "the pattern \"" + *argument.constant + "\" is wrong: " + parsed.fault);
    return dialect.pattern(parsed.pattern);
}

std::string argumentSql(const Dialect& dialect, std::string_view word, const Operand& argument,
                        ValueType shared, const Place& place)
{
    const SqlExpression& value = argument.value;
    if (word == "Pattern")
        return patternSql(dialect, argument, place);
    if (word == "Same")
        return dialect.as(value, shared);
    if (const auto named = namedType(word))
        return dialect.as(value, *named);
    return value.type == ValueType::Null ? dialect.as(value, ValueType::Real) : value.sql;
}

/// The SQL text with which errors begin that the function raises at run time.
std::string whereSql(const Dialect& dialect, const Place& place)
{
    return dialect.literal(raisedText(
        errors::kConversion, {.step = place.step, .inJob = language::textPlace(place.position)}));
}

/// `where` writes the beginning of an error message.
template <class Where>
std::string expanded(std::string_view sql, const std::vector<std::string>& arguments,
                     const Where& where)
{
    constexpr std::string_view kWhere = "where";
    std::string text;
    for (std::size_t i = 0; i < sql.size(); ++i) {
        if (sql[i] != '$') {
            text += sql[i];
        } else if (sql.substr(i + 1).starts_with(kWhere)) {
            text += where();
            i += kWhere.size();
        } else if (sql[++i] == '*') {
            text += base::joined(arguments, ", ");
        } else {
            text += arguments[static_cast<std::size_t>(sql[i] - '1')];
        }
    }
    return text;
}

} // namespace

SqlExpression compileFunctionCall(const Dialect& dialect, const std::string& name,
                                  const std::vector<Operand>& arguments, const Place& place)
{
    std::vector<Form> forms;
    for (const Function& function : formsOf(name))
        forms.push_back(formOf(function));
    if (forms.empty())
        failUnknown(name, place);
    const auto form = std::ranges::find_if(
        forms, [&](const Form& candidate) { return acceptsAll(candidate, arguments); });
    if (form == forms.end())
        failArguments(forms, arguments, place);
    const ValueType shared = *sharedType(*form, arguments);
    std::vector<std::string> sql;
    for (std::size_t i = 0; i < arguments.size(); ++i)
        sql.push_back(argumentSql(dialect, form->word(i), arguments[i], shared, place));
    return {
        expanded(dialect.function(*form->function), sql, [&] { return whereSql(dialect, place); }),
        namedType(form->function->result).value_or(shared)};
}

std::string functionSql(const Dialect& dialect, std::string_view name, std::string_view parameters,
                        const std::vector<std::string>& arguments)
{
    const Function& form = *std::ranges::find(formsOf(name), parameters, &Function::parameters);
    return expanded(dialect.function(form), arguments, [] { return std::string(); });
}

void Place::fail(const char* id, const std::string& text, FaultParts parts) const
{
    language::failInStep(id, step, position, text, std::move(parts));
}

} // namespace EmbeddedHV
