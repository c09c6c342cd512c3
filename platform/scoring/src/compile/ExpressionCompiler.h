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

/// Compiles the elements of a model into expressions. Every operation throws ModelFault for invalid
/// or unsupported elements.
class ExpressionCompiler
{
public:
    /// Borrows the definitions and the settings. Slots from `firstSlot` on are for the arguments of
    /// calls.
    ExpressionCompiler(const Definitions& definitions, const MCSettings& settings,
                       std::size_t firstSlot)
        : _definitions(definitions), _settings(settings), _slots(firstSlot)
    {
    }

    /// Compiles the expression of a derived field. `wanted` is the kind of the field, for tables
    /// and constants without a type of their own.
    ExpressionPtr compile(pugi::xml_node element, const Scope& scope,
                          std::optional<ValueKind> wanted);
    /// The number of slots in total.
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
    std::vector<std::string> _calls; ///< the functions that are being compiled
};

/// The field that an element names. Throws ModelFault for an unknown name.
ExpressionPtr sourceOf(pugi::xml_node element, const Scope& scope, const char* attribute = "field");
/// The constant in an attribute; null if the attribute is absent.
ExpressionPtr attributeConstant(pugi::xml_node element, const char* attribute, ValueKind kind);
/// The element's settings for missing and invalid results.
Treatment treatmentOf(pugi::xml_node element, ValueKind kind);
/// The common kind of several expressions. Constants without a type follow the others. Throws
/// ModelFault if there is no common kind.
ValueKind commonKind(const Expressions& expressions);
/// The common time scale of numbers that are compared or chosen from; empty if none counts time.
/// Throws ModelFault if the scales differ, because the scale of the result would be unknown.
std::optional<TimeScale> commonScale(const Expressions& expressions);

} // namespace scoring
