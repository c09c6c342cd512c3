#include "language/JsonLiteral.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "ErrorIds.h"
#include "base/NearestName.h"
#include "language/Describe.h"

namespace EmbeddedHV::language {
namespace {

using Json = nlohmann::ordered_json;

/// Definitions may nest and repeat each other, so a short text can expand to a huge value.
constexpr int kDeepest = 500;
constexpr int kMostValues = 1'000'000;

/// Converts one literal to JSON.
class Converter
{
public:
    Converter(const Definitions& definitions, const std::string& step)
        : _definitions(definitions), _step(step)
    {
    }

    Json convert(const Expression& expression);

private:
    Json convertName(const Name& name, const Position& position);
    Json convertMinus(const Unary& unary, const Position& position);
    Json convertList(const List& list);
    Json convertObject(const Object& object);
    [[noreturn]] void fail(const char* id, const Position& position, const std::string& text,
                           FaultParts parts = {}) const;

    const Definitions& _definitions;
    const std::string& _step;
    std::vector<std::string> _namesOnTheWay;
    int _depth = 0;
    int _values = 0;
};

Json Converter::convert(const Expression& expression)
{
    const auto& value = expression.value;
    const Position& position = expression.position;
    if (_depth == kDeepest || ++_values > kMostValues)
        fail(errors::kLiteralSize, position, "the literal is too large or nests too deep");
    ++_depth;
    Json result;
    if (const auto* boolean = std::get_if<bool>(&value))
        result = *boolean;
    else if (const auto* integer = std::get_if<std::int64_t>(&value))
        result = *integer;
    else if (const auto* real = std::get_if<double>(&value))
        result = *real;
    else if (const auto* text = std::get_if<std::string>(&value))
        result = *text;
    else if (const auto* list = std::get_if<List>(&value))
        result = convertList(*list);
    else if (const auto* object = std::get_if<Object>(&value))
        result = convertObject(*object);
    else if (const auto* name = std::get_if<Name>(&value))
        result = convertName(*name, position);
    else if (const auto* unary = std::get_if<Unary>(&value))
        result = convertMinus(*unary, position);
    else if (!std::holds_alternative<Null>(value))
        fail(errors::kNotLiteral, position, "expected a JSON value, found " + kindOf(expression));
    --_depth;
    return result;
}

Json Converter::convertName(const Name& name, const Position& position)
{
    const auto bound = _definitions.find(name.name);
    if (bound == _definitions.end()) {
        const std::string suggestion =
            base::suggestion(name.name, _definitions, &Definitions::value_type::first);
        fail(errors::kUnknownName, position,
             "expected a JSON value, but no expression is bound to the name '" + name.name + "'" +
                 suggestion,
             {.name = name.name, .hasSuggestion = !suggestion.empty()});
    }
    if (std::ranges::find(_namesOnTheWay, name.name) != _namesOnTheWay.end())
        fail(errors::kCycle, position, "the definition of '" + name.name + "' uses itself",
             {.name = name.name});
    _namesOnTheWay.push_back(name.name);
    Json result = convert(*bound->second);
    _namesOnTheWay.pop_back();
    return result;
}

Json Converter::convertMinus(const Unary& unary, const Position& position)
{
    const auto& operand = unary.operand->value;
    if (unary.op == UnaryOperator::Minus) {
        if (const auto* integer = std::get_if<std::int64_t>(&operand))
            if (*integer >= 0)
                return -*integer;
        if (const auto* real = std::get_if<double>(&operand))
            return -*real;
    }
    fail(errors::kNotLiteral, position, "expected a JSON value, found an operator");
}

Json Converter::convertList(const List& list)
{
    Json result = Json::array();
    for (const ExpressionPtr& element : list.elements)
        result.push_back(convert(*element));
    return result;
}

Json Converter::convertObject(const Object& object)
{
    // Insertion by key would search all members. The keys are already known to be unique.
    Json result = Json::object();
    auto& members = result.get_ref<Json::object_t&>();
    members.reserve(object.members.size());
    for (const auto& [key, value] : object.members)
        members.Container::emplace_back(key, convert(*value));
    return result;
}

void Converter::fail(const char* id, const Position& position, const std::string& text,
                     FaultParts parts) const
{
    failInStep(id, _step, position, text, std::move(parts));
}

} // namespace

Json jsonLiteral(const Expression& expression, const Definitions& definitions,
                 const std::string& step)
{
    return Converter(definitions, step).convert(expression);
}

} // namespace EmbeddedHV::language
