#pragma once

#include <optional>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include "MCSettings.h"
#include "compile/Scope.h"
#include "expression/Discretize.h"
#include "expression/MapValues.h"
#include "expression/Treatment.h"
#include "functions/FunctionTable.h"

namespace scoring {

/// Makes expressions of the elements of a model. Every operation throws ModelFault for what is not
/// valid, and for what this library does not do.
class ExpressionCompiler
{
public:
    /// The definitions and the settings are borrowed. Places from `firstSlot` on are for the
    /// arguments of calls.
    ExpressionCompiler(const Definitions& definitions, const MCSettings& settings,
                       std::size_t firstSlot)
        : _definitions(definitions), _settings(settings), _slots(firstSlot)
    {
    }

    /// The expression of a derived field; `wanted` is the kind of value that the field has, for
    /// tables and constants without a type of their own.
    ExpressionPtr compile(pugi::xml_node element, const Scope& scope,
                          std::optional<ValueKind> wanted);
    /// So many places there are in all.
    std::size_t slotCount() const { return _slots; }

private:
    using Wanted = std::optional<ValueKind>;
    using Element = pugi::xml_node;
    using Rule = ExpressionPtr (ExpressionCompiler::*)(Element, const Scope&, Wanted);

    static Rule ruleOf(Element element);

    ExpressionPtr constant(Element element, const Scope& scope, Wanted wanted);
    ExpressionPtr fieldRef(Element element, const Scope& scope, Wanted wanted);
    ExpressionPtr normContinuous(Element element, const Scope& scope, Wanted wanted);
    ExpressionPtr normDiscrete(Element element, const Scope& scope, Wanted wanted);
    ExpressionPtr discretize(Element element, const Scope& scope, Wanted wanted);
    ExpressionPtr mapValues(Element element, const Scope& scope, Wanted wanted);
    ExpressionPtr apply(Element element, const Scope& scope, Wanted wanted);

    ExpressionPtr applyBuiltIn(Element element, const FunctionEntry& entry, const Scope& scope,
                               Wanted wanted);
    ExpressionPtr call(Element element, Element definition, const Scope& scope);
    ExpressionPtr body(Element definition, const Scope& parameters);

    const Definitions& _definitions;
    const MCSettings& _settings;
    std::size_t _slots;
    std::size_t _expressions = 0;
    int _depth = 0;
    std::vector<std::string> _calls; ///< the functions whose bodies are being compiled
};

/// The field that an element names. Throws ModelFault for a name that stands for nothing.
ExpressionPtr sourceOf(pugi::xml_node element, const Scope& scope, const char* attribute = "field");
/// A constant in an attribute; null without it.
ExpressionPtr attributeConstant(pugi::xml_node element, const char* attribute, ValueKind kind);
/// What an element says of missing and invalid results of a kind.
Treatment treatmentOf(pugi::xml_node element, ValueKind kind);
/// What several expressions are that should be of one kind: constants without a type follow the
/// others. Throws ModelFault where there is none.
ValueKind commonKind(const Expressions& expressions);
/// How numbers count time that are compared, or of which one is chosen; nothing if none does.
/// Throws ModelFault if they do not all count alike, since nobody could tell which scale the result
/// is on.
std::optional<TimeScale> commonScale(const Expressions& expressions);

} // namespace scoring
