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
    std::optional<TimeScale> scale = std::nullopt; ///< of a number of days or seconds
};

/// The type of a field or a constant; nothing if none is given. Throws ModelFault for a word that
/// is no type.
std::optional<DataType> dataTypeOf(pugi::xml_node node);
/// The scale of the type that an element has of its own; nothing for any other element.
std::optional<TimeScale> timeScaleOf(pugi::xml_node node);

/// The expression as a value of a type that the model asks for. Throws ModelFault where there is no
/// such value: of a date as a truth value, say, or of a moment as a time of day.
ExpressionPtr converted(ExpressionPtr expression, const DataType& type);
/// The expression as an argument of a kind, if it is one as it stands: a constant without a type is
/// read as one, a truth value is a number. Throws ModelFault.
ExpressionPtr coerced(ExpressionPtr expression, ValueKind kind);

} // namespace scoring
