#include <algorithm>
#include <utility>

#include "compile/ExpressionCompiler.h"
#include "expression/Apply.h"
#include "expression/Call.h"
#include "pmml/DataType.h"
#include "pmml/ModelFault.h"
#include "pmml/PmmlDocument.h"

namespace scoring {
namespace {

/// Converts the arguments from `first` on to a kind.
void coerceAll(Expressions& arguments, std::size_t first, ValueKind kind)
{
    for (std::size_t i = first; i < arguments.size(); ++i)
        arguments[i] = coerced(std::move(arguments[i]), kind);
}

/// Converts a number or a boolean to its text, for text functions.
void coerceText(ExpressionPtr& argument)
{
    argument = converted(std::move(argument), DataType{ValueKind::Text});
}

/// The first argument is a point of time, or a constant that can be read as one.
void coerceTime(ExpressionPtr& argument, std::initializer_list<ValueKind> kinds)
{
    if (std::find(kinds.begin(), kinds.end(), argument->kind()) == kinds.end())
        argument = coerced(std::move(argument), *kinds.begin());
}

/// Converts the branches of a choice to a common kind.
void coerceBranches(Expressions& arguments)
{
    Expressions branches(std::make_move_iterator(arguments.begin() + 1),
                         std::make_move_iterator(arguments.end()));
    coerceAll(branches, 0, commonKind(branches));
    std::move(branches.begin(), branches.end(), arguments.begin() + 1);
}

/// Converts the arguments to the kinds that the function accepts.
void coerceArguments(Expressions& arguments, ArgumentRule rule)
{
    switch (rule) {
    case ArgumentRule::Numbers:
        return coerceAll(arguments, 0, ValueKind::Number);
    case ArgumentRule::Booleans:
        return coerceAll(arguments, 0, ValueKind::Boolean);
    case ArgumentRule::Texts:
        std::for_each(arguments.begin(), arguments.end(), coerceText);
        return;
    case ArgumentRule::Alike:
        return coerceAll(arguments, 0, commonKind(arguments));
    case ArgumentRule::Choice:
        arguments[0] = coerced(std::move(arguments[0]), ValueKind::Boolean);
        return coerceBranches(arguments);
    case ArgumentRule::TextPart:
        coerceText(arguments[0]);
        return coerceAll(arguments, 1, ValueKind::Number);
    case ArgumentRule::SinceYear:
        coerceTime(arguments[0], {ValueKind::Date, ValueKind::Moment});
        return coerceAll(arguments, 1, ValueKind::Number);
    case ArgumentRule::MomentOrTime:
        return coerceTime(arguments[0], {ValueKind::Moment, ValueKind::Time});
    case ArgumentRule::Any:
        return;
    }
}

/// The kind of the function's result. The arguments are already coerced.
ValueKind resultKind(const FunctionEntry& entry, const Expressions& arguments)
{
    switch (entry.result) {
    case ResultRule::Boolean:
        return ValueKind::Boolean;
    case ResultRule::Text:
        return ValueKind::Text;
    case ResultRule::Branch:
        return arguments.back()->kind();
    default:
        return ValueKind::Number;
    }
}

} // namespace

ExpressionPtr ExpressionCompiler::apply(Element element, const Scope& scope, Wanted wanted)
{
    const std::string name = required(element, "function");
    try {
        if (const FunctionEntry* const entry = findFunction(name))
            return applyBuiltIn(element, *entry, scope, wanted);
        const auto definition = _definitions.find(name);
        if (definition == _definitions.end())
            throw ModelFault("there is no such function");
        return call(element, definition->second, scope);
    } catch (const ModelFault& fault) {
        // Only the innermost call adds its name.
        const std::string text = fault.what();
        throw ModelFault(text.starts_with("function ") ? text : "function " + name + ": " + text);
    }
}

/// The branches of a choice get the wanted kind. Other arguments keep their own.
ExpressionPtr ExpressionCompiler::applyBuiltIn(Element element, const FunctionEntry& entry,
                                               const Scope& scope, Wanted wanted)
{
    const std::vector<Element> elements = elementsIn(element);
    if (elements.size() < entry.least || elements.size() > entry.most)
        throw ModelFault("it does not take " + std::to_string(elements.size()) + " arguments");
    Expressions arguments;
    for (const Element argument : elements) {
        const bool isBranch = entry.result == ResultRule::Branch && !arguments.empty();
        arguments.push_back(compile(argument, scope, isBranch ? wanted : std::nullopt));
    }
    coerceArguments(arguments, entry.arguments);
    const ValueKind kind = resultKind(entry, arguments);
    const bool toTexts = arguments.front()->kind() == ValueKind::Text;
    const auto scale = entry.result == ResultRule::Branch ? commonScale(arguments) : std::nullopt;
    auto made = std::make_unique<Apply>(entry, toTexts, kind, std::move(arguments),
                                        treatmentOf(element, kind));
    made->setScale(scale);
    return made;
}

/// Each call compiles its own body with its own slots. So a parameter has the kind of its argument,
/// and an argument is evaluated once even if the body uses it often.
ExpressionPtr ExpressionCompiler::call(Element element, Element definition, const Scope& scope)
{
    const std::vector<Element> parameters = elementsIn(definition, "ParameterField");
    const std::vector<Element> elements = elementsIn(element);
    if (parameters.size() != elements.size())
        throw ModelFault("it takes " + std::to_string(parameters.size()) + " arguments");
    Expressions arguments;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const auto type = dataTypeOf(parameters[i]);
        ExpressionPtr argument =
            compile(elements[i], scope, type ? Wanted(type->kind) : std::nullopt);
        arguments.push_back(type ? converted(std::move(argument), *type) : std::move(argument));
    }
    const std::size_t firstSlot = _slots;
    _slots += arguments.size();
    Scope inside;
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (!inside
                 .emplace(required(parameters[i], "name"),
                          ScopeEntry{firstSlot + i, arguments[i]->kind(), arguments[i]->scale()})
                 .second)
            throw ModelFault("two of its parameters have one name");
    ExpressionPtr result = body(definition, inside);
    const ValueKind kind = result->kind();
    const auto scale = result->scale();
    auto made = std::make_unique<Call>(firstSlot, std::move(arguments), std::move(result),
                                       treatmentOf(element, kind));
    made->setScale(scale);
    return made;
}

/// `_calls` names the functions that are being compiled, to detect a function that calls itself.
ExpressionPtr ExpressionCompiler::body(Element definition, const Scope& parameters)
{
    const std::string name = required(definition, "name");
    if (std::find(_calls.begin(), _calls.end(), name) != _calls.end())
        throw ModelFault("it calls itself");
    std::vector<Element> elements = elementsIn(definition);
    std::erase_if(elements, [](Element element) { return localName(element) == "ParameterField"; });
    if (elements.size() != 1)
        throw ModelFault("its definition must have exactly one expression");
    _calls.push_back(name);
    const auto type = dataTypeOf(definition);
    ExpressionPtr expression =
        compile(elements.front(), parameters, type ? Wanted(type->kind) : std::nullopt);
    _calls.pop_back();
    return type ? converted(std::move(expression), *type) : std::move(expression);
}

} // namespace scoring
