#include "compile/ExpressionCompiler.h"

#include <array>
#include <string_view>
#include <utility>

#include "base/ScopeExit.h"
#include "pmml/DataType.h"
#include "pmml/Literal.h"
#include "pmml/ModelFault.h"
#include "pmml/PmmlDocument.h"

namespace scoring {
namespace {

/// The entry of a name in this scope. The body of a function sees only its parameters.
const ScopeEntry& entryOf(const Scope& scope, const std::string& name)
{
    const auto found = scope.find(name);
    if (found == scope.end())
        throw ModelFault("there is no field \"" + name + "\"");
    return found->second;
}

/// Whether the expression is a constant without a type of its own.
bool isUntyped(const Expression& expression)
{
    const auto* constant = dynamic_cast<const Constant*>(&expression);
    return constant != nullptr && !constant->isTyped();
}

/// The kind that both can be converted to; empty if none.
std::optional<ValueKind> together(ValueKind one, ValueKind other)
{
    if (one == other)
        return one;
    const auto are = [one, other](ValueKind first, ValueKind second) {
        return (one == first && other == second) || (one == second && other == first);
    };
    if (are(ValueKind::Number, ValueKind::Boolean))
        return ValueKind::Number;
    if (are(ValueKind::Date, ValueKind::Moment))
        return ValueKind::Moment;
    return std::nullopt;
}

} // namespace

/// Rejects an expression that is not in the table. A model without it would compute other numbers.
ExpressionCompiler::Rule ExpressionCompiler::ruleOf(Element element)
{
    static constexpr std::array<std::pair<std::string_view, Rule>, 7> kRules{{
        {"Constant", &ExpressionCompiler::constant},
        {"FieldRef", &ExpressionCompiler::fieldRef},
        {"NormContinuous", &ExpressionCompiler::normContinuous},
        {"NormDiscrete", &ExpressionCompiler::normDiscrete},
        {"Discretize", &ExpressionCompiler::discretize},
        {"MapValues", &ExpressionCompiler::mapValues},
        {"Apply", &ExpressionCompiler::apply},
    }};
    const std::string_view name = localName(element);
    for (const auto& [known, rule] : kRules)
        if (name == known)
            return rule;
    throw ModelFault(std::string("<") + element.name() + "> is not supported as an expression");
}

/// Counts every expression. Without the limit, functions that call functions could grow
/// exponentially.
ExpressionPtr ExpressionCompiler::compile(Element element, const Scope& scope, Wanted wanted)
{
    if (_depth >= _settings.GetMaxDepth())
        throw ModelFault("the expressions are nested too deeply");
    ++_depth;
    const base::ScopeExit leave([this] { --_depth; });
    if (++_expressions > _settings.GetMaxExpressions())
        throw ModelFault("the model has too many expressions");
    ExpressionPtr expression = (this->*ruleOf(element))(element, scope, wanted);
    if (const auto scale = timeScaleOf(element))
        expression->setScale(scale);
    return expression;
}

/// A constant without a known type keeps its text: next to a text "01" is a text, next to a number
/// it is 1.
ExpressionPtr ExpressionCompiler::constant(Element element, const Scope&, Wanted wanted)
{
    const std::string text = textOf(element);
    const auto type = dataTypeOf(element);
    if (std::string_view(element.attribute("missing").value()) == "true")
        return missingConstant(type ? type->kind : wanted.value_or(ValueKind::Number));
    if (type)
        return constantOf(text, type->kind);
    return wanted ? constantOf(text, *wanted, false) : inferredConstant(text);
}

ExpressionPtr ExpressionCompiler::fieldRef(Element element, const Scope& scope, Wanted)
{
    ExpressionPtr field = sourceOf(element, scope);
    const ValueKind kind = field->kind();
    if (ExpressionPtr replacement = attributeConstant(element, "mapMissingTo", kind))
        return std::make_unique<MissingReplaced>(std::move(field), std::move(replacement));
    return field;
}

ExpressionPtr sourceOf(pugi::xml_node element, const Scope& scope, const char* attribute)
{
    const ScopeEntry& entry = entryOf(scope, required(element, attribute));
    return std::make_unique<Reference>(entry.kind, entry.scale, entry.slot);
}

ExpressionPtr attributeConstant(pugi::xml_node element, const char* attribute, ValueKind kind)
{
    const pugi::xml_attribute given = element.attribute(attribute);
    return given ? constantOf(given.value(), kind) : nullptr;
}

Treatment treatmentOf(pugi::xml_node element, ValueKind kind)
{
    Treatment treatment;
    treatment.mapMissingTo = attributeConstant(element, "mapMissingTo", kind);
    treatment.defaultValue = attributeConstant(element, "defaultValue", kind);
    const std::string_view invalid = element.attribute("invalidValueTreatment").value();
    treatment.invalidAsMissing = invalid == "asMissing";
    if (!invalid.empty() && invalid != "asMissing" && invalid != "returnInvalid")
        throw ModelFault("invalid results are to be treated \"" + std::string(invalid) +
                         "\", which is not supported");
    return treatment;
}

ValueKind commonKind(const Expressions& expressions)
{
    std::optional<ValueKind> kind;
    bool hasTextConstant = false;
    for (const ExpressionPtr& expression : expressions) {
        if (isUntyped(*expression)) {
            hasTextConstant = hasTextConstant || expression->kind() == ValueKind::Text;
            continue;
        }
        const auto both = kind ? together(*kind, expression->kind()) : expression->kind();
        if (!both)
            throw ModelFault("the arguments are of types that do not go together");
        kind = both;
    }
    commonScale(expressions);
    return kind.value_or(hasTextConstant ? ValueKind::Text : ValueKind::Number);
}

std::optional<TimeScale> commonScale(const Expressions& expressions)
{
    std::optional<TimeScale> scale;
    for (const ExpressionPtr& expression : expressions) {
        if (!expression->scale())
            continue;
        if (scale && scale != expression->scale())
            throw ModelFault("the arguments count time from different origins");
        scale = expression->scale();
    }
    return scale;
}

} // namespace scoring
