#pragma once

#include <optional>
#include <string>

#include "expression/ExpressionCompiler.h"

namespace EmbeddedHV {

/// The word by which messages and docs/hvl.md call a type.
const char* wordOf(ValueType type);
/// The type's name in SQL.
const char* sqlNameOf(ValueType type);

bool isNumber(ValueType type);
/// Whether values of the types can stand side by side in a comparison: alike, both numbers, a date
/// with a timestamp, and null with everything.
std::optional<ValueType> commonType(ValueType left, ValueType right);

/// Whether a value of one type is accepted for another: the same, an Integer for a Real, a Date for
/// a Timestamp, and null for all.
bool converts(ValueType from, ValueType to);
/// The expression as SQL of that type, to which it must convert.
std::string sqlAs(const SqlExpression& expression, ValueType type);

/// Whether a field of the actual type is what a job declared.
bool fits(const language::Type& declared, ValueType actual);

} // namespace EmbeddedHV
