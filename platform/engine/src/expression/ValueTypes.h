#pragma once

#include <optional>
#include <string>

#include "expression/ExpressionCompiler.h"

namespace EmbeddedHV {

/// The name of a type in messages and in docs/hvl.md.
const char* wordOf(ValueType type);

bool isNumber(ValueType type);
/// The type in which two values can be compared, or empty. Possible are equal types,
/// two numbers, a date with a timestamp, and null with any type.
std::optional<ValueType> commonType(ValueType left, ValueType right);

/// Whether a value of one type is accepted as another: the same type, an Integer as a Real, a Date
/// as a Timestamp, null as any type.
bool converts(ValueType from, ValueType to);

/// The kind of an error about two values without a common type, in the order of its text; empty if
/// there is no special advice.
const char* kindOfPair(ValueType first, ValueType second);

/// Whether the type of a field fits the type that a job declares.
bool fits(const language::Type& declared, ValueType actual);

} // namespace EmbeddedHV
