#pragma once

#include <optional>
#include <string>

#include <pugixml.hpp>

#include "expression/Expression.h"

namespace scoring {

/// A data type of PMML.
struct DataType
{
    ValueKind kind = ValueKind::Number;
    bool isWhole = false;
    std::optional<TimeScale> scale = std::nullopt; ///< of a number that counts days or seconds
};

/// The type of a field or a constant; empty if it has none. Throws ModelFault for an unknown type.
std::optional<DataType> dataTypeOf(pugi::xml_node node);
/// The time scale of an element's own type; empty if it has none.
std::optional<TimeScale> timeScaleOf(pugi::xml_node node);

/// Converts an expression to a type that the model declares. Throws ModelFault if there is no
/// conversion, for example from a date to a boolean or from a moment to a time of day.
ExpressionPtr converted(ExpressionPtr expression, const DataType& type);
/// Converts an argument to a kind without changing its meaning: a constant without a type is read
/// again, a boolean becomes a number. Throws ModelFault if that is impossible.
ExpressionPtr coerced(ExpressionPtr expression, ValueKind kind);

} // namespace scoring
